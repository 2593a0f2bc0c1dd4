#include "history/ColorSamplesCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/ColorSamplesCommandDataAdd.h"
#include "history/ColorSamplesCommandDataClear.h"
#include "history/ColorSamplesCommandDataMove.h"
#include "history/ColorSamplesCommandDataRemove.h"
#include "history/ColorSamplesCommandData_p.h"
#include "history/CommandDataType.h"

class ColorSamplesCommandPrivate
{
public:
    explicit ColorSamplesCommandPrivate(const LXDocumentInterface* document)
        : m_Samples(*LXColorSampleModelPrivate::Get(document->GetColorSamples()))
    {}

    void Redo(LexoCommandData& data);
    void Undo(LexoCommandData& data);

private:
    template <class Data>
    static auto& ValuesOf(LexoCommandData& data)
    {
        return *static_cast<Data&>(data).m_pPrivate;
    }

    void Add(const ColorSamplesCommandDataAddPrivate& values);
    void TakeAway(ColorSamplesCommandDataAddPrivate& values);
    void Remove(ColorSamplesCommandDataRemovePrivate& values);
    void Move(ColorSamplesCommandDataMovePrivate& values);
    void Clear(ColorSamplesCommandDataClearPrivate& values);
    void Insert(int row, const ColorSample& sample);

    int Count() const { return m_Samples.model->rowCount(); }

    LXColorSampleModelPrivate& m_Samples;
};

void ColorSamplesCommandPrivate::Redo(LexoCommandData& data)
{
    switch (data.GetDataType()) {
    case CommandDataType::ColorSamplesAdd: return Add(ValuesOf<ColorSamplesCommandDataAdd>(data));
    case CommandDataType::ColorSamplesRemove: return Remove(ValuesOf<ColorSamplesCommandDataRemove>(data));
    case CommandDataType::ColorSamplesMove: return Move(ValuesOf<ColorSamplesCommandDataMove>(data));
    case CommandDataType::ColorSamplesClear: return Clear(ValuesOf<ColorSamplesCommandDataClear>(data));
    default: return;
    }
}

void ColorSamplesCommandPrivate::Undo(LexoCommandData& data)
{
    switch (data.GetDataType()) {
    case CommandDataType::ColorSamplesAdd: return TakeAway(ValuesOf<ColorSamplesCommandDataAdd>(data));
    case CommandDataType::ColorSamplesRemove: {
        const auto& values = ValuesOf<ColorSamplesCommandDataRemove>(data);
        if (values.row >= 0) Insert(values.row, values.sample);
        return;
    }
    case CommandDataType::ColorSamplesMove: {
        const auto& values = ValuesOf<ColorSamplesCommandDataMove>(data);
        return m_Samples.model->SetPoint(values.row, values.before);
    }
    case CommandDataType::ColorSamplesClear:
        for (const ColorSample& sample : ValuesOf<ColorSamplesCommandDataClear>(data).samples)
            Insert(Count(), sample);
        return;
    default: return;
    }
}

void ColorSamplesCommandPrivate::Add(const ColorSamplesCommandDataAddPrivate& values)
{
    if (values.isWhole) {
        Insert(Count(), values.sample);
    } else {
        m_Samples.model->InsertSample(Count(), values.sample.point);
    }
}

void ColorSamplesCommandPrivate::TakeAway(ColorSamplesCommandDataAddPrivate& values)
{
    values.sample = m_Samples.Row(Count() - 1);
    values.isWhole = true;
    m_Samples.model->RemoveSample(Count() - 1);
}

void ColorSamplesCommandPrivate::Remove(ColorSamplesCommandDataRemovePrivate& values)
{
    // Undo brings nothing back that wasn't there.
    if (!m_Samples.IsRow(values.row)) {
        values.row = -1;
        return;
    }
    values.sample = m_Samples.Row(values.row);
    m_Samples.model->RemoveSample(values.row);
}

void ColorSamplesCommandPrivate::Move(ColorSamplesCommandDataMovePrivate& values)
{
    if (!values.after) values.after = m_Samples.model->GetPoint(values.row);
    m_Samples.model->SetPoint(values.row, *values.after);
}

void ColorSamplesCommandPrivate::Clear(ColorSamplesCommandDataClearPrivate& values)
{
    values.samples = m_Samples.Snapshot();
    while (Count() > 0)
        m_Samples.model->RemoveSample(Count() - 1);
}

void ColorSamplesCommandPrivate::Insert(int row, const ColorSample& sample)
{
    m_Samples.Insert(qBound(0, row, Count()), sample);
}

ColorSamplesCommand::ColorSamplesCommand(LXDocumentInterface* document)
    : m_pPrivate(std::make_unique<ColorSamplesCommandPrivate>(document))
{}

ColorSamplesCommand::~ColorSamplesCommand() = default;

void ColorSamplesCommand::RedoExecute(LexoCommandData* data)
{
    m_pPrivate->Redo(*data);
}

void ColorSamplesCommand::UndoExecute(LexoCommandData* data)
{
    m_pPrivate->Undo(*data);
}

bool ColorSamplesCommand::AcceptsData(const LexoCommandData* data) const
{
    if (!data) return false;
    const int type = data->GetDataType();
    return type >= CommandDataType::ColorSamplesAdd && type <= CommandDataType::ColorSamplesClear;
}
