#include "history/ChannelCommand.h"

#include "document/LXDocumentInterface_p.h"

namespace {
using MaybeChannel = std::optional<SelectionChannel>;

qint64 BytesOf(const MaybeChannel& channel)
{
    return channel ? DataStream::BytesOf(channel->coverage.image) : 0;
}

void Release(MaybeChannel& channel)
{
    if (channel) channel->coverage.image = LXImage32();
}

void Write(QDataStream& stream, const MaybeChannel& channel)
{
    stream << channel.has_value();
    if (!channel) return;
    stream << channel->name << channel->coverage.offset;
    DataStream::WriteImage(stream, channel->coverage.image);
}

MaybeChannel Read(QDataStream& stream)
{
    bool isThere = false;
    stream >> isThere;
    if (!isThere) return {};
    SelectionChannel channel;
    stream >> channel.name >> channel.coverage.offset;
    channel.coverage.image = DataStream::ReadImage(stream);
    return channel;
}

/// Puts one in the place of the other in a row; nothing for a row that the list doesn't have.
void Exchange(const LXDocumentInterface* document, int row, const MaybeChannel& out, const MaybeChannel& in)
{
    SelectionChannels* channels = LXDocumentInterfacePrivate::Get(document)->channels;
    SelectionChannels::List list = channels->All();
    if (row < 0 || row > list.size() - (out ? 1 : 0)) return;
    if (out) list.removeAt(row);
    if (in) list.insert(row, *in);
    channels->Set(list);
}
} // namespace

static QDataStream& operator<<(QDataStream& stream, const ChannelValues& values)
{
    stream << qint32(values.row);
    Write(stream, values.before);
    Write(stream, values.after);
    return stream;
}

static QDataStream& operator>>(QDataStream& stream, ChannelValues& values)
{
    qint32 row = 0;
    stream >> row;
    values.row = row;
    values.before = Read(stream);
    values.after = Read(stream);
    return stream;
}

qint64 ChannelValues::GetMemoryCost() const
{
    return BytesOf(before) + BytesOf(after);
}

void ChannelValues::ReleaseImages()
{
    Release(before);
    Release(after);
}

ChannelCommand::ChannelCommand(LXDocumentInterface* document, const ChannelValues& values)
    : ValueCommand(values), m_pDocument(document)
{}

void ChannelCommand::Redo(ChannelValues& values)
{
    Exchange(m_pDocument, values.row, values.before, values.after);
}

void ChannelCommand::Undo(ChannelValues& values)
{
    Exchange(m_pDocument, values.row, values.after, values.before);
}
