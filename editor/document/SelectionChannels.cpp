#include "document/SelectionChannels.h"

SelectionChannels::List SelectionChannels::All() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_Channels;
}

void SelectionChannels::Set(const List& channels)
{
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Channels = channels;
    }
    emit Changed();
}

int SelectionChannels::Find(const QString& name) const
{
    return Names().indexOf(name);
}

QStringList SelectionChannels::Names() const
{
    QStringList names;
    for (const SelectionChannel& channel : All()) {
        names.append(channel.name);
    }
    return names;
}
