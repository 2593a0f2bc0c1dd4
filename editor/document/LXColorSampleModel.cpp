#include "document/LXColorSampleModel.h"

#include "document/LXColorInfoHelper.h"
#include "document/LXColorSampleModel_p.h"
#include "document/LXDocumentInterface.h"

namespace {
QString Percent(double part)
{
    return LXColorSampleModel::tr("%1 %").arg(qRound(part * 100));
}
} // namespace

LXColorSampleModel::LXColorSampleModel(LXDocumentInterface* document)
    : QAbstractItemModel(document), m_pPrivate(std::make_unique<LXColorSampleModelPrivate>(this, document))
{
    connect(document, &LXDocumentInterface::CompositionChanged, this,
            [this](const QRect& rect) { m_pPrivate->TellColorsChanged(rect); });
    // What lies outside the canvas has no color.
    connect(document, &LXDocumentInterface::DocumentSizeChanged, this, [this] {
        for (int row = 0; row < rowCount(); ++row)
            m_pPrivate->TellColorChanged(row);
    });
}

LXColorSampleModel::~LXColorSampleModel() = default;

LXDocumentInterface* LXColorSampleModel::GetDocument() const
{
    return m_pPrivate->document;
}

QColor LXColorSampleModel::GetColor(int row) const
{
    if (!m_pPrivate->IsRow(row)) return QColor();
    const ColorSample sample = m_pPrivate->Row(row);
    return LXColorInfoHelper::AverageColor(m_pPrivate->document, 0, sample.point, sample.radius);
}

QPoint LXColorSampleModel::GetPoint(int row) const
{
    return m_pPrivate->Row(row).point;
}

void LXColorSampleModel::SetPoint(int row, const QPoint& point)
{
    ColorSample sample = m_pPrivate->Row(row);
    if (!m_pPrivate->IsRow(row) || sample.point == point) return;
    sample.point = point;
    m_pPrivate->Replace(row, sample);
    emit SamplePosChanged(row);
    emit SampleColorChanged(row);
}

int LXColorSampleModel::GetSampleRadius(int row) const
{
    return m_pPrivate->Row(row).radius;
}

void LXColorSampleModel::SetSampleRadius(int row, int radius)
{
    ColorSample sample = m_pPrivate->Row(row);
    const int bounded = qBound(0, radius, MaxSampleRadius);
    if (!m_pPrivate->IsRow(row) || sample.radius == bounded) return;
    sample.radius = bounded;
    m_pPrivate->Replace(row, sample);
    emit SampleColorChanged(row);
}

LXColorSampleModel::SampleFormat LXColorSampleModel::GetDisplayFormat(int row) const
{
    return m_pPrivate->Row(row).format;
}

void LXColorSampleModel::SetDisplayFormat(int row, SampleFormat format)
{
    ColorSample sample = m_pPrivate->Row(row);
    if (!m_pPrivate->IsRow(row) || sample.format == format) return;
    sample.format = format;
    m_pPrivate->Replace(row, sample);
    emit SampleColorChanged(row);
}

QString LXColorSampleModel::GetColorText(int row) const
{
    const QColor color = GetColor(row);
    if (!color.isValid()) return tr("–");
    if (GetDisplayFormat(row) == RGB)
        return tr("R %1  G %2  B %3").arg(color.red()).arg(color.green()).arg(color.blue());
    const QColor ink = color.toCmyk();
    return tr("C %1  M %2  Y %3  K %4")
        .arg(Percent(ink.cyanF()), Percent(ink.magentaF()), Percent(ink.yellowF()), Percent(ink.blackF()));
}

void LXColorSampleModel::InsertSample(int row, const QPoint& point)
{
    ColorSample sample = m_pPrivate->Row(rowCount() - 1);
    sample.point = point;
    m_pPrivate->Insert(qBound(0, row, rowCount()), sample);
}

void LXColorSampleModel::RemoveSample(int row)
{
    if (m_pPrivate->IsRow(row)) m_pPrivate->Remove(row);
}

QModelIndex LXColorSampleModel::index(int row, int column, const QModelIndex& parent) const
{
    const bool exists = !parent.isValid() && m_pPrivate->IsRow(row) && column == 0;
    return exists ? createIndex(row, column) : QModelIndex();
}

QModelIndex LXColorSampleModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int LXColorSampleModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_pPrivate->Snapshot().size());
}

int LXColorSampleModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant LXColorSampleModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || !m_pPrivate->IsRow(index.row())) return QVariant();
    switch (role) {
    case Qt::DisplayRole: {
        const QPoint point = GetPoint(index.row());
        return tr("%1, %2: %3").arg(point.x()).arg(point.y()).arg(GetColorText(index.row()));
    }
    case Qt::DecorationRole: return GetColor(index.row());
    default: return QVariant();
    }
}
