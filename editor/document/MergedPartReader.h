#pragma once

#include <memory>

class LXDocumentInterface;
class LXDocumentLockerPrivate;
class QRect;

/// Scope in which a part of the merged picture may be read. That part alone is brought up to date, so what is
/// seen of a large picture is shown without composing what isn't. The rest may be older. Any thread;
/// recursive on each thread; given back on the thread that took it.
class MergedPartReader
{
public:
    /// @param part  canvas pixels
    MergedPartReader(const LXDocumentInterface* document, const QRect& part);
    ~MergedPartReader();

    MergedPartReader(const MergedPartReader&) = delete;
    MergedPartReader& operator=(const MergedPartReader&) = delete;

private:
    std::unique_ptr<LXDocumentLockerPrivate> m_pPrivate;
};
