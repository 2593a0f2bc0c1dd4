#pragma once

#include "guicore/LXDialog.h"
#include "history/SelectionCommandData.h"

#include <QColor>
#include <QImage>
#include <QList>

#include <memory>

class ColorSwatch;

namespace Ui {
class SelectColorRangeDlg;
}

/// The dialog "Select color range": the colors as swatches, the tolerance, how the result is combined with
/// the selection, and a preview. It doesn't stop the program, since the colors are clicked in the picture. It
/// knows nothing of documents. Main thread only.
class SelectColorRangeDlg : public LXDialog
{
    Q_OBJECT

public:
    explicit SelectColorRangeDlg(QWidget* parent);
    ~SelectColorRangeDlg() override;

    /// Appends a swatch behind the last one, shown at once.
    void AddSwatch(const QColor& color);
    void RemoveSwatch(int index);
    void RemoveSwatches();

    /// Marks the swatch of the current color; -1 for none.
    void SetCurrentSwatch(int index);

    int GetTolerance() const;
    SelectionCommandData::LogicalOp GetOperation() const;

    /// How large a preview may be, in pixels of the screen.
    QSize GetPreviewBounds() const;
    void SetPreview(const QImage& preview);

signals:
    void ToleranceChanged(int tolerance);
    void SwatchClicked(int index);
    void ChooseColorClicked();
    void RemoveClicked();
    void RemoveAllClicked();

private:
    void UpdateButtons();

    std::unique_ptr<Ui::SelectColorRangeDlg> m_pUi;
    QList<ColorSwatch*> m_Swatches;
    int m_NextColumn = 0; ///< of the grid of swatches
};
