#include "MainMenuEntry.h"

#include "core/ZKMenuManager.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QMenu>
#include <QTest>

class TestMainMenuEntry : public QObject
{
    Q_OBJECT

private slots:
    void anEntryRecordsWhatItStandsFor();
    void entriesAreOrderedByPath();
    void aPrefixStandsBeforeLongerPaths();
    void equalPathsStandInTheOrderOfInsertion();
};

namespace {
// Paths of three elements only record, so these entries reach no menu.
QStringList TextsOf(const MainMenuEntries& entries)
{
    QStringList texts;
    for (const MainMenuEntry& entry : entries) {
        texts.append(entry.pAction->text());
    }
    return texts;
}
} // namespace

void TestMainMenuEntry::anEntryRecordsWhatItStandsFor()
{
    QAction action;
    const MainMenuEntry actionEntry({ZKMenuManager::Edit, 11, 0}, &action);
    QCOMPARE(actionEntry.pAction, &action);
    QVERIFY(!actionEntry.pMenu);
    QVERIFY(!actionEntry.pReserved);

    QMenu menu;
    const MainMenuEntry menuEntry({ZKMenuManager::Edit, 11, 0}, &menu);
    QCOMPARE(menuEntry.pMenu, &menu);
    QVERIFY(!menuEntry.pAction);
    QVERIFY(!menuEntry.pReserved);
    QCOMPARE(menuEntry.path, std::vector<int>({1, 11, 0}));
}

void TestMainMenuEntry::entriesAreOrderedByPath()
{
    QAction first("first");
    QAction second("second");
    QAction third("third");
    MainMenuEntries entries;
    entries.insert(MainMenuEntry({2, 0, 0}, &third));
    entries.insert(MainMenuEntry({1, 3, 0}, &second));
    entries.insert(MainMenuEntry({1, -1, 9}, &first));
    QCOMPARE(TextsOf(entries), QStringList({"first", "second", "third"}));
}

void TestMainMenuEntry::aPrefixStandsBeforeLongerPaths()
{
    QAction action;
    const MainMenuEntry shorter({1, 3, 0}, &action);
    const MainMenuEntry longer({1, 3, 0, 0}, &action);
    QVERIFY(shorter < longer);
    QVERIFY(!(longer < shorter));
}

void TestMainMenuEntry::equalPathsStandInTheOrderOfInsertion()
{
    QAction first("first");
    QAction second("second");
    QAction third("third");
    MainMenuEntries entries;
    entries.insert(MainMenuEntry({1, 3, 0}, &first));
    entries.insert(MainMenuEntry({1, 3, 0}, &second));
    entries.insert(MainMenuEntry({1, 3, 0}, &third));
    QCOMPARE(TextsOf(entries), QStringList({"first", "second", "third"}));
}

ZK_REGISTER_TEST(tst_mainmenuentry, TestMainMenuEntry)

#include "tst_mainmenuentry.moc"
