#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface.h"
#include "history/ColorSamplesCommand.h"
#include "history/ColorSamplesCommandDataAdd.h"
#include "history/ColorSamplesCommandDataClear.h"
#include "history/ColorSamplesCommandDataMove.h"
#include "history/ColorSamplesCommandDataRemove.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommandData.h"
#include "history/PathCommands.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>

using namespace DocumentFixture;

/// Adding, removing, moving and clearing color samples.
class TestColorSamplesCommand : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void addedSampleStandsBehindTheLast();
    void sampleKeepsRadiusAndFormatThroughUndoAndRedo();
    void removedSampleComesBackToItsRow();
    void moveKeepsWhereTheSampleIsAtThePush();
    void clearBringsAllBackWithTheirRows();
    void stepsInARowAreUndoneAndRedone();
    void rowsThatAreNotThereAreHarmless();
    void panelsCommandsReadTheirValues();
    void otherDataIsRefused();

private:
    void Push(LexoCommandData* data)
    {
        auto* command = new ColorSamplesCommand(m_pDocument.get());
        QVERIFY(command->SetCommandData(data));
        m_pStack->push(command);
    }

    void PushAdd(const QPoint& point)
    {
        auto* data = new ColorSamplesCommandDataAdd;
        data->SetSamplePoint(point);
        Push(data);
    }

    void PushRemove(int row, const QPoint& point)
    {
        auto* data = new ColorSamplesCommandDataRemove;
        data->SetSamplePoint(row, point);
        Push(data);
    }

    void PushMove(int row, const QPoint& oldPoint)
    {
        auto* data = new ColorSamplesCommandDataMove;
        data->SetData(row, oldPoint);
        Push(data);
    }

    void PushClear(const std::vector<QPoint>& points)
    {
        auto* data = new ColorSamplesCommandDataClear;
        data->SetData(points);
        Push(data);
    }

    QStringList State() const { return Describe(m_pDocument.get()); }

    OwnedDocument m_pDocument;
    LXColorSampleModel* m_pSamples = nullptr;
    std::unique_ptr<LexoUndoStack> m_pStack;
};

/// Samples at (1, 1), (2, 2), (3, 3), of different sizes and formats.
void TestColorSamplesCommand::init()
{
    m_pDocument = Make(QSize(20, 20));
    m_pSamples = m_pDocument->GetColorSamples();
    for (int i = 0; i < 3; ++i)
        m_pSamples->InsertSample(i, {i + 1, i + 1});
    m_pSamples->SetSampleRadius(0, 2);
    m_pSamples->SetDisplayFormat(1, LXColorSampleModel::CMYK);
    m_pStack = std::make_unique<LexoUndoStack>();
}

void TestColorSamplesCommand::cleanup()
{
    m_pStack.reset();
    m_pDocument.reset();
}

void TestColorSamplesCommand::addedSampleStandsBehindTheLast()
{
    const QStringList before = State();
    QSignalSpy inserted(m_pSamples, &LXColorSampleModel::SampleInserted);
    QSignalSpy removed(m_pSamples, &LXColorSampleModel::SampleRemoved);
    PushAdd({7, 8});
    QCOMPARE(m_pSamples->rowCount(), 4);
    QCOMPARE(m_pSamples->GetPoint(3), QPoint(7, 8));
    QCOMPARE(inserted.takeFirst().first().toInt(), 3);
    const QStringList after = State();
    m_pStack->undo();
    QCOMPARE(State(), before);
    QCOMPARE(removed.takeFirst().first().toInt(), 3);
    m_pStack->redo();
    QCOMPARE(State(), after);
}

void TestColorSamplesCommand::sampleKeepsRadiusAndFormatThroughUndoAndRedo()
{
    PushAdd({7, 8});
    m_pSamples->SetSampleRadius(3, 3);
    m_pSamples->SetDisplayFormat(3, LXColorSampleModel::CMYK);
    const QStringList after = State();
    m_pStack->undo();
    m_pStack->redo();
    QCOMPARE(State(), after);
}

