#include "GuiFixture.h"

#include "document/LXDocumentModel.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentWidget.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QMainWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>

/// Windows of documents: opening, activation, and the order of a close.
class TestMdiArea : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { qRegisterMetaType<LXMdiSubWindow*>(); }

    void init();
    void cleanup();

    void openingActivatesANewTab();
    void badDocumentsAreRefused();
    void mainWindowIsTheAreas();
    void activationIsToldOnceAChange();
    void losingTheFocusIsNotToldAsNoDocument();
    void tabClicksActivate();

    void closeGoesInOrder();
    void closingTheLastIsToldWithNull();
    void lockedDocumentRefusesToClose();
    void lockGivenBackInTimeLetsTheCloseGo();
    void changedDocumentIsAskedAbout();
    void unchangedDocumentIsNotAskedAbout();
    void windowTakesNoKeysFromTheMenus();
    void closingAnInactiveDocumentKeepsTheActive();
    void closeAllStopsAtTheFirstRefusal();
    void closingUnaskedAsksNobody();
    void documentLivesUntilItsWindowIsGone();
    void windowDeletedWithTheAreaReleasesItsDocument();
    void closeButtonOfTheTabClosesTheDocument();

    void emptyPageShowsWhileNothingIsOpen();
    void titleFollowsNameAndChanges();
    void copyNamesAreFree();
    void framesAreWindowsToo();
    void framesFitRoundTheirPicture();
    void tabsKeepTheirSizeWhenPicturesFit();

private:
    LXDocumentInterface* Open(const QString& name)
    {
        LXDocumentInterface* document = GuiFixture::MakeDocument({64, 48}).release();
        document->SetDocumentName(name);
        return LXDocumentManager::Instance()->AddDocument(document) ? document : nullptr;
    }

    LXMdiAreaPrivate* Insides() const { return LXMdiAreaPrivate::Get(m_pArea); }

    /// Writes down everything that happens to a document on its way out.
    void Log(LXDocumentInterface* document);

    std::unique_ptr<QMainWindow> m_pWindow;
    LXMdiArea* m_pArea = nullptr;
    QStringList m_Lines;
};

namespace {
QString NameOf(const LXMdiSubWindow* window)
{
    const auto* widget = window ? qobject_cast<ZKDocumentWidget*>(window->GetWidget()) : nullptr;
    return widget ? widget->GetView()->GetModel()->GetDocument()->GetDocumentName() : QString("none");
}

void DeleteLeavers()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
} // namespace

void TestMdiArea::init()
{
    m_Lines.clear();
    m_pWindow = std::make_unique<QMainWindow>();
    m_pArea = LXDocumentManager::GetDocumentArea();
    m_pWindow->setCentralWidget(m_pArea);
    m_pWindow->resize(500, 400);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
}

void TestMdiArea::cleanup()
{
    Insides()->CloseAllUnasked();
    DeleteLeavers();
    QVERIFY(LXDocumentManager::Instance()->GetDocuments().isEmpty());
    m_pWindow.reset();
}

void TestMdiArea::Log(LXDocumentInterface* document)
{
    connect(m_pArea, &LXMdiArea::WantToClose, document,
            [this](LXDocumentInterface*) { m_Lines << "area WantToClose"; });
    connect(document, &LXDocumentInterface::WantToClose, document,
            [this] { m_Lines << "document WantToClose"; });
    connect(m_pArea, &LXMdiArea::AboutToClose, document,
            [this](LXDocumentInterface*) { m_Lines << "area AboutToClose"; });
    connect(document, &LXDocumentInterface::AboutToClose, document,
            [this] { m_Lines << "document AboutToClose"; });
    const LXMdiSubWindow* window = Insides()->FindWindow(document);
    const ZKDocumentView* view = qobject_cast<ZKDocumentWidget*>(window->GetWidget())->GetView();
    connect(view, &ZKDocumentView::AboutDestroy, document, [this] { m_Lines << "AboutDestroy"; });
    connect(m_pArea, &LXMdiArea::SubWindowActivated, document, [this, view](LXMdiSubWindow* next) {
        // Tools let go of the old view here.
        m_Lines << "SubWindowActivated " + NameOf(next) + (view->scene() ? " view stands" : "");
    });
    connect(view, &QObject::destroyed, this, [this] { m_Lines << "view deleted"; });
    connect(document, &QObject::destroyed, this, [this] { m_Lines << "released"; });
}

