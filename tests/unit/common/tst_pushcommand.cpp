#include "common/PushCommand.h"
#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"
#include "history/LexoUndoStack.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {
class CountingCommandData : public LexoCommandData
{
public:
    int GetDataType() const override { return -1; }

    bool Serialize(IWriter*) const override { return false; }

    bool Deserialize(IReader*) override { return false; }

    void ReleaseSerializeData() override {}
};

class CountingCommand : public LexoCommand
{
public:
    CountingCommand(int* redone, int* deleted) : m_pRedone(redone), m_pDeleted(deleted)
    {
        SetCommandData(new CountingCommandData);
    }

    ~CountingCommand() override { ++*m_pDeleted; }

    void RedoExecute(LexoCommandData*) override { ++*m_pRedone; }

    void UndoExecute(LexoCommandData*) override {}

protected:
    bool AcceptsData(const LexoCommandData*) const override { return true; }

private:
    int* m_pRedone;
    int* m_pDeleted;
};
} // namespace

class TestPushCommand : public QObject
{
    Q_OBJECT

private slots:
    void aHistoryTakesTheCommand();
    void withoutAHistoryTheCommandRunsAndGoes();
};

void TestPushCommand::aHistoryTakesTheCommand()
{
    int redone = 0;
    int deleted = 0;
    LexoUndoStack history;
    PushCommand(&history, std::make_unique<CountingCommand>(&redone, &deleted));
    QCOMPARE(redone, 1);
    QCOMPARE(deleted, 0);
    QCOMPARE(history.count(), 1);
}

void TestPushCommand::withoutAHistoryTheCommandRunsAndGoes()
{
    int redone = 0;
    int deleted = 0;
    PushCommand(nullptr, std::make_unique<CountingCommand>(&redone, &deleted));
    QCOMPARE(redone, 1);
    QCOMPARE(deleted, 1);
}

ZK_REGISTER_TEST(tst_pushcommand, TestPushCommand)

#include "tst_pushcommand.moc"
