#include "core/MenuPlacement.h"
#include "core/ZKMenuManager.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <limits>

namespace {
QStringList Texts(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* action : actions) {
        texts.append(action->isSeparator() ? "-" : action->text());
    }
    return texts;
}

QStringList VisibleTexts(const QMenuBar& bar)
{
    QStringList texts;
    for (const QAction* action : bar.actions()) {
        if (action->isVisible()) texts.append(action->text());
    }
    return texts;
}
} // namespace

class TestMenuPlacement : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { MenuPlacement::Instance().SetMenuBar(nullptr); }

    void entriesStandByPositionAndOrderOfComing();
    void entriesFromBeforeTheBarArePutIn();
    void separatorAndMenuAreEntries();
    void menuWithoutPositionStandsInTheBarBehindItsRole();
    void emptyMenusAreHidden();
    void destroyedEntriesGo();
    void addingAgainMoves();
    void smallestPositionStaysInTheMenu();
    void nullEntriesAreIgnored();
};

void TestMenuPlacement::entriesStandByPositionAndOrderOfComing()
{
    QMenuBar bar;
    MenuPlacement::Instance().SetMenuBar(&bar);
    QAction c("c"), a("a"), b1("b1"), b2("b2"), other("other");
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 30, &c);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 10, &a);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 20, &b1);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 20, &b2);
    ZKMenuManager::CreateAction(ZKMenuManager::File, 25, &other);
    QMenu* edit = MenuPlacement::Instance().RoleMenu(ZKMenuManager::Edit);
    QCOMPARE(Texts(edit->actions()), QStringList({"a", "b1", "b2", "c"}));
    QCOMPARE(VisibleTexts(bar), QStringList({"&File", "&Edit"}));
}

void TestMenuPlacement::entriesFromBeforeTheBarArePutIn()
{
    QAction a("a"), b("b"), c("c");
    ZKMenuManager::CreateAction(ZKMenuManager::Layer, 2, &b);
    ZKMenuManager::CreateAction(ZKMenuManager::Layer, 3, &c);
    QMenuBar bar;
    MenuPlacement::Instance().SetMenuBar(&bar);
    ZKMenuManager::CreateAction(ZKMenuManager::Layer, 1, &a);
    QCOMPARE(Texts(MenuPlacement::Instance().RoleMenu(ZKMenuManager::Layer)->actions()),
             QStringList({"a", "b", "c"}));
}

void TestMenuPlacement::separatorAndMenuAreEntries()
{
    QMenuBar bar;
    MenuPlacement::Instance().SetMenuBar(&bar);
    QMenu fill("&Fill");
    QAction separator, cleanUp("Clean up alpha");
    separator.setSeparator(true);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 12, &cleanUp);
    ZKMenuManager::CreateMenu(ZKMenuManager::Edit, 13, &fill);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 11, &separator);
    QCOMPARE(Texts(MenuPlacement::Instance().RoleMenu(ZKMenuManager::Edit)->actions()),
             QStringList({"-", "Clean up alpha", "&Fill"}));
}

void TestMenuPlacement::menuWithoutPositionStandsInTheBarBehindItsRole()
{
    QMenuBar bar;
    QMenu early("early"), first("first"), second("second"), last("last");
    ZKMenuManager::CreateMenu(ZKMenuManager::Image, &early);
    MenuPlacement::Instance().SetMenuBar(&bar);
    ZKMenuManager::CreateMenu(ZKMenuManager::Help, &last);
    ZKMenuManager::CreateMenu(ZKMenuManager::File, &first);
    ZKMenuManager::CreateMenu(ZKMenuManager::File, &second);
    QAction quit("Quit"), about("About");
    ZKMenuManager::CreateAction(ZKMenuManager::File, 1, &quit);
    ZKMenuManager::CreateAction(ZKMenuManager::Help, 1, &about);
    QCOMPARE(VisibleTexts(bar), QStringList({"&File", "first", "second", "early", "&Help", "last"}));
}

void TestMenuPlacement::emptyMenusAreHidden()
{
    QMenuBar bar;
    MenuPlacement::Instance().SetMenuBar(&bar);
    QCOMPARE(VisibleTexts(bar), QStringList());
    {
        QAction action("a");
        ZKMenuManager::CreateAction(ZKMenuManager::View, 1, &action);
        QCOMPARE(VisibleTexts(bar), QStringList({"&View"}));
    }
    QCOMPARE(VisibleTexts(bar), QStringList());
}

void TestMenuPlacement::destroyedEntriesGo()
{
    QMenuBar bar;
    QAction stays("stays");
    {
        QAction before("before");
        ZKMenuManager::CreateAction(ZKMenuManager::Edit, 1, &before);
    }
    MenuPlacement::Instance().SetMenuBar(&bar);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 2, &stays);
    {
        QMenu menu("menu");
        ZKMenuManager::CreateMenu(ZKMenuManager::Edit, 1, &menu);
        QCOMPARE(Texts(MenuPlacement::Instance().RoleMenu(ZKMenuManager::Edit)->actions()),
                 QStringList({"menu", "stays"}));
    }
    QCOMPARE(Texts(MenuPlacement::Instance().RoleMenu(ZKMenuManager::Edit)->actions()),
             QStringList({"stays"}));
}

void TestMenuPlacement::addingAgainMoves()
{
    QMenuBar bar;
    MenuPlacement::Instance().SetMenuBar(&bar);
    QAction a("a"), b("b");
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 1, &a);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 2, &b);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 3, &a);
    // The place where it stood first counts no more.
    QAction c("c");
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 0, &c);
    QCOMPARE(Texts(MenuPlacement::Instance().RoleMenu(ZKMenuManager::Edit)->actions()),
             QStringList({"c", "b", "a"}));
}

void TestMenuPlacement::smallestPositionStaysInTheMenu()
{
    QMenuBar bar;
    MenuPlacement::Instance().SetMenuBar(&bar);
    QAction a("a");
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, std::numeric_limits<int>::min(), &a);
    QCOMPARE(Texts(MenuPlacement::Instance().RoleMenu(ZKMenuManager::Edit)->actions()), QStringList({"a"}));
}

void TestMenuPlacement::nullEntriesAreIgnored()
{
    QMenuBar bar;
    MenuPlacement::Instance().SetMenuBar(&bar);
    ZKMenuManager::CreateAction(ZKMenuManager::Edit, 1, nullptr);
    ZKMenuManager::CreateMenu(ZKMenuManager::Edit, 1, nullptr);
    ZKMenuManager::CreateMenu(ZKMenuManager::Edit, nullptr);
    QCOMPARE(VisibleTexts(bar), QStringList());
}

ZK_REGISTER_TEST(tst_menuplacement, TestMenuPlacement)
#include "tst_menuplacement.moc"
