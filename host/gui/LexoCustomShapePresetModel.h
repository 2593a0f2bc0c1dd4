#pragma once

#include "ZKHostExport.h"

#include <QAbstractListModel>
#include <QPainterPath>

#include <memory>

class LexoCustomShapePresetModelPrivate;

/// The shapes that a custom shape is drawn from: a row each, with the name as text and the filled shape as
/// decoration, in the text color of the moment's look. Main thread only.
class ZK_HOST_EXPORT LexoCustomShapePresetModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit LexoCustomShapePresetModel(QObject* parent = nullptr);
    ~LexoCustomShapePresetModel() override;

    /// The shape in units of its own; only its form counts. Closed sub paths, not empty. Empty for a bad row.
    QPainterPath GetPath(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::unique_ptr<LexoCustomShapePresetModelPrivate> m_pPrivate;
};
