#pragma once

#include "EditorExport.h"

#include <QPointer>
#include <QScrollArea>

class QHBoxLayout;
class QLabel;
class QToolButton;

/// The strip under the menu bar in which the option bar of the active tool stands. Its height never changes
/// and a wide bar does not widen the window: the wheel, the focus and a button at the edge
/// scroll it. The latest area made takes
/// over all bars of ZKToolBarManager.
class ZK_EDITOR_EXPORT ToolBarArea : public QScrollArea
{
    Q_OBJECT

public:
    static constexpr int Height = 48;
    static constexpr int PictureSize = 40;

    explicit ToolBarArea(QWidget* parent = nullptr);

    /// Takes the bar as a hidden child.
    void TakeIn(QWidget* bar);

    /// Shows this child in place of the last one; null shows none.
    void Show(QWidget* bar);

    QWidget* ShownBar() const { return m_pShown; }

signals:
    /// Another bar is shown; null for none.
    void ShownBarChanged(QWidget* bar);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void ShowPicture();
    void ShowMore();
    void PlaceMore();

    QHBoxLayout* m_pLayout;
    QLabel* m_pPicture = nullptr;
    QToolButton* m_pMore; // over the right edge while the bar is wider than the area
    QPointer<QWidget> m_pShown;
};
