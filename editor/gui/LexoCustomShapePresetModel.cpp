#include "gui/LexoCustomShapePresetModel.h"

#include "gui/ShapeIconEngine.h"

#include <QIcon>
#include <QLineF>
#include <QVector>

namespace {
struct Preset
{
    QString name;
    QPainterPath path;
};

/// A star of five points in a circle of radius 50, one point up.
QPainterPath MakeStar()
{
    constexpr int points = 5;
    constexpr double outer = 50;
    constexpr double inner = 20;
    QPolygonF corners;
    for (int i = 0; i < 2 * points; ++i)
        corners << QLineF::fromPolar(i % 2 == 0 ? outer : inner, 90 + i * 180.0 / points).p2();
    QPainterPath path;
    path.addPolygon(corners);
    path.closeSubpath();
    return path;
}

/// A speech bubble with its tip at the lower left, 100 wide.
QPainterPath MakeBubble()
{
    QPainterPath bubble;
    bubble.addRoundedRect(0, 0, 100, 64, 18, 18);
    QPainterPath tip;
    tip.addPolygon(QPolygonF({{22, 50}, {52, 50}, {18, 88}}));
    tip.closeSubpath();
    return bubble.united(tip);
}
} // namespace

class LexoCustomShapePresetModelPrivate
{
public:
    const QVector<Preset> m_Presets = {
        {LexoCustomShapePresetModel::tr("Demo 1"), MakeStar()},
        {LexoCustomShapePresetModel::tr("Demo 2"), MakeBubble()},
    };
};

LexoCustomShapePresetModel::LexoCustomShapePresetModel(QObject* parent)
    : QAbstractListModel(parent), m_pPrivate(std::make_unique<LexoCustomShapePresetModelPrivate>())
{}

LexoCustomShapePresetModel::~LexoCustomShapePresetModel() = default;

QPainterPath LexoCustomShapePresetModel::GetPath(int row) const
{
    return m_pPrivate->m_Presets.value(row).path;
}

int LexoCustomShapePresetModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_pPrivate->m_Presets.size();
}

QVariant LexoCustomShapePresetModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_pPrivate->m_Presets.size()) return QVariant();
    const Preset& preset = m_pPrivate->m_Presets.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: return preset.name;
    case Qt::DecorationRole: return QIcon(new ShapeIconEngine(preset.path));
    default: return QVariant();
    }
}
