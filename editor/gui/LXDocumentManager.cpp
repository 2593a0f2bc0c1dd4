#include "gui/LXDocumentManager.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/SingleWidget.h"
#include "gui/ZKDocumentWidget.h"
#include "history/LexoUndoStack.h"
#include "utils/FaultSeams.h"

class LXDocumentManagerPrivate
{
public:
    QList<LXDocumentInterface*> m_Documents;
};

LXDocumentManager* LXDocumentManager::Instance()
{
    static LXDocumentManager manager;
    return &manager;
}

LXDocumentManager::LXDocumentManager() : m_pPrivate(std::make_unique<LXDocumentManagerPrivate>()) {}

LXDocumentManager::~LXDocumentManager() = default;

LXMdiArea* LXDocumentManager::GetDocumentArea()
{
    return SingleWidget<LXMdiArea>::Get();
}

bool LXDocumentManager::AddDocument(LXDocumentInterface* document)
{
    if (!document || document->GetDocumentSize().isEmpty()) return false;
    if (m_pPrivate->m_Documents.contains(document)) return false;
    if (FaultSeams::Pass(FaultSeams::Seam::DocumentAdd)) return false;

    auto* const history = new LexoUndoStack(this);
    auto* const window = new LXMdiSubWindow(new ZKDocumentWidget(document, history));
    // A window deletes its view before it says that it is gone.
    connect(window, &QObject::destroyed, this, [=] {
        delete history;
        m_pPrivate->m_Documents.removeOne(document);
        LXDocumentFactory::Instance()->Release(document);
    });
    m_pPrivate->m_Documents.append(document);

    LXMdiArea* const area = GetDocumentArea();
    area->addSubWindow(window);
    window->show();
    area->setActiveSubWindow(window);
    return true;
}

QList<LXDocumentInterface*> LXDocumentManager::GetDocuments() const
{
    return m_pPrivate->m_Documents;
}
