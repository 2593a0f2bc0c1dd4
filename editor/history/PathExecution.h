#pragma once

class LXPathsListModel;
class LexoCommandData;

/// What the commands of paths do with their data. Tools hand some data to PathCommand and some to
/// SubpathCommand, and not always the same, so that both commands do all of it here. Main thread.
namespace PathExecution {
/// Whether this is data of a path or of a sub path.
bool IsPathData(const LexoCommandData* data);

void Redo(LXPathsListModel& paths, LexoCommandData& data);
void Undo(LXPathsListModel& paths, const LexoCommandData& data);
} // namespace PathExecution
