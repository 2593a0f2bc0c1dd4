#pragma once

#include <QObject>
#include <QPointer>

class LXDocumentInterface;
class MainWindow;
class QAction;
class ZKDocumentView;

/// The entries of the menu "View" for guides: whether they show, adding one, taking all away. Main thread
/// only.
class GuideMenu : public QObject
{
    Q_OBJECT

public:
    explicit GuideMenu(MainWindow* window);

private:
    void Follow(ZKDocumentView* view);
    void Show(bool shown);
    void AskForGuide();
    void Clear();
    void UpdateActions();

    MainWindow* m_pWindow;
    QPointer<LXDocumentInterface> m_pDocument;
    QAction* m_pShow;
    QAction* m_pAdd;
    QAction* m_pClear;
};
