#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class LXDocumentInterface;
class MainWindow;
class QAction;
class QMenu;
class ZKDocumentView;

/// The entries of the menu "Selection" that keep a selection under a name and bring it back. Main thread
/// only.
class ChannelMenu : public QObject
{
    Q_OBJECT

public:
    explicit ChannelMenu(MainWindow* window);
    ~ChannelMenu() override;

private:
    void Follow(ZKDocumentView* view);
    void Save();
    void Load();
    void TellMissingMemory();
    void Delete(int row);
    void ListChannels();
    void UpdateActions();

    MainWindow* m_pWindow;
    QPointer<LXDocumentInterface> m_pDocument;
    QAction* m_pSave;
    QAction* m_pLoad;
    std::unique_ptr<QMenu> m_pDelete;
};
