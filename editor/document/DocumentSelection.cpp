#include "document/DocumentSelection.h"

#include "document/AlphaScan.h"

DocumentSelection::DocumentSelection(PixelLockTable& locks) : m_Locks(locks) {}

bool DocumentSelection::Exists() const
{
    return !Geometry().isEmpty();
}

QRect DocumentSelection::Geometry() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_Geometry;
}

QRect DocumentSelection::Bounds() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_Bounds;
}

LXImage32 DocumentSelection::Snapshot(QPoint* offset) const
{
    const PixelReadScope scope(m_Locks, Key);
    const QRect geometry = Geometry();
    *offset = geometry.topLeft();
    return m_Mask;
}

bool DocumentSelection::Set(const LXImage32& mask, const QPoint& offset)
{
    return Put(mask, offset, AlphaScan::BoundsAbove(mask, 0));
}

bool DocumentSelection::SetTrimmed(const LXImage32& mask, const QPoint& offset)
{
    return Put(mask, offset, mask.Rect());
}

bool DocumentSelection::Put(const LXImage32& mask, const QPoint& offset, const QRect& bounds)
{
    const PixelWriteScope scope(m_Locks, Key);
    const std::lock_guard<std::mutex> guard(m_Mutex);
    if (bounds.isEmpty() && m_Geometry.isEmpty()) return false;

    m_Mask = bounds.isEmpty() ? LXImage32() : mask;
    m_Geometry = bounds.isEmpty() ? QRect() : QRect(offset, QSize(mask.Width(), mask.Height()));
    m_Bounds = bounds.isEmpty() ? QRect() : bounds.translated(offset);
    return true;
}

bool DocumentSelection::Translate(const QPoint& delta)
{
    // Readers look at mask and place together.
    const PixelWriteScope scope(m_Locks, Key);
    const std::lock_guard<std::mutex> guard(m_Mutex);
    if (m_Geometry.isEmpty()) return false;

    TranslateLocked(delta);
    return true;
}

bool DocumentSelection::MoveTo(const QPoint& topLeft)
{
    const PixelWriteScope scope(m_Locks, Key);
    const std::lock_guard<std::mutex> guard(m_Mutex);
    if (m_Geometry.isEmpty()) return false;

    TranslateLocked(topLeft - m_Geometry.topLeft());
    return true;
}

void DocumentSelection::TranslateLocked(const QPoint& delta)
{
    m_Geometry.translate(delta);
    m_Bounds.translate(delta);
}

bool DocumentSelection::HasAbove(unsigned char value) const
{
    const PixelReadScope scope(m_Locks, Key);
    return AlphaScan::HasAbove(m_Mask, value);
}
