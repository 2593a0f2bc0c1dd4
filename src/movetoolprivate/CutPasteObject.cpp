#include "movetoolprivate/CutPasteObject.h"

#include "common/Reports.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "history/LexoCommand.h"
#include "image/BlendMode.h"

namespace {
constexpr bool ApplyOnPush = true;
constexpr bool IsThereAlready = false;
constexpr bool ChangeAlpha = false;
} // namespace

CutPiece::CutPiece(PaintTarget kind) : FloatingPiece(kind, "src/movetoolprivate/CutPasteObject") {}

CutPiece::~CutPiece()
{
    // A view that closes drops the piece. The hole has no step in the history, so nobody could fill it again.
    if (!IsFloating()) return;
    try {
        PutBack();
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
}

/// The target is changed in one step, so that memory that runs out leaves no half of it erased.
void CutPiece::BeginPixels(const QRect& lifted)
{
    if (lifted.isEmpty()) return;
    LXDocumentInterface* document = Target().GetDocument();
    LXDocumentLayerLockerForWrite locker(document, Target().GetId());
    LXImage32& image = *Target().Image();
    LXImage32 erased = image;
    Target().Erase(erased);
    m_ErasedPixels = CopyPart(image, lifted.translated(-Target().Geometry().topLeft()));
    image = erased;
    locker.Unlock();
    document->LayerImageChanged(Target().GetId(), lifted);
}

bool CutPiece::Cancel()
{
    if (!IsFloating()) return true;
    return InRing(__LINE__, [this] {
        PutBack();
        return EndCancelled();
    });
}

QRect CutPiece::ErasedRect() const
{
    return QRect(StartPos(), QSize(m_ErasedPixels.Width(), m_ErasedPixels.Height()));
}

void CutPiece::PutBack()
{
    if (m_ErasedPixels.IsNull()) return;
    LXDocumentInterface* document = Target().GetDocument();
    LXDocumentLayerLockerForWrite locker(document, Target().GetId());
    LXImage32* image = Target().Image();
    if (!image) return;
    LXImage32 whole = *image;
    BlendOn(m_ErasedPixels, m_ErasedPixels.Rect(), BlendMode::Source, whole,
            ErasedRect().translated(-Target().Geometry().topLeft()), 1.0, ChangeAlpha);
    *image = whole;
    locker.Unlock();
    document->LayerImageChanged(Target().GetId(), ErasedRect());
}

FloatingPiece::Commands CutPiece::MakePixelCommands(const PieceGround& ground) const
{
    const QRect erased = ErasedRect();
    // Laid over its own rest, a partly selected pixel would not become what it was, nor one off the canvas.
    const PaintChange paste = IsAtStart() ? PixelsReplaced(ground, m_ErasedPixels, erased) : LaidDown(ground);

    Commands commands;
    commands.push_back(MakeCommand(PixelsWereReplaced(ground, m_ErasedPixels, erased), IsThereAlready));
    commands.push_back(MakeCommand(paste, ApplyOnPush));
    return commands;
}

void CutPiece::ReleaseImages()
{
    m_ErasedPixels = LXImage32();
}

void LayerCutPasteObject::OnCurrentViewLevelChanged()
{
    if (!IsFloating()) return;
    Target().GetDocument()->AdditionalLayerDataChangedExternal(Target().GetId(), QRect());
}
