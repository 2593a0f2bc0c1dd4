#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class LexoCommand;
class LexoUndoStack;
class LXDocumentInterface;
class MainWindow;
class QAction;
class QMenu;
class SelectionChannels;
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
    void Delete(int row);
    void ListChannels();
    void UpdateActions();

    /// A piece that floats lands before the selection is read. False when nothing can be changed now.
    bool Begin();
    void Push(LexoCommand* command);
    SelectionChannels* GetChannels() const;

    MainWindow* m_pWindow;
    QPointer<LXDocumentInterface> m_pDocument;
    QPointer<LexoUndoStack> m_pHistory;
    QAction* m_pSave;
    QAction* m_pLoad;
    std::unique_ptr<QMenu> m_pDelete;
};
