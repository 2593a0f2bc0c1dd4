#include "movetoolprivate/PathMoveObject.h"

#include "common/PushCommand.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "gui/ZKDocumentView.h"
#include "history/ChangeSubpathCommandData.h"
#include "history/SubpathCommand.h"

namespace {
/// Views that edit the sub path look at it anew.
constexpr bool TellCommitted = true;

LXPath Translated(LXPath elements, const QPointF& delta)
{
    for (LXPathElement& element : elements)
        element.Translate(delta);
    return elements;
}
} // namespace

bool PathMoveObject::Begin(ZKDocumentView* view, unsigned int)
{
    if (m_pDocumentView) return false;
    if (!view) return true;

    m_pDocumentView = view;
    m_pDocument = view->GetModel()->GetDocument();
    m_pPaths = m_pDocument->GetPathListModel();
    const QItemSelectionModel* selection = view->GetPathSelection();
    if (const auto* paths = qobject_cast<const LXPathSelectionModel*>(selection))
        m_SubpathIndex = paths->CurrentSubpath();
    const QModelIndexList rows = selection->selectedRows();
    if (rows.size() != 1) return true;

    m_PathIndex = rows.first().row();
    m_OriginalPath = m_pPaths->GetPath(m_PathIndex);
    return true;
}

bool PathMoveObject::Move(const QPoint& delta)
{
    if (!HasPath()) return true;
    if (m_SubpathIndex >= 0) {
        SetSubPath(Translated(OriginalSubPath(), delta));
        return true;
    }
    LXSubPaths moved = m_OriginalPath;
    for (auto& subPath : moved)
        subPath.first = Translated(subPath.first, delta);
    m_pPaths->SetPath(m_PathIndex, moved);
    return true;
}

bool PathMoveObject::Cancel()
{
    if (!HasPath()) return true;
    if (m_SubpathIndex >= 0) {
        SetSubPath(OriginalSubPath());
    } else {
        m_pPaths->SetPath(m_PathIndex, m_OriginalPath);
    }
    return true;
}

bool PathMoveObject::Commit(LexoUndoStack* stack)
{
    if (!m_pDocumentView) return false;
    if (!HasPath() || m_SubpathIndex < 0) return true;

    auto data = std::make_unique<ChangeSubpathCommandData>();
    data->SetPathIndex(m_PathIndex);
    data->SetSubpathIndex(m_SubpathIndex);
    data->SetUndoData(OriginalSubPath());
    data->SetRedoData(m_pPaths->GetPath(m_PathIndex).value(m_SubpathIndex).first);
    auto command = std::make_unique<SubpathCommand>(m_pDocument);
    command->setText(tr("Move path"));
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    PushCommand(stack, std::move(command));
    return true;
}

void PathMoveObject::Refresh() {}

LXPath PathMoveObject::OriginalSubPath() const
{
    return m_OriginalPath.value(m_SubpathIndex).first;
}

void PathMoveObject::SetSubPath(const LXPath& elements) const
{
    m_pPaths->SetSubPath(m_PathIndex, m_SubpathIndex, elements, TellCommitted);
}
