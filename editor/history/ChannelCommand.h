#pragma once

#include "document/SelectionChannels.h"
#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

#include <optional>

class LXDocumentInterface;

/// What stands in a row of the list before and after: without one before the row is new, without one after it
/// goes.
struct ChannelValues
{
    int row = 0;
    std::optional<SelectionChannel> before;
    std::optional<SelectionChannel> after;

    qint64 GetMemoryCost() const;
    void ReleaseImages();
};

/// Adds, replaces or removes one of the selections that a document keeps under names. Main thread.
class ChannelCommand : public ValueCommand<ChannelValues, CommandDataType::SelectionChannel>
{
public:
    ChannelCommand(LXDocumentInterface* document, const ChannelValues& values);

protected:
    void Redo(ChannelValues& values) override;
    void Undo(ChannelValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
