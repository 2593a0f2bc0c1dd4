#pragma once

#include "document/PixelLockTable.h"
#include "image/LXImage.h"

#include <QPoint>
#include <QRect>

#include <mutex>

/// The selection of a document: a mask and where it lies. No signals. Any thread.
///
/// The mask's pixels are under the pixel lock Key; where they lie is under a mutex of its own, so that its
/// geometry is known without waiting for readers of the pixels.
class DocumentSelection
{
public:
    /// Of the pixel lock; no layer has it.
    static constexpr PixelLockTable::Key Key = ~PixelLockTable::Key(0);

    explicit DocumentSelection(PixelLockTable& locks);

    bool Exists() const;
    /// Null without a selection.
    QRect Geometry() const;
    /// Around the pixels with coverage; null without a selection.
    QRect Bounds() const;

    /// Under the pixel lock.
    const LXImage32& Mask() const { return m_Mask; }

    /// Mask and geometry of one moment.
    LXImage32 Snapshot(QPoint* offset) const;

    /// A mask without coverage means no selection. False when there was none before either.
    bool Set(const LXImage32& mask, const QPoint& offset);
    /// The same for a mask that is known to have coverage in its outermost rows and columns, or to be empty.
    bool SetTrimmed(const LXImage32& mask, const QPoint& offset);
    /// False without a selection.
    bool Translate(const QPoint& delta);
    /// Puts the mask's top left there. False without a selection.
    bool MoveTo(const QPoint& topLeft);
    bool HasAbove(unsigned char value) const;

private:
    /// @param bounds  of its coverage, in pixels of the mask
    bool Put(const LXImage32& mask, const QPoint& offset, const QRect& bounds);
    /// Under both locks.
    void TranslateLocked(const QPoint& delta);

    PixelLockTable& m_Locks;
    LXImage32 m_Mask;

    mutable std::mutex m_Mutex;
    QRect m_Geometry;
    QRect m_Bounds;
};
