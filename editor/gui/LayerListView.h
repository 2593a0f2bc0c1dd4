#pragma once

#include <QListView>

/// The list of layers, and that of paths. A press on an eye, with all that follows until its release, selects
/// nothing.
class LayerListView : public QListView
{
    Q_OBJECT

public:
    using QListView::QListView;

signals:
    void EyePressed(int row);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool TakeEyePress(const QMouseEvent* event);

    bool m_bEyeIsDown = false;
};
