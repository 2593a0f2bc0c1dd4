#include "movetoolprivate/CopyPasteObject.h"

#include "history/LexoCommand.h"

namespace {
constexpr bool ApplyOnPush = true;
} // namespace

CopyPiece::CopyPiece(PaintTarget kind) : FloatingPiece(kind, "src/movetoolprivate/CopyPasteObject") {}

bool CopyPiece::Cancel()
{
    return !IsFloating() || EndCancelled();
}

FloatingPiece::Commands CopyPiece::MakePixelCommands(const PieceGround& ground) const
{
    PaintChange paste = LaidDown(ground);
    // A partly selected pixel laid over itself would grow denser.
    if (IsAtStart()) paste.redoImage = paste.undoImage;

    Commands commands;
    commands.push_back(MakeCommand(paste, ApplyOnPush));
    return commands;
}

QString LayerCopyPasteObject::MacroText() const
{
    return IsWithoutPixels() ? CopyPiece::MacroText() : tr("Copy");
}
