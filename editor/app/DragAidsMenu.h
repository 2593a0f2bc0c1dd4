#pragma once

#include <QObject>

class MainWindow;
class QAction;
class ZKDocumentView;

/// The entries of the menu "View" about what helps with drags: the grid, snapping, the read-out of the
/// offset. Main thread only.
class DragAidsMenu : public QObject
{
    Q_OBJECT

public:
    explicit DragAidsMenu(MainWindow* window);

private:
    void ShowGrid(bool shown);
    void AskForStep();
    void Follow(ZKDocumentView* view) const;

    MainWindow* m_pWindow;
    QAction* m_pGrid = nullptr;
};
