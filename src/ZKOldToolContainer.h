#pragma once

#include "gui/LXMdiSubWindow.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <memory>

class IDocumentView;

/// The plug-in's list of tools. Follows the editor's active document window and hands the one view object
/// to every tool that works on a view. Main thread only.
class ZKOldToolContainer : public QObject
{
    Q_OBJECT

public:
    ZKOldToolContainer();
    ~ZKOldToolContainer() override;

    virtual void UpdateTools();
    virtual void DocumentStateChanged(int state);
    virtual void DocumentActivated(LXMdiSubWindow* window);
    virtual void DocumentDeactivated(LXMdiSubWindow* window);

    /// Appends a tool, not owned; a deleted one leaves by itself. Null is ignored.
    void AddTool(QObject* tool);

    /// The tools in the order of adding.
    QList<QObject*> GetTools() const { return m_Tools; }

public slots:
    /// @param window  null when the last document window was closed.
    void OnDocumentActivated(LXMdiSubWindow* window);
    void OnDocumentLocked();
    void OnDocumentUnlocked();
    void OnDocumentStateChanged(int state);

private:
    void ConnectDocument();
    void DisconnectDocument();
    void HandViewToTools(IDocumentView* view);
    void TellViewState(quint64 oldState, quint64 newState);

    QPointer<LXMdiSubWindow> m_pActiveSubWindow;
    QList<QObject*> m_Tools;
    std::unique_ptr<IDocumentView> m_pDocumentView;
};
