#pragma once

#include <QList>
#include <QObject>

class MainWindow;
class QAction;
class ZKDocumentView;

/// The menu "View": zoom, the tint of what is not selected, full screen. Main thread only.
class ViewMenu : public QObject
{
    Q_OBJECT

public:
    explicit ViewMenu(MainWindow* window);

private:
    void AddZoomActions();
    void BuildZoomMenu();
    void AddTintAction();
    void AddFullScreenAction();
    /// A tool that brings its own zoom into the main menu gets place and keys there. The menu of the status
    /// bar keeps ours.
    void StepAsideFor(QAction* other);
    void GiveKeysTo(const QAction* other);
    void ZoomTo(double scale);
    void ZoomStep(int direction);
    void Follow(ZKDocumentView* view);

    MainWindow* m_pWindow;
    QList<QAction*> m_ZoomActions;
    QAction* m_pTint = nullptr;
};
