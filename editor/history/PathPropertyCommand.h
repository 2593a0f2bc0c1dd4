#pragma once

#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

#include <QVariant>

class LXDocumentInterface;

/// What of a path can be set by itself.
enum class PathProperty
{
    Name,
    Visible
};

struct PathPropertyValues : PlainValues
{
    int row = -1;
    PathProperty property = PathProperty::Name;
    QVariant before;
    QVariant after;
};

/// Sets one property of a path. Main thread.
class PathPropertyCommand : public ValueCommand<PathPropertyValues, CommandDataType::PathProperty>
{
public:
    /// Takes the value before from the document.
    PathPropertyCommand(const LXDocumentInterface* document, int row, PathProperty property,
                        const QVariant& after);

protected:
    void Redo(PathPropertyValues& values) override;
    void Undo(PathPropertyValues& values) override;

private:
    const LXDocumentInterface* m_pDocument;
};
