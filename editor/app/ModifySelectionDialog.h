#pragma once

#include "app/SelectionPreview.h"
#include "guicore/LXDialog.h"
#include "history/SelectionModify.h"

#include <QPointer>

#include <memory>

namespace Ui {
class ModifySelectionDialog;
}
class LXDocumentInterface;

/// Asks by how much the selection is to change, and shows the answer on the picture: while the dialog is open
/// the document has the changed selection, without a step. A change that takes long is made in the
/// background; accepting waits for it. Rejected, the document has the former selection again. Main thread
/// only.
class ModifySelectionDialog : public LXDialog
{
    Q_OBJECT

public:
    /// The document has a selection. The first offer is the radius that was used last.
    ModifySelectionDialog(LXDocumentInterface* document, SelectionModify::Kind kind, QWidget* parent);
    ~ModifySelectionDialog() override;

    /// The user's word for the change.
    static QString TitleOf(SelectionModify::Kind kind);

    /// The selection as it was before the dialog.
    const PlacedMask& GetFormer() const { return m_Former; }

public slots:
    void Accept() override;
    void Reject() override;

private:
    void OfferRadius();
    void ShowChange();
    void ShowMade(const PlacedMask& made);
    void ShowFailure();
    void UpdateControls();
    void PutBack();

    std::unique_ptr<Ui::ModifySelectionDialog> m_pUi;
    QPointer<LXDocumentInterface> m_pDocument;
    SelectionModify::Kind m_Kind;
    PlacedMask m_Former;
    SelectionPreview m_Preview;
    bool m_bIsPossible = true;
    bool m_bAcceptsWhenReady = false; ///< accepted before the change was made
};
