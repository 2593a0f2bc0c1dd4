#include "UndoLaw.h"

#include "MemoryFile.h"

#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"
#include "history/LexoUndoStack.h"
#include "support/DocumentFixture.h"

namespace {
QString Difference(const QString& when, const QStringList& actual, const QStringList& expected)
{
    if (actual == expected) return QString();
    QStringList lines{when};
    for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        const QString is = actual.value(i);
        const QString shouldBe = expected.value(i);
        if (is != shouldBe) lines << "  is " + is.left(200) << "  should be " + shouldBe.left(200);
    }
    return lines.join('\n');
}

/// Out into a file, dropped, and back.
bool GoesOutAndComesBack(const LexoCommand* command)
{
    MemoryFile file;
    LexoCommandData* data = command->GetCommandData();
    if (!data->Serialize(&file)) return false;
    data->ReleaseSerializeData();
    return data->Deserialize(&file) && file.position == file.bytes.size();
}
} // namespace

QString UndoLaw::Broken(LXDocumentInterface* document, LexoUndoStack* stack, const LexoCommand* command,
                        const QStringList& before)
{
    using DocumentFixture::DescribeWhole;
    const QStringList after = DescribeWhole(document);
    QStringList faults;
    for (const bool isStreamed : {false, true}) {
        const QString way = isStreamed ? " after the file" : "";
        if (isStreamed && !GoesOutAndComesBack(command)) faults << "the data doesn't come back";
        stack->undo();
        faults << Difference("undo" + way, DescribeWhole(document), before);
        if (isStreamed && !GoesOutAndComesBack(command)) faults << "undone data doesn't come back";
        stack->redo();
        faults << Difference("redo" + way, DescribeWhole(document), after);
    }
    faults.removeAll(QString());
    return faults.join('\n');
}

QString UndoLaw::BrokenBy(LXDocumentInterface* document, LexoCommand* command)
{
    const QStringList before = DocumentFixture::DescribeWhole(document);
    LexoUndoStack stack;
    stack.push(command);
    return Broken(document, &stack, command, before);
}