void TestMdiArea::openingActivatesANewTab()
{
    QSignalSpy activated(m_pArea, &LXMdiArea::SubWindowActivated);
    LXDocumentInterface* first = Open("first");
    LXDocumentInterface* second = Open("second");
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments(), (QList<LXDocumentInterface*>{first, second}));
    QCOMPARE(m_pArea->viewMode(), QMdiArea::TabbedView);
    QCOMPARE(activated.count(), 2);
    QCOMPARE(NameOf(activated[0][0].value<LXMdiSubWindow*>()), QString("first"));
    QCOMPARE(NameOf(activated[1][0].value<LXMdiSubWindow*>()), QString("second"));
    QCOMPARE(m_pArea->GetActiveWindow(), Insides()->FindWindow(second));
    const auto* widget = qobject_cast<ZKDocumentWidget*>(m_pArea->GetActiveWindow()->GetWidget());
    QVERIFY(widget->GetView()->GetHistory());
    QVERIFY(widget->GetView()->isVisible());
    QVERIFY(widget->GetView()->hasFocus());
}

void TestMdiArea::badDocumentsAreRefused()
{
    LXDocumentManager* manager = LXDocumentManager::Instance();
    QVERIFY(!manager->AddDocument(nullptr));
    LXDocumentInterface* open = Open("open");
    QVERIFY(!manager->AddDocument(open));
    QCOMPARE(m_pArea->GetWindows().size(), 1);
    const GuiFixture::OwnedDocument empty(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32));
    QVERIFY(!manager->AddDocument(empty.get()));
}

void TestMdiArea::mainWindowIsTheAreas()
{
    QCOMPARE(LXMdiArea::MainWindow(), m_pWindow.get());
}

void TestMdiArea::activationIsToldOnceAChange()
{
    Open("first");
    Open("second");
    QSignalSpy activated(m_pArea, &LXMdiArea::SubWindowActivated);
    m_pArea->setActiveSubWindow(m_pArea->GetWindows()[0]);
    m_pArea->setActiveSubWindow(m_pArea->GetWindows()[0]);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(NameOf(activated[0][0].value<LXMdiSubWindow*>()), QString("first"));
}

void TestMdiArea::losingTheFocusIsNotToldAsNoDocument()
{
    Open("first");
    QSignalSpy activated(m_pArea, &LXMdiArea::SubWindowActivated);
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_VERIFY(!m_pWindow->isActiveWindow());
    m_pArea->setActiveSubWindow(nullptr);
    m_pWindow->activateWindow();
    QTRY_VERIFY(m_pWindow->isActiveWindow());
    QCOMPARE(activated.count(), 0);
    QCOMPARE(NameOf(m_pArea->GetActiveWindow()), QString("first"));
}

void TestMdiArea::tabClicksActivate()
{
    Open("first");
    Open("second");
    auto* tabs = m_pArea->findChild<QTabBar*>();
    QVERIFY(tabs);
    QTest::mouseClick(tabs, Qt::LeftButton, Qt::NoModifier, tabs->tabRect(0).center());
    QCOMPARE(NameOf(m_pArea->GetActiveWindow()), QString("first"));
}

void TestMdiArea::closeGoesInOrder()
{
    Open("stays");
    LXDocumentInterface* document = Open("goes");
    document->SetDocumentState(1);
    Log(document);
    Insides()->SetCloseQuestion([this](LXDocumentInterface* asked) {
        m_Lines << "question " + asked->GetDocumentName();
        return true;
    });
    QVERIFY(Insides()->CloseDocument(document));
    DeleteLeavers();
    QCOMPARE(m_Lines, (QStringList{"area WantToClose", "document WantToClose", "question goes",
                                   "area AboutToClose", "document AboutToClose", "AboutDestroy",
                                   "SubWindowActivated stays view stands", "view deleted", "released"}));
}

void TestMdiArea::closingTheLastIsToldWithNull()
{
    LXDocumentInterface* document = Open("only");
    QSignalSpy activated(m_pArea, &LXMdiArea::SubWindowActivated);
    QVERIFY(Insides()->CloseDocument(document));
    QCOMPARE(activated.count(), 1);
    QVERIFY(!activated[0][0].value<LXMdiSubWindow*>());
    QVERIFY(!m_pArea->GetActiveWindow());
}

void TestMdiArea::lockedDocumentRefusesToClose()
{
    LXDocumentInterface* document = Open("busy");
    document->SetDocumentState(1);
    Log(document);
    Insides()->SetCloseQuestion([this](LXDocumentInterface*) {
        m_Lines << "question";
        return true;
    });
    QVERIFY(document->Lock());
    QVERIFY(!Insides()->CloseDocument(document));
    QCOMPARE(m_Lines, (QStringList{"area WantToClose", "document WantToClose"}));
    QCOMPARE(m_pArea->GetWindows().size(), 1);
    QVERIFY(m_pArea->GetWindows()[0]->isVisible());
    document->Unlock();
}

