#pragma once

#include "history/DataStream.h"
#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"

/// Base of values that hold no images.
struct PlainValues
{
    qint64 GetMemoryCost() const { return 0; }

    void ReleaseImages() {}
};

/// The data of one of the editor's own commands: a struct of values that can be streamed.
template <class Values, int DataType>
class ValueCommandData : public LexoCommandData
{
public:
    explicit ValueCommandData(const Values& initial) : values(initial) {}

    int GetDataType() const override { return DataType; }

    bool Serialize(IWriter* writer) const override
    {
        return DataStream::Write(writer, [this](QDataStream& stream) { stream << values; });
    }

    bool Deserialize(IReader* reader) override
    {
        Values read;
        const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) { stream >> read; });
        if (isWhole) values = read;
        return isWhole;
    }

    void ReleaseSerializeData() override { values.ReleaseImages(); }

    qint64 GetMemoryCost() const override { return values.GetMemoryCost(); }

    Values values;
};

/// One of the editor's own commands: it says what redo and undo do with its values.
template <class Values, int DataType>
class ValueCommand : public LexoCommand
{
public:
    using Data = ValueCommandData<Values, DataType>;

    void RedoExecute(LexoCommandData* data) override { Redo(static_cast<Data&>(*data).values); }

    void UndoExecute(LexoCommandData* data) override { Undo(static_cast<Data&>(*data).values); }

protected:
    explicit ValueCommand(const Values& values) { SetCommandData(new Data(values)); }

    virtual void Redo(Values& values) = 0;
    virtual void Undo(Values& values) = 0;

    bool AcceptsData(const LexoCommandData* data) const final
    {
        return dynamic_cast<const Data*>(data) != nullptr;
    }
};
