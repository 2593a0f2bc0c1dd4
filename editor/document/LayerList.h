#pragma once

#include "document/Layer.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// The layers of a document, topmost first, without locks on pixels and without signals.
///
/// Any thread, though only the main thread adds, removes and moves. The mutex is held for the time of a call
/// and nothing else is locked inside.
class LayerList
{
public:
    using Change = std::function<void(LayerProperties&)>;

    int Count() const;
    /// By id; null for id 0 and bad ids.
    std::shared_ptr<Layer> Find(unsigned int id) const;
    std::vector<std::shared_ptr<Layer>> All() const;
    /// 0 for a layer that isn't in the list.
    unsigned int IdOf(const Layer& layer) const;

    /// Of a bad id or no layer: the properties of an empty layer.
    LayerProperties Properties(unsigned int id) const;
    LayerProperties PropertiesOf(const Layer& layer) const;
    /// False for a bad id; the change isn't called then.
    bool ChangeProperties(unsigned int id, const Change& change);
    void ChangePropertiesOf(Layer& layer, const Change& change);

    OverlayPlace PlaceOf(const Overlay& overlay) const;
    void ChangePlaceOf(Overlay& overlay, const std::function<void(OverlayPlace&)>& change);

    void Insert(int row, std::shared_ptr<Layer> layer);
    void Remove(int row);
    /// The layer at `from` stands at `to` afterwards.
    void Move(int from, int to);

private:
    std::shared_ptr<Layer> FindLocked(unsigned int id) const;

    mutable std::mutex m_Mutex;
    std::vector<std::shared_ptr<Layer>> m_Layers;
};
