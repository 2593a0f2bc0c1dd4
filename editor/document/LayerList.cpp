#include "document/LayerList.h"

#include <algorithm>

Layer::Layer(PixelLockTable::Key lockKey, const LayerState& state)
    : key(lockKey), image(state.image), mask(state.mask), properties(state.properties)
{}

int LayerList::Count() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return static_cast<int>(m_Layers.size());
}

std::shared_ptr<Layer> LayerList::Find(unsigned int id) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return FindLocked(id);
}

std::vector<std::shared_ptr<Layer>> LayerList::All() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_Layers;
}

unsigned int LayerList::IdOf(const Layer& layer) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const auto found = std::find_if(m_Layers.begin(), m_Layers.end(),
                                    [&layer](const auto& candidate) { return candidate.get() == &layer; });
    return found == m_Layers.end() ? 0 : static_cast<unsigned int>(found - m_Layers.begin()) + 1;
}

LayerProperties LayerList::Properties(unsigned int id) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const std::shared_ptr<Layer> layer = FindLocked(id);
    return layer ? layer->properties : LayerProperties();
}

LayerProperties LayerList::PropertiesOf(const Layer& layer) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return layer.properties;
}

bool LayerList::ChangeProperties(unsigned int id, const Change& change)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const std::shared_ptr<Layer> layer = FindLocked(id);
    if (layer) change(layer->properties);
    return layer != nullptr;
}

void LayerList::ChangePropertiesOf(Layer& layer, const Change& change)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    change(layer.properties);
}

OverlayPlace LayerList::PlaceOf(const Overlay& overlay) const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return overlay.place;
}

void LayerList::ChangePlaceOf(Overlay& overlay, const std::function<void(OverlayPlace&)>& change)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    change(overlay.place);
}

void LayerList::Insert(int row, std::shared_ptr<Layer> layer)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Layers.insert(m_Layers.begin() + row, std::move(layer));
}

void LayerList::Remove(int row)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Layers.erase(m_Layers.begin() + row);
}

void LayerList::Move(int from, int to)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    const auto first = m_Layers.begin();
    if (from < to) {
        std::rotate(first + from, first + from + 1, first + to + 1);
    } else {
        std::rotate(first + to, first + from, first + from + 1);
    }
}

std::shared_ptr<Layer> LayerList::FindLocked(unsigned int id) const
{
    return id > 0 && id <= m_Layers.size() ? m_Layers[id - 1] : nullptr;
}
