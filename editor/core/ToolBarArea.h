#pragma once

#include "EditorExport.h"

#include <QPointer>
#include <QScrollArea>

class QHBoxLayout;
class QLabel;

/// The strip under the menu bar in which the option bar of the active tool stands. Its height never changes
/// and a wide bar does not widen the window: the wheel and the focus scroll it. The latest area made takes
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
    void wheelEvent(QWheelEvent* event) override;

private:
    QHBoxLayout* m_pLayout;
    QLabel* m_pPicture;
    QPointer<QWidget> m_pShown;
};
