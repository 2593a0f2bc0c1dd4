#pragma once

#include "EditorExport.h"

#include <QObject>
#include <QPointer>

#include <functional>

class LXDocumentInterface;
class LXMdiArea;
class LXMdiSubWindow;
class QMdiSubWindow;
class QWidget;

/// What the application does with the document area beyond what tools may. Main thread only.
class ZK_EDITOR_EXPORT LXMdiAreaPrivate : public QObject
{
    Q_OBJECT

public:
    explicit LXMdiAreaPrivate(LXMdiArea* area);

    static LXMdiAreaPrivate* Get(const LXMdiArea* area);

    /// Asked before a document closes that is modified or busy; false keeps it open. Without a question such
    /// documents close unasked.
    void SetCloseQuestion(std::function<bool(LXDocumentInterface*)> question);

    /// What fills the area while no document is open. The area owns it and deletes the one before.
    void SetEmptyPage(QWidget* page);
    void PlaceEmptyPage();

    /// Null when the document has no window here.
    LXMdiSubWindow* FindWindow(const LXDocumentInterface* document) const;

    /// Closes as the close button of the window does. False when somebody refused.
    bool CloseDocument(LXDocumentInterface* document);
    /// One after the other; false at the first that refuses, the ones before it being closed.
    bool CloseAll();
    /// Without `WantToClose` and without a question.
    void CloseAllUnasked();

    /// Whether nobody refuses that the window closes. Runs an event loop while the person is asked.
    bool MayClose(LXMdiSubWindow* window);
    /// Takes the window out of the area and deletes it later, so that it may be on the call stack.
    void Close(LXMdiSubWindow* window);

    LXMdiSubWindow* GetTold() const { return m_pTold; }

private:
    void ArrangeTabs();
    void OnActivated(QMdiSubWindow* window);
    void Tell(LXMdiSubWindow* window);

    LXMdiArea* m_pArea;
    LXMdiSubWindow* m_pTold = nullptr; ///< what the last SubWindowActivated named
    QPointer<QWidget> m_pEmptyPage;
    std::function<bool(LXDocumentInterface*)> m_CloseQuestion;
};
