#pragma once

#include <QList>
#include <QObject>

class MainWindow;
class QAction;

/// The menu "View": zoom and full screen. Main thread only.
class ViewMenu : public QObject
{
    Q_OBJECT

public:
    explicit ViewMenu(MainWindow* window);

private:
    void AddZoomActions();
    void BuildZoomMenu();
    void ZoomTo(double scale);
    void ZoomStep(int direction);
    void UpdateActions();

    MainWindow* m_pWindow;
    QList<QAction*> m_ZoomActions;
};
