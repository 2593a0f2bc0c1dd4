#include "MainMenuEntry.h"

#include "core/MenuPlacement.h"
#include "core/ZKMenuManager.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

class TestMainMenuEntry : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void twoElementsPlaceAnAction();
    void twoElementsPlaceAMenu();
    void oneElementPutsAMenuIntoTheBar();
    void longerPathsOnlyRecord();
    void aCopyPlacesNothing();
    void anEntryRecordsWhatItStandsFor();
    void entriesAreOrderedByPath();
    void aPrefixStandsBeforeLongerPaths();
    void equalPathsStandInTheOrderOfInsertion();
    void twoEntriesWithTheSamePathAreBothKept();

private:
    QList<QAction*> EditMenu() const
    {
        return MenuPlacement::Instance().RoleMenu(ZKMenuManager::Edit)->actions();
    }

    std::unique_ptr<QMenuBar> m_pBar;
};

namespace {
QStringList TextsOf(const MainMenuEntries& entries)
{
    QStringList texts;
    for (const MainMenuEntry& entry : entries) {
        texts.append(entry.pAction->text());
    }
    return texts;
}
} // namespace

void TestMainMenuEntry::init()
{
    m_pBar = std::make_unique<QMenuBar>();
    MenuPlacement::Instance().SetMenuBar(m_pBar.get());
}

void TestMainMenuEntry::cleanup()
{
    MenuPlacement::Instance().SetMenuBar(nullptr);
    m_pBar.reset();
}

void TestMainMenuEntry::twoElementsPlaceAnAction()
{
    QAction second;
    QAction first;
    const MainMenuEntry later({ZKMenuManager::Edit, 12}, &second);
    const MainMenuEntry sooner({ZKMenuManager::Edit, 11}, &first);
    QCOMPARE(EditMenu(), QList<QAction*>({&first, &second}));
}

void TestMainMenuEntry::twoElementsPlaceAMenu()
{
    QMenu menu;
    const MainMenuEntry entry({ZKMenuManager::Edit, 11}, &menu);
    QCOMPARE(EditMenu(), QList<QAction*>({menu.menuAction()}));
}

void TestMainMenuEntry::oneElementPutsAMenuIntoTheBar()
{
    QMenu menu;
    const MainMenuEntry entry({ZKMenuManager::Edit}, &menu);
    QVERIFY(m_pBar->actions().contains(menu.menuAction()));
}

void TestMainMenuEntry::longerPathsOnlyRecord()
{
    QAction action;
    QMenu menu;
    const MainMenuEntry longer({ZKMenuManager::Edit, 11, 0}, &action);
    const MainMenuEntry longerMenu({ZKMenuManager::Edit, 11, 0}, &menu);
    const MainMenuEntry empty({}, &menu);
    const MainMenuEntry actionInTheBar({ZKMenuManager::Edit}, &action);
    QVERIFY(EditMenu().isEmpty());
    QVERIFY(!m_pBar->actions().contains(menu.menuAction()));
    QVERIFY(!m_pBar->actions().contains(&action));
}

void TestMainMenuEntry::aCopyPlacesNothing()
{
    QAction action;
    const MainMenuEntry entry({ZKMenuManager::Edit, 11}, &action);
    MainMenuEntries entries;
    entries.insert(entry);
    QCOMPARE(EditMenu().size(), 1);
}

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

void TestMainMenuEntry::twoEntriesWithTheSamePathAreBothKept()
{
    QAction first("first");
    QAction second("second");
    MainMenuEntries entries;
    entries.insert(MainMenuEntry({ZKMenuManager::Edit, 11}, &first));
    entries.insert(MainMenuEntry({ZKMenuManager::Edit, 11}, &second));
    QCOMPARE(TextsOf(entries), QStringList({"first", "second"}));
    QCOMPARE(EditMenu(), QList<QAction*>({&first, &second}));
}

ZK_REGISTER_TEST(tst_mainmenuentry, TestMainMenuEntry)

#include "tst_mainmenuentry.moc"
