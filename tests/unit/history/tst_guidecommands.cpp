#include "UndoLaw.h"

#include "document/LXDocumentInterface.h"
#include "history/GuideCommands.h"
#include "history/LexoCommand.h"
#include "support/DocumentFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <memory>

using namespace DocumentFixture;

namespace {
OwnedDocument MakeGuided()
{
    OwnedDocument document = Make(QSize(100, 80));
    document->SetGuides({{Qt::Vertical, 12.5}, {Qt::Horizontal, 40}});
    return document;
}
} // namespace

class TestGuideCommands : public QObject
{
    Q_OBJECT

private slots:
    void aNewGuideIsTheLast();
    void movingKeepsTheOrder();
    void clearingTakesAll();
    void whatChangesNothingIsNoCommand();
};

void TestGuideCommands::aNewGuideIsTheLast()
{
    const OwnedDocument document = MakeGuided();
    LexoCommand* command = GuideCommands::Add(document.get(), {Qt::Horizontal, 80});
    QCOMPARE(command->text(), QString("Add guide"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QVERIFY(document->GetGuides() ==
            (LXGuides{{Qt::Vertical, 12.5}, {Qt::Horizontal, 40}, {Qt::Horizontal, 80}}));
}

void TestGuideCommands::movingKeepsTheOrder()
{
    const OwnedDocument document = MakeGuided();
    LexoCommand* command = GuideCommands::Move(document.get(), 0, 99);
    QCOMPARE(command->text(), QString("Move guide"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QVERIFY(document->GetGuides() == (LXGuides{{Qt::Vertical, 99}, {Qt::Horizontal, 40}}));
}

void TestGuideCommands::clearingTakesAll()
{
    const OwnedDocument document = MakeGuided();
    LexoCommand* command = GuideCommands::Clear(document.get());
    QCOMPARE(command->text(), QString("Clear guides"));
    QCOMPARE(UndoLaw::BrokenBy(document.get(), command), QString());
    QVERIFY(document->GetGuides().isEmpty());
}

void TestGuideCommands::whatChangesNothingIsNoCommand()
{
    const OwnedDocument document = MakeGuided();
    QVERIFY(!GuideCommands::Move(document.get(), -1, 3));
    QVERIFY(!GuideCommands::Move(document.get(), 2, 3));
    document->SetGuides({});
    QVERIFY(!GuideCommands::Clear(document.get()));
}

ZK_REGISTER_TEST(tst_guidecommands, TestGuideCommands)
#include "tst_guidecommands.moc"
