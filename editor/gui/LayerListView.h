#pragma once

#include <QListView>

class LaterUpdate;

/// The list of layers, and that of paths. A press on an eye, with all that follows until its release, selects
/// nothing. Thumbnails follow the picture.
class LayerListView : public QListView
{
    Q_OBJECT

public:
    explicit LayerListView(QWidget* parent = nullptr);

signals:
    void EyePressed(int row);

protected:
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QVector<int>& roles) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool TakeEyePress(const QMouseEvent* event);

    LaterUpdate* m_pLater;
    bool m_bEyeIsDown = false;
};
