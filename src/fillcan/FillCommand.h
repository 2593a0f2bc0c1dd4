#pragma once

#include <memory>

class LXDocumentInterface;
class LexoCommand;
struct FillJobResult;

/// The undoable command that puts a fill into the document; its first redo paints. Main thread only.
/// @param result  without an error.
std::unique_ptr<LexoCommand> MakeFillCommand(LXDocumentInterface* document, const FillJobResult& result);
