#pragma once

#include "ZKHostExport.h"

#include <QKeySequence>
#include <QToolButton>

class LXShortcut;

/// The button of a tool: 32 px, the icon of its default action, a small corner when it has a menu. Pressing
/// only tells; the tool decides whether it is checked. Main thread only.
///
/// A right press, and holding the left button down, also open the menu. The tool tip ends with the key.
class ZK_HOST_EXPORT LToolBoxButton : public QToolButton
{
    Q_OBJECT

public:
    explicit LToolBoxButton(QWidget* parent = nullptr);
    ~LToolBoxButton() override;

    /// The key acts as a left press while the button is enabled and shown. An empty key takes it away.
    void SetShortcut(const QKeySequence& key);
    /// The key triggers the next action of the button's menu, the first one after the last.
    void SetCycleShortcut(const QKeySequence& key);

    QSize sizeHint() const override;

signals:
    void LMousePressed(LToolBoxButton* button);
    void RMousePressed(LToolBoxButton* button);

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void nextCheckState() override;

private:
    void TakeNextAction();

    LXShortcut* m_pShortcut = nullptr;
    LXShortcut* m_pCycleShortcut = nullptr;
};
