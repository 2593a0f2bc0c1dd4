#include "LXMenuModalToolBase.h"

#include "IDocumentView.h"

LXMenuModalToolBase::LXMenuModalToolBase(QObject* parent)
    : QObject(parent), m_Locks(QStringLiteral("src/LXMenuModalToolBase"))
{}

LXMenuModalToolBase::~LXMenuModalToolBase()
{
    // Asked first: without a lock the view is left alone, which may be gone by now.
    if (m_Locks.HoldsDocument()) UnlockDocument();
    if (m_Locks.HoldsView()) UnlockView();
}

bool LXMenuModalToolBase::SetDocumentView(IDocumentView* view)
{
    if (view == m_pDocumentView) return true;

    IDocumentView* old = m_pDocumentView;
    emit DocumentViewChange(old, view);
    m_pDocumentView = view;
    emit DocumentViewChanged(old, view);
    return true;
}

LXDocumentInterface* LXMenuModalToolBase::GetDocument() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocument() : nullptr;
}

ZKDocumentView* LXMenuModalToolBase::GetView() const
{
    return m_pDocumentView ? m_pDocumentView->GetDocumentView() : nullptr;
}

bool LXMenuModalToolBase::LockDocument()
{
    return m_Locks.LockDocument(GetDocument());
}

bool LXMenuModalToolBase::UnlockDocument()
{
    return m_Locks.UnlockDocument(GetDocument());
}

bool LXMenuModalToolBase::LockView()
{
    return m_Locks.LockView(m_pDocumentView, parent());
}

bool LXMenuModalToolBase::UnlockView()
{
    return m_Locks.UnlockView(m_pDocumentView, parent());
}
