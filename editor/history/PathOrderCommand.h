#pragma once

#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

struct PathOrderValues : PlainValues
{
    int from = 0;
    int to = 0;
};

/// Moves a path to another row. Main thread.
class PathOrderCommand : public ValueCommand<PathOrderValues, CommandDataType::PathOrder>
{
public:
    /// The path at row `from` stands at row `to` afterwards.
    PathOrderCommand(LXDocumentInterface* document, int from, int to);

protected:
    void Redo(PathOrderValues& values) override;
    void Undo(PathOrderValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
