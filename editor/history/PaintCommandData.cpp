#include "history/PaintCommandData.h"

#include "history/DataStream.h"
#include "history/PaintPlacement.h"
#include "history/TileSharing.h"
#include "image/LXBlend.h"
#include "image/TileWalk.h"

#include <optional>

class PaintCommandDataPrivate
{
public:
    unsigned int id = 0;
    LXImage32 undoImage;
    LXImage32 redoImage;
    QRect before;
    QRect after;
    std::optional<PaintCommandData::Places> kept; ///< of whole tiles; without it the sizes tell the places
};

namespace {
LXImage32 Part(const LXImage32& image, const QRect& part)
{
    return part.isEmpty() ? image : CopyPart(image, part);
}

bool IsOnGrid(const QPoint& offset)
{
    return offset.x() % TileWalk::TileSide == 0 && offset.y() % TileWalk::TileSide == 0;
}

QDataStream& operator<<(QDataStream& stream, const std::optional<PaintCommandData::Places>& places)
{
    stream << places.has_value();
    if (places) stream << places->undoImage << places->redoImage << places->undoChange << places->redoChange;
    return stream;
}

QDataStream& operator>>(QDataStream& stream, std::optional<PaintCommandData::Places>& places)
{
    bool isKept = false;
    stream >> isKept;
    if (!isKept) return stream;
    places.emplace();
    return stream >> places->undoImage >> places->redoImage >> places->undoChange >> places->redoChange;
}

/// Damaged places could make undo write anywhere.
bool AreRight(const PaintCommandDataPrivate& read)
{
    if (!read.kept) return true;
    const auto isOfSize = [](const LXImage32& image, const QRect& place) {
        return image.IsNull() ? place.isEmpty() : place.size() == QSize(image.Width(), image.Height());
    };
    return isOfSize(read.undoImage, read.kept->undoImage) && isOfSize(read.redoImage, read.kept->redoImage) &&
           (read.before | read.after).contains(read.kept->redoImage) &&
           (read.kept->undoImage.isEmpty() || read.before.contains(read.kept->undoImage));
}
} // namespace

PaintCommandData::PaintCommandData() : m_pPrivate(std::make_unique<PaintCommandDataPrivate>()) {}

PaintCommandData::~PaintCommandData() = default;

void PaintCommandData::SetLayerID(unsigned int id)
{
    m_pPrivate->id = id;
}

void PaintCommandData::SetUndoImage(const LXImage32& image, const QRect& part)
{
    m_pPrivate->undoImage = Part(image, part);
}

void PaintCommandData::SetRedoImage(const LXImage32& image, const QRect& part)
{
    m_pPrivate->redoImage = Part(image, part);
}

void PaintCommandData::SetUndoGeometry(const QRect& geometry)
{
    m_pPrivate->before = geometry;
}

void PaintCommandData::SetRedoGeometry(const QRect& geometry)
{
    m_pPrivate->after = geometry;
}

unsigned int PaintCommandData::GetLayerID() const
{
    return m_pPrivate->id;
}

const LXImage32& PaintCommandData::GetUndoImage() const
{
    return m_pPrivate->undoImage;
}

const LXImage32& PaintCommandData::GetRedoImage() const
{
    return m_pPrivate->redoImage;
}

QRect PaintCommandData::GetUndoGeometry() const
{
    return m_pPrivate->before;
}

QRect PaintCommandData::GetRedoGeometry() const
{
    return m_pPrivate->after;
}

PaintCommandData::Places PaintCommandData::GetPlaces() const
{
    if (m_pPrivate->kept) return *m_pPrivate->kept;
    const auto sizeOf = [](const LXImage32& image) { return QSize(image.Width(), image.Height()); };
    Places places;
    places.undoImage =
        PaintPlacement::OfUndoImage(sizeOf(m_pPrivate->undoImage), m_pPrivate->before, m_pPrivate->after);
    places.redoImage =
        PaintPlacement::OfRedoImage(sizeOf(m_pPrivate->redoImage), m_pPrivate->before, m_pPrivate->after);
    places.undoChange = places.undoImage;
    places.redoChange = places.redoImage;
    return places;
}

void PaintCommandData::KeepTiles(const LXImage32& before, LXImage32& after)
{
    const Places places = GetPlaces();
    const QRect beforeRect = m_pPrivate->before;
    const QRect afterRect = beforeRect | places.redoImage;
    const QPoint offset = beforeRect.topLeft() - afterRect.topLeft();
    if (places.redoImage.isEmpty() || m_pPrivate->kept || !IsOnGrid(offset)) return;

    // Undo writes back what the caller kept, which needn't be what is there.
    const QRect undone = places.undoImage;
    if (!beforeRect.contains(undone | (places.redoImage & beforeRect)) ||
        (places.redoImage & beforeRect & undone) != (places.redoImage & beforeRect) ||
        !TileSharing::IsPartOf(m_pPrivate->undoImage, before, undone.translated(-beforeRect.topLeft()))) {
        return;
    }
    Places kept = places;
    kept.redoImage = TileSharing::WholeTiles((places.redoImage | undone).translated(-afterRect.topLeft()),
                                             afterRect.size())
                         .translated(afterRect.topLeft());
    kept.undoImage = kept.redoImage & beforeRect;
    TileSharing::ShareEqualTiles(before, after, offset / TileWalk::TileSide,
                                 kept.redoImage.translated(-afterRect.topLeft()));
    LXImage32 undoImage = CopyPart(before, kept.undoImage.translated(-beforeRect.topLeft()));
    LXImage32 redoImage = CopyPart(after, kept.redoImage.translated(-afterRect.topLeft()));
    // The target holds what is now; the rest is the step's own.
    const qint64 own = TileSharing::BytesOnlyIn(m_pPrivate->undoImage, redoImage) +
                       TileSharing::BytesOnlyIn(m_pPrivate->redoImage, redoImage);
    if (TileSharing::BytesOnlyIn(undoImage, redoImage) > own) return;
    m_pPrivate->undoImage = std::move(undoImage);
    m_pPrivate->redoImage = std::move(redoImage);
    m_pPrivate->kept = kept;
}

bool PaintCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->id << m_pPrivate->before << m_pPrivate->after << m_pPrivate->kept;
        DataStream::WriteImage(stream, m_pPrivate->undoImage);
        DataStream::WriteImage(stream, m_pPrivate->redoImage);
    });
}

bool PaintCommandData::Deserialize(IReader* reader)
{
    PaintCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.id >> read.before >> read.after >> read.kept;
        read.undoImage = DataStream::ReadImage(stream);
        read.redoImage = DataStream::ReadImage(stream);
    });
    if (!isWhole || !AreRight(read)) return false;
    *m_pPrivate = read;
    return true;
}

void PaintCommandData::ReleaseSerializeData()
{
    m_pPrivate->undoImage = LXImage32();
    m_pPrivate->redoImage = LXImage32();
    m_pPrivate->kept.reset();
}

qint64 PaintCommandData::GetMemoryCost() const
{
    const LXImage32& before = m_pPrivate->undoImage;
    const LXImage32& after = m_pPrivate->redoImage;
    return TileSharing::BytesOnlyIn(before, after) + TileSharing::BytesOnlyIn(after, before);
}
