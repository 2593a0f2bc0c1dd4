#include "movetoolprivate/FloatingPiece.h"

#include "common/OverrideCursor.h"
#include "common/PushCommand.h"
#include "common/Reports.h"
#include "common/UndoMacro.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"

#include <optional>

namespace {
constexpr bool IsThereAlready = false;
/// Pixels from which on a person would notice the time.
constexpr qint64 LargePiece = qint64(1) << 20;

/// Tells for as long as the scope lasts that a large piece is being worked on.
class WaitCursor
{
public:
    explicit WaitCursor(const QRect& piece)
    {
        if (qint64(piece.width()) * piece.height() >= LargePiece) m_Cursor.emplace(Qt::WaitCursor);
    }

private:
    std::optional<OverrideCursor> m_Cursor;
};
} // namespace

FloatingPiece::~FloatingPiece()
{
    if (IsFloating()) m_Target.RemoveOverlay();
}

bool FloatingPiece::InRing(int line, const std::function<bool()>& operation) const
{
    const Reports::Place place{line, QString::fromLatin1(m_pReportFile)};
    try {
        return operation();
    } catch (const std::exception& exception) {
        Reports::Exception(place, exception);
        return false;
    } catch (...) {
        Reports::UnknownException(place);
        throw;
    }
}

bool FloatingPiece::Begin(ZKDocumentView* view, unsigned int layerID)
{
    if (!view || IsFloating()) return false;
    m_pDocumentView = view;
    m_LayerID = layerID;
    m_Target = FloatingTarget(view->GetModel()->GetDocument(), layerID, m_Kind);

    const bool isLifted = InRing(__LINE__, [this] {
        Settle();
        return !IsWithoutPixels() && Lift();
    });
    if (isLifted || IsWithoutPixels()) return isLifted;
    m_Target.RemoveOverlay();
    Drop();
    return false;
}

/// Whatever else floats above the document has landed before its pixels are read.
void FloatingPiece::Settle()
{
    if (LexoUndoStack* history = m_pDocumentView->GetHistory()) history->commit();
    m_StartOffset = m_Target.GetDocument()->GetSelectionMaskOffset();
}

bool FloatingPiece::Lift()
{
    const QRect lifted = m_Target.Geometry() & m_Target.GetDocument()->GetSelectionGeometry();
    const WaitCursor cursor(lifted);
    m_Target.CreateOverlay();
    LXImage32* overlay = m_Target.OverlayImage();
    if (!overlay) return false;

    *overlay = m_Target.Lift();
    m_StartPos = lifted.topLeft();
    m_Target.SetOverlayPosition(m_StartPos);
    m_Target.ShowOverlay();
    BeginPixels(lifted);
    return true;
}

void FloatingPiece::BeginPixels(const QRect&) {}

bool FloatingPiece::Move(const QPoint& position)
{
    return InRing(__LINE__, [this, position] {
        if (!IsFloating()) return true;
        LXDocumentInterface* document = m_Target.GetDocument();
        if (IsWithoutPixels()) {
            document->MoveToSelection(position);
            return true;
        }
        const QRect old = document->GetSelectionGeometry();
        const QRect dirty = (old | old.translated(position - old.topLeft())).adjusted(-1, -1, 1, 1);
        m_Target.SetOverlayPosition(m_StartPos + position - m_StartOffset);
        m_Target.InvalidateOverlay(dirty);
        document->UpdateDocumentRect(dirty);
        document->MoveToSelection(position);
        document->AdditionalLayerDataChangedExternal(m_LayerID, dirty);
        return true;
    });
}

bool FloatingPiece::Commit(LexoUndoStack* stack)
{
    return InRing(__LINE__, [this, stack] {
        if (!IsFloating()) return false;
        const WaitCursor cursor(m_Target.OverlayGeometry());
        Commands commands = MakeCommands();
        m_Target.RemoveOverlay();
        Push(stack, std::move(commands));
        Drop();
        return true;
    });
}

void FloatingPiece::Refresh() {}

bool FloatingPiece::EndCancelled()
{
    LXDocumentInterface* document = m_Target.GetDocument();
    if (!IsWithoutPixels()) {
        m_Target.RemoveOverlay();
        document->UpdateDocumentRect(QRect());
        document->EndLayerChange(m_LayerID);
    }
    document->MoveToSelection(m_StartOffset);
    Drop();
    return true;
}

void FloatingPiece::Drop()
{
    m_pDocumentView = nullptr;
    ReleaseImages();
}

void FloatingPiece::ReleaseImages() {}

bool FloatingPiece::IsWithoutPixels() const
{
    return !m_Target.IsMask() &&
           m_Target.GetDocument()->GetLayerKind(m_Target.GetId()) == LayerKind::Adjustment;
}

bool FloatingPiece::IsAtStart() const
{
    return m_Target.OverlayGeometry().topLeft() == m_StartPos;
}

QRect FloatingPiece::Canvas() const
{
    return QRect(QPoint(0, 0), m_Target.GetDocument()->GetDocumentSize());
}

QString FloatingPiece::MacroText() const
{
    return tr("Cut");
}

FloatingPiece::Commands FloatingPiece::MakeCommands() const
{
    Commands commands;
    if (!IsWithoutPixels()) {
        const LXDocumentLayerLockerForRead locker(m_Target.GetDocument(), m_LayerID);
        const LXImage32* image = m_Target.Image();
        commands = MakePixelCommands(
            {m_LayerID, m_Kind, image ? *image : LXImage32(), m_Target.Geometry(), m_Target.NewGround()});
    }
    commands.push_back(MakeMove());
    return commands;
}

std::unique_ptr<LexoCommand> FloatingPiece::MakeCommand(const PaintChange& change, bool apply) const
{
    return MakePaintCommand(m_Target.GetDocument(), m_Kind, change, apply);
}

PaintChange FloatingPiece::LaidDown(const PieceGround& ground) const
{
    return PieceLaidDown(ground, m_Target.ReadOverlay(), m_Target.OverlayGeometry(), Canvas());
}

std::unique_ptr<LexoCommand> FloatingPiece::MakeMove() const
{
    LXDocumentInterface* document = m_Target.GetDocument();
    auto data = std::make_unique<MoveCommandData>();
    data->SetDelta(document->GetSelectionMaskOffset() - m_StartOffset);
    auto command = std::make_unique<MoveCommand>(document, IsThereAlready);
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}

void FloatingPiece::Push(LexoUndoStack* stack, Commands commands) const
{
    const UndoMacro macro(stack, MacroText());
    for (std::unique_ptr<LexoCommand>& command : commands) {
        PushCommand(stack, std::move(command));
    }
}
