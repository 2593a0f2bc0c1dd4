#pragma once

#include "DialogBlock.h"
#include "LXViewToolBase.h"

#include <QPointer>

/// The base of a tool that takes the tool group while its dialog stands over the document. The dialog doesn't
/// stop the program: pictures are still looked at and picked from, but the document is locked, and the tool
/// box and the order of layers and paths wait until the dialog is closed. Then the tool from before comes
/// back. Main thread only.
class LXDialogViewToolBase : public LXViewToolBase
{
    Q_OBJECT

public:
    explicit LXDialogViewToolBase(QObject* parent);
    ~LXDialogViewToolBase() override;

    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    int GetToolBoxPosition() override { return -1; }

    /// Makes or hands out the dialog, a widget with the signals Accepted() and Rejected(). It stays the
    /// tool's: the base takes its parent away at the end and deletes nothing.
    virtual QWidget* CreateDialog(ZKDocumentView* view) = 0;

    /// The dialog is shown, the document locked.
    virtual void DialogStarted() = 0;

    /// The dialog has been taken off the screen; everything is still blocked.
    virtual void DialogFinished() = 0;

    /// How it ended, after everything was given back.
    virtual void DialogAccepted() = 0;
    virtual void DialogRejected() = 0;

    /// Makes the tool the current one and opens the dialog. Nothing happens when the tool is current already
    /// or the outgoing tool refuses; without a view the tool becomes current and no dialog opens.
    void StartDialog();

    /// The open dialog; null when none stands.
    QWidget* GetDialog() const { return m_pDialog; }

protected slots:
    void OnAccepted();
    void OnRejected();

private:
    void OpenDialog();
    void EndDialog();

    QPointer<ZKActivateAction> m_pPreviousAction;
    QPointer<QWidget> m_pDialog;
    DialogBlock m_Block;
};
