#include "document/LXColorSampleModel_p.h"

LXColorSampleModelPrivate::LXColorSampleModelPrivate(LXColorSampleModel* owner,
                                                     LXDocumentInterface* ofDocument)
    : model(owner), document(ofDocument)
{}

LXColorSampleModelPrivate* LXColorSampleModelPrivate::Get(const LXColorSampleModel* model)
{
    return model->m_pPrivate.get();
}

LXColorSampleModel* LXColorSampleModelPrivate::Create(LXDocumentInterface* document)
{
    return new LXColorSampleModel(document);
}

std::vector<ColorSample> LXColorSampleModelPrivate::Snapshot() const
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    return m_Samples;
}

void LXColorSampleModelPrivate::Fill(const std::vector<ColorSample>& samples)
{
    const std::lock_guard<std::mutex> guard(m_Mutex);
    m_Samples = samples;
}

bool LXColorSampleModelPrivate::IsRow(int row) const
{
    return row >= 0 && row < static_cast<int>(m_Samples.size());
}

ColorSample LXColorSampleModelPrivate::Row(int row) const
{
    return IsRow(row) ? m_Samples[static_cast<size_t>(row)] : ColorSample();
}

void LXColorSampleModelPrivate::Insert(int row, const ColorSample& sample)
{
    model->beginInsertRows(QModelIndex(), row, row);
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Samples.insert(m_Samples.begin() + row, sample);
    }
    model->endInsertRows();
    emit model->SampleInserted(row);
}

void LXColorSampleModelPrivate::Remove(int row)
{
    model->beginRemoveRows(QModelIndex(), row, row);
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Samples.erase(m_Samples.begin() + row);
    }
    model->endRemoveRows();
    emit model->SampleRemoved(row);
}

void LXColorSampleModelPrivate::Replace(int row, const ColorSample& sample)
{
    {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Samples[static_cast<size_t>(row)] = sample;
    }
    const QModelIndex changed = model->index(row);
    emit model->dataChanged(changed, changed);
}

void LXColorSampleModelPrivate::TellColorChanged(int row)
{
    const QModelIndex changed = model->index(row);
    emit model->dataChanged(changed, changed, {Qt::DisplayRole, Qt::DecorationRole});
    emit model->SampleColorChanged(row);
}

void LXColorSampleModelPrivate::TellColorsChanged(const QRect& docRect)
{
    for (int row = 0; IsRow(row); ++row) {
        if (Row(row).Square().intersects(docRect)) TellColorChanged(row);
    }
}