void TestMdiArea::lockGivenBackInTimeLetsTheCloseGo()
{
    LXDocumentInterface* document = Open("tool");
    QVERIFY(document->Lock());
    connect(document, &LXDocumentInterface::WantToClose, document, [=] { document->Unlock(); });
    QVERIFY(Insides()->CloseDocument(document));
}

void TestMdiArea::changedDocumentIsAskedAbout()
{
    LXDocumentInterface* document = Open("changed");
    document->SetDocumentState(1);
    int asked = 0;
    Insides()->SetCloseQuestion([&](LXDocumentInterface*) { return ++asked > 1; });
    QVERIFY(!Insides()->CloseDocument(document));
    QCOMPARE(m_pArea->GetWindows().size(), 1);
    QVERIFY(Insides()->CloseDocument(document));
    QCOMPARE(asked, 2);
    QVERIFY(m_pArea->GetWindows().isEmpty());
}

void TestMdiArea::unchangedDocumentIsNotAskedAbout()
{
    LXDocumentInterface* document = Open("clean");
    int asked = 0;
    Insides()->SetCloseQuestion([&](LXDocumentInterface*) {
        ++asked;
        return false;
    });
    QVERIFY(Insides()->CloseDocument(document));
    QCOMPARE(asked, 0);
}

void TestMdiArea::windowTakesNoKeysFromTheMenus()
{
    Open("document");
    QAction close;
    close.setShortcut(QKeySequence("Ctrl+W"));
    m_pWindow->addAction(&close);
    QSignalSpy triggered(&close, &QAction::triggered);
    InputDriver().Key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(triggered.count(), 1);
}

void TestMdiArea::closingAnInactiveDocumentKeepsTheActive()
{
    LXDocumentInterface* first = Open("first");
    Open("second");
    QSignalSpy activated(m_pArea, &LXMdiArea::SubWindowActivated);
    QVERIFY(Insides()->CloseDocument(first));
    DeleteLeavers();
    QCOMPARE(activated.count(), 0);
    QCOMPARE(NameOf(m_pArea->GetActiveWindow()), QString("second"));
}

void TestMdiArea::closeAllStopsAtTheFirstRefusal()
{
    Open("first");
    LXDocumentInterface* second = Open("second");
    Open("third");
    QVERIFY(second->Lock());
    QVERIFY(!Insides()->CloseAll());
    QCOMPARE(m_pArea->GetWindows().size(), 2);
    second->Unlock();
    QVERIFY(Insides()->CloseAll());
    QVERIFY(m_pArea->GetWindows().isEmpty());
}

void TestMdiArea::closingUnaskedAsksNobody()
{
    LXDocumentInterface* document = Open("busy");
    document->SetDocumentState(1);
    QVERIFY(document->Lock());
    Log(document);
    Insides()->CloseAllUnasked();
    DeleteLeavers();
    QCOMPARE(m_Lines, (QStringList{"area AboutToClose", "document AboutToClose", "AboutDestroy",
                                   "SubWindowActivated none view stands", "view deleted", "released"}));
}

void TestMdiArea::documentLivesUntilItsWindowIsGone()
{
    QPointer<LXDocumentInterface> document = Open("document");
    const QPointer<LXMdiSubWindow> window = Insides()->FindWindow(document);
    const QPointer<ZKDocumentView> view = qobject_cast<ZKDocumentWidget*>(window->GetWidget())->GetView();
    const QPointer<LexoUndoStack> history = view->GetHistory();
    QVERIFY(Insides()->CloseDocument(document));
    QVERIFY(document && window && view && history);
    DeleteLeavers();
    QVERIFY(!document && !window && !view && !history);
}

void TestMdiArea::windowDeletedWithTheAreaReleasesItsDocument()
{
    Log(Open("document"));
    m_Lines.clear();
    m_pWindow.reset();
    QCOMPARE(m_Lines, (QStringList{"AboutDestroy", "view deleted", "released"}));
    init();
}

void TestMdiArea::closeButtonOfTheTabClosesTheDocument()
{
    Open("document");
    auto* tabs = m_pArea->findChild<QTabBar*>();
    QVERIFY(tabs && tabs->tabsClosable());
    emit tabs->tabCloseRequested(0);
    QVERIFY(m_pArea->GetWindows().isEmpty());
}

void TestMdiArea::emptyPageShowsWhileNothingIsOpen()
{
    auto* page = new QWidget;
    Insides()->SetEmptyPage(page);
    QVERIFY(page->isVisible());
    QCOMPARE(page->size(), m_pArea->size());
    LXDocumentInterface* document = Open("document");
    QVERIFY(!page->isVisible());
    m_pWindow->resize(600, 450);
    QVERIFY(Insides()->CloseDocument(document));
    QVERIFY(page->isVisible());
    QCOMPARE(page->size(), m_pArea->size());
}

