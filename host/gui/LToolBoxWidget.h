#pragma once

#include "ZKHostExport.h"

#include <QWidget>

#include <memory>

class LToolBoxButton;
class LToolBoxWidgetPrivate;

/// The column of tool buttons; two columns when the window is too low for one. Groups of tools are parted by
/// thin lines. Main thread only.
class ZK_HOST_EXPORT LToolBoxWidget : public QWidget
{
    Q_OBJECT

public:
    explicit LToolBoxWidget(QWidget* parent = nullptr);
    ~LToolBoxWidget() override;

    /// The program's tool box, never null: made at first use; whoever gives it a parent owns it.
    static LToolBoxWidget* GetInstance();

    /// Shows the button at its place: rising positions, equal ones in the order of coming. The box becomes
    /// the button's parent but never deletes it. Repeating it moves the button. Null is ignored.
    /// @param position  a negative one has no place: nothing is shown
    void AddToolButton(LToolBoxButton* button, int position);
    /// Takes the button out and leaves it hidden without a parent. Ignores a button that isn't in the box.
    void RemoveButton(LToolBoxButton* button);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Rearrange();

    std::unique_ptr<LToolBoxWidgetPrivate> m_pPrivate;
};
