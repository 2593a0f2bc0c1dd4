#pragma once

#include "document/LXDocumentModel.h"

#include <QVector>

#include <algorithm>

/// Tells changes of a layer's small pictures from those that say something about the layer.
namespace ThumbnailRoles {
/// Whether the roles of a change in the list of layers are those of thumbnails alone.
inline bool AreAll(const QVector<int>& roles)
{
    const auto isPicture = [](int role) {
        return role == Qt::DecorationRole || role == LXDocumentModel::MaskThumbnailRole;
    };
    return !roles.isEmpty() && std::all_of(roles.begin(), roles.end(), isPicture);
}
} // namespace ThumbnailRoles
