#include "document/LXDocumentModel.h"

#include "document/LXDocumentModel_p.h"
#include "document/LayerLocks.h"

#include <QTransform>

namespace {
unsigned int IdOf(int row)
{
    return static_cast<unsigned int>(row) + 1;
}
} // namespace

LXDocumentModel::LXDocumentModel(LXDocumentInterface* document)
    : QAbstractItemModel(document), m_pPrivate(std::make_unique<LXDocumentModelPrivate>(this, document))
{}

LXDocumentModel::~LXDocumentModel() = default;

LXDocumentInterface* LXDocumentModel::GetDocument() const
{
    return m_pPrivate->document;
}

unsigned int LXDocumentModel::GetLockFlags(int row) const
{
    return m_pPrivate->Properties(row).locks;
}

void LXDocumentModel::SetLockFlags(int row, unsigned int flags)
{
    const unsigned int known = flags & LayerLocks::Every;
    if (!m_pPrivate->IsRow(row) || GetLockFlags(row) == known) return;
    m_pPrivate->Change(
        row, [known](LayerProperties& layer) { layer.locks = known; }, LocksRole);
    emit LocksChanged(IdOf(row), known);
}

bool LXDocumentModel::GetLayerSelected(int row) const
{
    return m_pPrivate->IsRow(row) && !GetMaskSelected(row);
}

bool LXDocumentModel::GetMaskSelected(int row) const
{
    return m_pPrivate->Properties(row).isMaskSelected;
}

void LXDocumentModel::SetMaskSelected(int row, bool selected)
{
    if (GetMaskSelected(row) == selected || !HasMask(row)) return;
    m_pPrivate->Change(
        row, [=](LayerProperties& layer) { layer.isMaskSelected = selected; }, MaskSelectedRole);
    emit MaskSelectedChanged(selected);
    emit LayerSelectedChanged(!selected);
}

bool LXDocumentModel::HasMask(int row) const
{
    return m_pPrivate->Properties(row).hasMask;
}

bool LXDocumentModel::GetMaskLinked(int row) const
{
    const LayerProperties layer = m_pPrivate->Properties(row);
    return layer.hasMask && layer.isMaskLinked;
}

void LXDocumentModel::SetMaskLinked(int row, bool linked)
{
    if (!HasMask(row) || GetMaskLinked(row) == linked) return;
    m_pPrivate->Change(
        row, [=](LayerProperties& layer) { layer.isMaskLinked = linked; }, MaskLinkedRole);
}

QPoint LXDocumentModel::GetLayerOffset(int row) const
{
    return m_pPrivate->Properties(row).rect.topLeft();
}

QPoint LXDocumentModel::GetMaskOffset(int row) const
{
    return m_pPrivate->Properties(row).maskRect.topLeft();
}

QTransform LXDocumentModel::GetTextLayerTransformation(int row) const
{
    const LayerProperties layer = m_pPrivate->Properties(row);
    return layer.text ? layer.text->transform : QTransform();
}

QString LXDocumentModel::GetName(int row) const
{
    return m_pPrivate->Properties(row).name;
}

void LXDocumentModel::SetName(int row, const QString& name)
{
    if (GetName(row) == name) return;
    m_pPrivate->Change(
        row, [&name](LayerProperties& layer) { layer.name = name; }, Qt::DisplayRole);
}

double LXDocumentModel::GetOpacity(int row) const
{
    return m_pPrivate->Properties(row).opacity;
}

void LXDocumentModel::SetOpacity(int row, double opacity)
{
    const double clamped = qBound(0.0, opacity, 1.0);
    if (!m_pPrivate->IsRow(row) || qFuzzyCompare(1.0 + GetOpacity(row), 1.0 + clamped)) return;
    m_pPrivate->Change(
        row, [clamped](LayerProperties& layer) { layer.opacity = clamped; }, OpacityRole);
    m_pPrivate->InvalidateLayer(row);
}

unsigned int LXDocumentModel::GetBlendMode(int row) const
{
    return m_pPrivate->Properties(row).blendMode;
}

void LXDocumentModel::SetBlendMode(int row, unsigned int mode)
{
    if (!m_pPrivate->IsRow(row) || GetBlendMode(row) == mode) return;
    m_pPrivate->Change(
        row, [mode](LayerProperties& layer) { layer.blendMode = mode; }, BlendModeRole);
    m_pPrivate->InvalidateLayer(row);
}

bool LXDocumentModel::GetVisible(int row) const
{
    return m_pPrivate->Properties(row).isVisible;
}

void LXDocumentModel::SetVisible(int row, bool visible)
{
    if (!m_pPrivate->IsRow(row) || GetVisible(row) == visible) return;
    m_pPrivate->Change(
        row, [visible](LayerProperties& layer) { layer.isVisible = visible; }, VisibleRole);
    m_pPrivate->InvalidateLayer(row);
}

void LXDocumentModel::MoveLayer(int from, int to)
{
    if (!m_pPrivate->IsRow(from) || !m_pPrivate->IsRow(to) || from == to) return;
    // The model counts the row before which the moved one lands, as the rows stood before the move.
    beginMoveRows(QModelIndex(), from, from, QModelIndex(), to > from ? to + 1 : to);
    m_pPrivate->Document()->layers.Move(from, to);
    endMoveRows();
    m_pPrivate->InvalidateLayer(to);
}

void LXDocumentModel::UpdateLayerThumbnail(int row)
{
    if (!m_pPrivate->IsRow(row)) return;
    m_pPrivate->Document()->layers.Find(IdOf(row))->thumbnail = QImage();
    m_pPrivate->Notify(row, {Qt::DecorationRole});
}

void LXDocumentModel::UpdateMaskThumbnail(int row)
{
    if (!HasMask(row)) return;
    m_pPrivate->Document()->layers.Find(IdOf(row))->maskThumbnail = QImage();
    m_pPrivate->Notify(row, {MaskThumbnailRole});
}

QModelIndex LXDocumentModel::index(int row, int column, const QModelIndex& parent) const
{
    const bool exists = !parent.isValid() && m_pPrivate->IsRow(row) && column == 0;
    return exists ? createIndex(row, column) : QModelIndex();
}

QModelIndex LXDocumentModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int LXDocumentModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_pPrivate->Document()->layers.Count();
}

int LXDocumentModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1;
}

Qt::ItemFlags LXDocumentModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags always = QAbstractItemModel::flags(index);
    return index.isValid() ? always | Qt::ItemIsEditable | Qt::ItemNeverHasChildren : always;
}

QVariant LXDocumentModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || !m_pPrivate->IsRow(index.row())) return QVariant();
    const LayerProperties layer = m_pPrivate->Properties(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return layer.name;
    case Qt::DecorationRole: return m_pPrivate->LayerThumbnail(index.row());
    case MaskThumbnailRole: return m_pPrivate->MaskThumbnail(index.row());
    case HasMaskRole: return layer.hasMask;
    case MaskSelectedRole: return layer.isMaskSelected;
    case MaskLinkedRole: return layer.hasMask && layer.isMaskLinked;
    case VisibleRole: return layer.isVisible;
    case OpacityRole: return layer.opacity;
    case BlendModeRole: return layer.blendMode;
    case LocksRole: return layer.locks;
    case KindRole: return layer.kind;
    case AdjustmentRole:
        return layer.kind == LayerKind::Adjustment ? QVariant::fromValue(layer.adjustment) : QVariant();
    default: return QVariant();
    }
}