void TestColorSamplesCommand::removedSampleComesBackToItsRow()
{
    const QStringList before = State();
    PushRemove(0, {1, 1});
    QCOMPARE(m_pSamples->rowCount(), 2);
    QCOMPARE(m_pSamples->GetPoint(0), QPoint(2, 2));
    const QStringList after = State();
    m_pStack->undo();
    QCOMPARE(State(), before);
    m_pStack->redo();
    QCOMPARE(State(), after);
}

void TestColorSamplesCommand::moveKeepsWhereTheSampleIsAtThePush()
{
    const QStringList before = State();
    m_pSamples->SetPoint(1, {9, 9});
    PushMove(1, {2, 2});
    const QStringList after = State();
    QCOMPARE(m_pSamples->GetPoint(1), QPoint(9, 9));
    m_pStack->undo();
    QCOMPARE(State(), before);
    QSignalSpy moved(m_pSamples, &LXColorSampleModel::SamplePosChanged);
    m_pStack->redo();
    QCOMPARE(State(), after);
    QCOMPARE(moved.takeFirst().first().toInt(), 1);
}

void TestColorSamplesCommand::clearBringsAllBackWithTheirRows()
{
    const QStringList before = State();
    PushClear({{1, 1}, {2, 2}, {3, 3}});
    QCOMPARE(m_pSamples->rowCount(), 0);
    m_pStack->undo();
    QCOMPARE(State(), before);
    m_pStack->redo();
    QCOMPARE(m_pSamples->rowCount(), 0);
}

void TestColorSamplesCommand::stepsInARowAreUndoneAndRedone()
{
    Random random(5);
    QList<QStringList> states{State()};
    for (int i = 0; i < 200; ++i) {
        const int row = Pick(random, 0, qMax(0, m_pSamples->rowCount() - 1));
        const QPoint point = m_pSamples->GetPoint(row);
        switch (m_pSamples->rowCount() == 0 ? 0 : Pick(random, 0, 9)) {
        case 1:
        case 2: PushRemove(row, point); break;
        case 3: PushClear({}); break;
        case 4:
        case 5:
            m_pSamples->SetPoint(row, {Pick(random, 0, 19), Pick(random, 0, 19)});
            PushMove(row, point);
            break;
        default: PushAdd({Pick(random, 0, 19), Pick(random, 0, 19)});
        }
        states << State();
    }
    for (int i = states.size() - 2; i >= 0; --i) {
        m_pStack->undo();
        QCOMPARE(State(), states[i]);
    }
    for (int i = 1; i < states.size(); ++i) {
        m_pStack->redo();
        QCOMPARE(State(), states[i]);
    }
}

void TestColorSamplesCommand::rowsThatAreNotThereAreHarmless()
{
    const QStringList before = State();
    for (const int row : {-1, 3}) {
        PushRemove(row, {5, 5});
        PushMove(row, {5, 5});
        QCOMPARE(State(), before);
        m_pStack->undo();
        m_pStack->undo();
        QCOMPARE(State(), before);
    }
}

void TestColorSamplesCommand::panelsCommandsReadTheirValues()
{
    const QStringList before = State();
    LexoCommand* remove = PathCommands::RemoveSample(m_pDocument.get(), 1);
    QCOMPARE(static_cast<ColorSamplesCommandDataRemove*>(remove->GetCommandData())->GetSamplePoint(),
             QPoint(2, 2));
    QCOMPARE(remove->text(), QString("Remove sample point"));
    m_pStack->push(remove);
    LexoCommand* clear = PathCommands::ClearSamples(m_pDocument.get());
    QCOMPARE(static_cast<ColorSamplesCommandDataClear*>(clear->GetCommandData())->GetPoints(),
             (std::vector<QPoint>{{1, 1}, {3, 3}}));
    QCOMPARE(clear->text(), QString("Clear color samples"));
    m_pStack->push(clear);
    QCOMPARE(m_pSamples->rowCount(), 0);
    m_pStack->undo();
    m_pStack->undo();
    QCOMPARE(State(), before);
}

void TestColorSamplesCommand::otherDataIsRefused()
{
    ColorSamplesCommand command(m_pDocument.get());
    MoveCommandData other;
    QVERIFY(!command.SetCommandData(&other));
    QVERIFY(!command.SetCommandData(nullptr));
}

ZK_REGISTER_TEST(tst_colorsamplescommand, TestColorSamplesCommand)
#include "tst_colorsamplescommand.moc"
