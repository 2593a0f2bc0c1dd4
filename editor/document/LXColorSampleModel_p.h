#pragma once

#include "document/ColorSample.h"

#include <mutex>
#include <vector>

/// The insides of the list of color samples. The mutex is for copies that a worker makes; the rest belongs
/// to the main thread.
class LXColorSampleModelPrivate
{
public:
    LXColorSampleModelPrivate(LXColorSampleModel* model, LXDocumentInterface* document);

    static LXColorSampleModelPrivate* Get(const LXColorSampleModel* model);
    static LXColorSampleModel* Create(LXDocumentInterface* document);

    /// Any thread.
    std::vector<ColorSample> Snapshot() const;
    /// Fills the empty list of a new document; sends nothing.
    void Fill(const std::vector<ColorSample>& samples);

    bool IsRow(int row) const;
    /// An empty one for a bad row.
    ColorSample Row(int row) const;
    void Insert(int row, const ColorSample& sample);
    void Remove(int row);
    /// Writes and sends dataChanged.
    void Replace(int row, const ColorSample& sample);
    void TellColorChanged(int row);
    /// Of all samples that look at these document pixels.
    void TellColorsChanged(const QRect& docRect);

    LXColorSampleModel* const model;
    LXDocumentInterface* const document;

private:
    mutable std::mutex m_Mutex;
    std::vector<ColorSample> m_Samples;
};
