#include "history/ChannelCommands.h"

#include "document/LXDocumentInterface_p.h"
#include "document/SelectionChannels.h"
#include "history/ChannelCommand.h"
#include "history/MWSelectionCommand.h"
#include "history/MWSelectionCommandData.h"

#include <QCoreApplication>

#include <memory>

namespace {
LexoCommand* Named(LexoCommand* command, const char* text)
{
    command->setText(QCoreApplication::translate("ChannelCommands", text));
    return command;
}

SelectionChannels* ChannelsOf(const LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document)->channels;
}

PlacedImage SelectionOf(const LXDocumentInterface* document)
{
    PlacedImage selection;
    selection.image = LXDocumentInterfacePrivate::Get(document)->selection.Snapshot(&selection.offset);
    return selection;
}
} // namespace

LexoCommand* ChannelCommands::Save(LXDocumentInterface* document, const QString& name)
{
    if (name.isEmpty() || !document->HasSelection()) return nullptr;
    const SelectionChannels::List channels = ChannelsOf(document)->All();
    const int found = ChannelsOf(document)->Find(name);
    ChannelValues values;
    values.row = found < 0 ? channels.size() : found;
    if (found >= 0) values.before = channels[found];
    values.after = SelectionChannel{name, SelectionOf(document)};
    return Named(new ChannelCommand(document, values),
                 QT_TRANSLATE_NOOP("ChannelCommands", "Save selection"));
}

LexoCommand* ChannelCommands::Load(LXDocumentInterface* document, int row, SelectionCommandData::LogicalOp op)
{
    const SelectionChannels::List channels = ChannelsOf(document)->All();
    if (row < 0 || row >= channels.size()) return nullptr;
    const PlacedImage& loaded = channels[row].coverage;
    const PlacedImage former = SelectionOf(document);
    const bool hasSelection = document->HasSelection();
    auto data = std::make_unique<MWSelectionCommandData>();
    data->SetNoUndoSelection(!hasSelection);
    data->SetUndoSel(former.offset, former.image);
    data->SetRedoSel(loaded.offset, loaded.image, hasSelection ? op : SelectionCommandData::Replace);
    auto command = std::make_unique<MWSelectionCommand>(document, true);
    if (command->SetCommandData(data.get())) static_cast<void>(data.release()); // the command has it now
    return Named(command.release(), QT_TRANSLATE_NOOP("ChannelCommands", "Load selection"));
}

LexoCommand* ChannelCommands::Delete(LXDocumentInterface* document, int row)
{
    const SelectionChannels::List channels = ChannelsOf(document)->All();
    if (row < 0 || row >= channels.size()) return nullptr;
    ChannelValues values;
    values.row = row;
    values.before = channels[row];
    return Named(new ChannelCommand(document, values),
                 QT_TRANSLATE_NOOP("ChannelCommands", "Delete saved selection"));
}