void TestMdiArea::titleFollowsNameAndChanges()
{
    LXDocumentInterface* document = Open("photo");
    const auto* tabs = m_pArea->findChild<QTabBar*>();
    QCOMPARE(tabs->tabText(0), QString("photo"));
    document->SetDocumentState(1);
    QCOMPARE(tabs->tabText(0), QString("photo*"));
    document->SetDocumentName("sea");
    QCOMPARE(tabs->tabText(0), QString("sea*"));
    document->SetDocumentState(0);
    QCOMPARE(tabs->tabText(0), QString("sea"));
}

void TestMdiArea::copyNamesAreFree()
{
    LXDocumentInterface* document = Open("sea");
    QCOMPARE(LXMdiArea::MakeDefaultCopyName(document), QString("sea copy"));
    Open("sea copy");
    QCOMPARE(LXMdiArea::MakeDefaultCopyName(document), QString("sea copy 2"));
    document->SetDocumentName("50%1");
    Open("50%1 copy");
    QCOMPARE(LXMdiArea::MakeDefaultCopyName(document), QString("50%1 copy 2"));
    QCOMPARE(LXMdiArea::MakeDefaultCopyName(nullptr), QString());
}

void TestMdiArea::framesAreWindowsToo()
{
    m_pArea->setViewMode(QMdiArea::SubWindowView);
    LXDocumentInterface* document = Open("frame");
    LXMdiSubWindow* window = Insides()->FindWindow(document);
    window->showNormal();
    window->resize(200, 150);
    auto* view = qobject_cast<ZKDocumentWidget*>(window->GetWidget())->GetView();
    view->Zoom(3, QPointF(10, 10), true);
    QVERIFY(view->viewport()->width() >= 64 * 3);
    QVERIFY(view->viewport()->height() >= 48 * 3);
    QVERIFY(window->close());
    QVERIFY(m_pArea->GetWindows().isEmpty());
}

void TestMdiArea::framesFitRoundTheirPicture()
{
    m_pArea->setViewMode(QMdiArea::SubWindowView);
    LXMdiSubWindow* window = Insides()->FindWindow(Open("frame"));
    window->showNormal();
    auto* view = qobject_cast<ZKDocumentWidget*>(window->GetWidget())->GetView();
    const QRect room(QPoint(0, 0), m_pArea->viewport()->size());
    const auto isWholeCanvasSeen = [view] {
        const QRect canvas(view->mapFromScene(QPointF(0, 0)), view->mapFromScene(QPointF(64, 48)));
        return view->viewport()->rect().contains(canvas);
    };

    // As large as the area allows, wherever the frame stood.
    window->setGeometry(room.right() - 150, room.bottom() - 120, 200, 150);
    view->FitSizeToViewPort(true);
    const double largest = view->GetScale();
    QVERIFY2(room.contains(window->geometry()), qPrintable(QString::number(window->width())));
    QVERIFY(window->width() == room.width() || window->height() == room.height());
    QVERIFY(isWholeCanvasSeen());
    // Once it fits, it fits.
    const QRect place = window->geometry();
    view->FitSizeToViewPort(true);
    QCOMPARE(window->geometry(), place);
    QVERIFY(qAbs(view->GetScale() - largest) < 0.02 * largest);

    // Without the wish the frame stays.
    window->setGeometry(10, 10, 200, 150);
    view->FitSizeToViewPort(false);
    QCOMPARE(window->geometry(), QRect(10, 10, 200, 150));
    QVERIFY(isWholeCanvasSeen());

    // It keeps its corner while there is room, and becomes smaller too.
    view->Zoom(3, QPointF(10, 10), true);
    QCOMPARE(window->pos(), QPoint(10, 10));
    QVERIFY(isWholeCanvasSeen());
    const QSize three = window->size();
    view->Zoom(2, QPointF(10, 10), true);
    QVERIFY(window->width() < three.width() && window->height() < three.height());
    QVERIFY(isWholeCanvasSeen());
    // A picture that is larger than the area takes all of it, and nothing beyond.
    view->Zoom(40, QPointF(10, 10), true);
    QCOMPARE(window->geometry(), room);
}

void TestMdiArea::tabsKeepTheirSizeWhenPicturesFit()
{
    LXMdiSubWindow* window = Insides()->FindWindow(Open("tab"));
    const QRect place = window->geometry();
    auto* view = qobject_cast<ZKDocumentWidget*>(window->GetWidget())->GetView();
    view->FitSizeToViewPort(true);
    QVERIFY(view->GetScale() > 1);
    view->Zoom(2, QPointF(10, 10), true);
    QCOMPARE(window->geometry(), place);
}

ZK_REGISTER_TEST(tst_mdiarea, TestMdiArea)
#include "tst_mdiarea.moc"
