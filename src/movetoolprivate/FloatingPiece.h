#pragma once

#include "movetoolprivate/CopyPasteBase.h"
#include "movetoolprivate/FloatingTarget.h"
#include "movetoolprivate/PieceChanges.h"

#include "common/PaintCommands.h"

#include <QPoint>
#include <QRect>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class LexoCommand;

/// What the four pieces of pixels have in common: the selected part of a layer or of its mask, carried in the
/// overlay above it. `Move` takes the new top left of the selection, in document pixels, and touches no
/// pixel.
///
/// A piece is empty, floats from Begin to Commit or Cancel, and is empty afterwards. On an adjustment layer
/// there are no pixels to lift: Begin answers false, and whoever goes on moves the selection alone.
class FloatingPiece : public CopyPasteBase
{
    Q_OBJECT

public:
    ~FloatingPiece() override;

    bool Begin(ZKDocumentView* view, unsigned int layerID) override;
    /// False also when nothing floats. When no command could be made, the piece still floats.
    bool Commit(LexoUndoStack* stack) override;
    bool Move(const QPoint& position) override;
    void Refresh() override;

protected:
    using Commands = std::vector<std::unique_ptr<LexoCommand>>;

    /// @param reportFile  the file that failure reports name
    FloatingPiece(PaintTarget kind, const char* reportFile) : m_pReportFile(reportFile), m_Kind(kind) {}

    /// After the piece shows: what becomes of the pixels under it.
    /// @param lifted  where it was lifted, document pixels; empty when the selection misses the target
    virtual void BeginPixels(const QRect& lifted);
    /// The commands that make what is seen the document's content, but for the selection's move.
    virtual Commands MakePixelCommands(const PieceGround& ground) const = 0;
    virtual QString MacroText() const;
    virtual void ReleaseImages();

    bool IsFloating() const { return m_pDocumentView != nullptr; }

    const FloatingTarget& Target() const { return m_Target; }

    /// Top left of the lifted pixels at the start.
    QPoint StartPos() const { return m_StartPos; }

    /// Whether the layer has no pixels of its own.
    bool IsWithoutPixels() const;
    /// Whether the piece lies where it was lifted.
    bool IsAtStart() const;
    std::unique_ptr<LexoCommand> MakeCommand(const PaintChange& change, bool apply) const;
    PaintChange LaidDown(const PieceGround& ground) const;
    QRect Canvas() const;

    /// Takes the piece and its overlay away and brings the selection back.
    bool EndCancelled();
    /// The ring of the operations: a `std::exception` is reported and answers false, anything else is
    /// reported and goes on.
    bool InRing(int line, const std::function<bool()>& operation) const;

private:
    void Settle();
    bool Lift();
    void Drop();
    Commands MakeCommands() const;
    std::unique_ptr<LexoCommand> MakeMove() const;
    void Push(LexoUndoStack* stack, Commands commands) const;

    ZKDocumentView* m_pDocumentView = nullptr; ///< null when nothing floats
    unsigned int m_LayerID = 0;
    QPoint m_StartOffset; ///< the selection's at the start
    QPoint m_StartPos;

    FloatingTarget m_Target;
    const char* m_pReportFile;
    PaintTarget m_Kind;
};
