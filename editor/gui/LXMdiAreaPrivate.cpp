#include "document/LXDocumentInterface.h"
#include "gui/DocumentOf.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView_p.h"

#include <QTabBar>

LXMdiAreaPrivate::LXMdiAreaPrivate(LXMdiArea* area) : m_pArea(area)
{
    connect(area, &QMdiArea::subWindowActivated, this, &LXMdiAreaPrivate::OnActivated);
}

LXMdiAreaPrivate* LXMdiAreaPrivate::Get(const LXMdiArea* area)
{
    return area->m_pPrivate.get();
}

void LXMdiAreaPrivate::SetCloseQuestion(std::function<bool(LXDocumentInterface*)> question)
{
    m_CloseQuestion = std::move(question);
}

void LXMdiAreaPrivate::SetEmptyPage(QWidget* page)
{
    if (m_pEmptyPage == page) return;
    if (m_pEmptyPage) {
        m_pEmptyPage->hide();
        m_pEmptyPage->deleteLater();
    }
    m_pEmptyPage = page;
    if (page) page->setParent(m_pArea);
    PlaceEmptyPage();
}

void LXMdiAreaPrivate::PlaceEmptyPage()
{
    if (!m_pEmptyPage) return;
    m_pEmptyPage->setGeometry(m_pArea->rect());
    m_pEmptyPage->setVisible(m_pArea->GetWindows().isEmpty());
    m_pEmptyPage->raise();
}

LXMdiSubWindow* LXMdiAreaPrivate::FindWindow(const LXDocumentInterface* document) const
{
    for (LXMdiSubWindow* const window : m_pArea->GetWindows()) {
        if (document && DocumentOf(window) == document) return window;
    }
    return nullptr;
}

bool LXMdiAreaPrivate::CloseDocument(LXDocumentInterface* document)
{
    LXMdiSubWindow* const window = FindWindow(document);
    return window && window->close();
}

bool LXMdiAreaPrivate::CloseAll()
{
    for (LXMdiSubWindow* const window : m_pArea->GetWindows()) {
        if (!window->close()) return false;
    }
    return true;
}

void LXMdiAreaPrivate::CloseAllUnasked()
{
    for (LXMdiSubWindow* const window : m_pArea->GetWindows())
        Close(window);
}

bool LXMdiAreaPrivate::MayClose(LXMdiSubWindow* window)
{
    LXDocumentInterface* const document = DocumentOf(window);
    if (!document) return true;

    emit m_pArea->WantToClose(document);
    emit document->WantToClose(document);
    if (document->GetLockState()) return false;

    return !m_CloseQuestion || !IsModified(window) || m_CloseQuestion(document);
}

void LXMdiAreaPrivate::Close(LXMdiSubWindow* window)
{
    if (LXDocumentInterface* document = DocumentOf(window)) {
        emit m_pArea->AboutToClose(document);
        emit document->AboutToClose(document);
        ZKDocumentViewPrivate::Get(ViewOf(window))->AnnounceDestroy();
    }
    const bool wasActive = m_pTold == window;
    m_pArea->removeSubWindow(window);
    if (wasActive && m_pTold == window) Tell(qobject_cast<LXMdiSubWindow*>(m_pArea->currentSubWindow()));
    PlaceEmptyPage();
    window->deleteLater();
}

void LXMdiAreaPrivate::ArrangeTabs()
{
    auto* const tabs = m_pArea->findChild<QTabBar*>();
    if (!tabs) return;
    tabs->setExpanding(false);
    tabs->setDrawBase(false);
    tabs->setElideMode(Qt::ElideMiddle);
    tabs->setUsesScrollButtons(true);
    // All tabs would show the program's own picture.
    tabs->setIconSize(QSize(0, 0));
    tabs->setAccessibleName(tr("Open pictures"));
    for (int tab = 0; tab < tabs->count(); ++tab) {
        if (QWidget* button = tabs->tabButton(tab, QTabBar::RightSide))
            button->setAccessibleName(tr("Close"));
    }
}

void LXMdiAreaPrivate::OnActivated(QMdiSubWindow* window)
{
    // The bar comes and goes with the view mode.
    ArrangeTabs();
    // Null while windows are left: the main window has only lost the focus, or the next one follows.
    auto* const activated = qobject_cast<LXMdiSubWindow*>(window);
    if (activated || m_pArea->GetWindows().isEmpty()) Tell(activated);
    PlaceEmptyPage();
}

void LXMdiAreaPrivate::Tell(LXMdiSubWindow* window)
{
    if (window == m_pTold) return;
    m_pTold = window;
    emit m_pArea->SubWindowActivated(window);
    if (window && m_pTold == window) window->GetWidget()->setFocus();
}
