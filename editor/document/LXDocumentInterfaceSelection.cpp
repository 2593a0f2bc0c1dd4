// The operations of LXDocumentInterface on the selection.

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"

bool LXDocumentInterface::HasSelection() const
{
    return m_pPrivate->selection.Exists();
}

const LXImage32& LXDocumentInterface::GetSelectionMask() const
{
    return m_pPrivate->selection.Mask();
}

QRect LXDocumentInterface::GetSelectionGeometry() const
{
    return m_pPrivate->selection.Geometry();
}

QPoint LXDocumentInterface::GetSelectionMaskOffset() const
{
    return GetSelectionGeometry().topLeft();
}

QRect LXDocumentInterface::GetSelectionBoundingRect() const
{
    return m_pPrivate->selection.Bounds();
}

void LXDocumentInterface::SetSelectionMask(const LXImage32& mask, const QPoint& offset)
{
    if (m_pPrivate->selection.Set(mask, offset)) {
        m_pPrivate->OnMainThread([this] { emit SelectionChanged(); });
    }
}

void LXDocumentInterface::TranslateSelection(const QPoint& delta)
{
    if (m_pPrivate->selection.Translate(delta)) {
        m_pPrivate->OnMainThread([this] { emit SelectionChanged(); });
    }
}

void LXDocumentInterface::MoveToSelection(const QPoint& topLeft)
{
    if (!HasSelection()) return;
    // Not handed to the main thread: who stops listening before a worker moves the selection, and listens
    // again afterwards, must not hear of that move.
    emit AboutSelectionMove();
    if (m_pPrivate->selection.MoveTo(topLeft)) {
        m_pPrivate->OnMainThread([this] { emit SelectionChanged(); });
    }
}

bool LXDocumentInterface::HasAboveSelected(unsigned char value) const
{
    return m_pPrivate->selection.HasAbove(value);
}
