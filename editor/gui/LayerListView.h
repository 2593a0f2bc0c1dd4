#pragma once

#include <QListView>

#include <functional>

class LaterUpdate;

/// The list of layers, and that of paths. A press on an eye, with all that follows until its release, selects
/// nothing, and neither does the focus: where no row is the current one, it shows round the list, and the
/// arrows begin with the first row. Thumbnails follow the picture.
class LayerListView : public QListView
{
    Q_OBJECT

public:
    explicit LayerListView(QWidget* parent = nullptr);

    /// What keeps the person from choosing other rows, asked at each press and key; the tool tip says it. An
    /// empty text lets them.
    void SetChoiceObstacle(std::function<QString()> obstacle);

signals:
    void EyePressed(int row);

protected:
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QVector<int>& roles) override;
    void focusInEvent(QFocusEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    bool TakeEyePress(const QMouseEvent* event);
    QString ChoiceObstacle() const;

    LaterUpdate* m_pLater;
    bool m_bEyeIsDown = false;
    bool m_bTakesFocus = false;
    std::function<QString()> m_ChoiceObstacle;
};
