#pragma once

#include "gui/PictureSurvey.h"
#include "image/LevelCounts.h"

#include <memory>
#include <vector>

/// Counts the levels of a document's merged picture on a worker, and later only the tiles that changed. Main
/// thread only.
class LevelSurvey : public QObject
{
    Q_OBJECT

public:
    /// Null for a tile in which nothing is to be seen; tiles that are one and the same have one count.
    using TileCounts = std::shared_ptr<const LevelCounts::Tile>;

    /// The counts of the batch's tiles, in its order. Any thread.
    static std::vector<TileCounts> Count(const PictureSurvey::Batch& batch);

    explicit LevelSurvey(QObject* parent);

    /// Null for none; whatever was counted is forgotten.
    void SetDocument(LXDocumentInterface* document);

    PictureSurvey& Survey() { return m_Survey; }

    const PictureSurvey& Survey() const { return m_Survey; }

    /// What is counted so far; parts that changed since count as they were.
    const LevelCounts::Sum& Counts() const { return m_Sum; }

signals:
    void Changed();

private:
    void Forget();
    void Deliver(const std::vector<QPoint>& tiles, const std::vector<TileCounts>& counts);

    PictureSurvey m_Survey;
    int m_Columns = 0;
    std::vector<TileCounts> m_Tiles;
    LevelCounts::Sum m_Sum;
};
