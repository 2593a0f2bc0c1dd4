#include "GuiFixture.h"

#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"
#include "support/TestRegistry.h"

#include <QAction>
#include <QGraphicsScene>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

namespace {
constexpr unsigned int TextId = 1;

/// Writes into a text layer what arrives at the scene, as a tool does that has switched shortcuts off.
class Typist : public QObject
{
public:
    Typist(LXDocumentInterface* document, const ZKDocumentView* view) : m_pDocument(document)
    {
        view->scene()->installEventFilter(this);
        m_pDocument->SetTextCaret(TextId, 0, true);
    }

    QList<int> m_Keys;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress) return false;
        const auto* key = static_cast<const QKeyEvent*>(event);
        m_Keys.append(key->key());
        QString text = m_pDocument->GetText(TextId);
        switch (key->key()) {
        case Qt::Key_Left: m_Index = qMax(0, m_Index - 1); break;
        case Qt::Key_Right: m_Index = qMin(text.size(), m_Index + 1); break;
        case Qt::Key_Home: m_Index = 0; break;
        case Qt::Key_End: m_Index = text.size(); break;
        case Qt::Key_Delete: text.remove(m_Index, 1); break;
        case Qt::Key_Backspace:
            if (m_Index > 0) text.remove(--m_Index, 1);
            break;
        default:
            if (key->key() >= Qt::Key_Escape || key->modifiers() == Qt::ControlModifier) break;
            text.insert(m_Index, key->text());
            m_Index += key->text().size();
            break;
        }
        m_pDocument->SetText(TextId, text);
        m_pDocument->SetTextCaret(TextId, m_Index, true);
        return true;
    }

private:
    LXDocumentInterface* m_pDocument;
    int m_Index = 0;
};
} // namespace

/// A text that is typed on the canvas, with every key that the program uses for something else.
class TestTyping : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void lettersAndBlanksAreWritten();
    void keysOfTheCaretDontScroll();
    void shortcutsAndMnemonicsAreKeysOfTheText();
    void tabKeepsTheFocus();

private:
    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<QMainWindow> m_pWindow;
    ZKDocumentView* m_pView = nullptr;
    std::unique_ptr<Typist> m_pTypist;
};

void TestTyping::init()
{
    m_pDocument = GuiFixture::MakeDocument({2000, 1500});
    m_pDocument->AddTextLayer("Text Layer", QPointF(900, 700));
    m_pWindow = std::make_unique<QMainWindow>();
    m_pView = new ZKDocumentView(m_pDocument.get(), nullptr);
    m_pWindow->setCentralWidget(m_pView);
    m_pWindow->resize(500, 400);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    m_pView->setFocus();
    m_pView->Zoom(1, QPointF(200, 150), false);
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    m_pTypist = std::make_unique<Typist>(m_pDocument.get(), m_pView);
}

void TestTyping::cleanup()
{
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
    m_pTypist.reset();
    m_pWindow.reset();
    m_pDocument.reset();
}

void TestTyping::lettersAndBlanksAreWritten()
{
    QSignalSpy panning(m_pView, &ZKDocumentView::PanningEnabled);
    QTest::keyClicks(m_pView, "Two words ");
    QCOMPARE(m_pDocument->GetText(TextId), QString("Two words "));
    QCOMPARE(panning.count(), 0);
}

void TestTyping::keysOfTheCaretDontScroll()
{
    const QPoint before(m_pView->horizontalScrollBar()->value(), m_pView->verticalScrollBar()->value());
    QVERIFY(m_pView->horizontalScrollBar()->maximum() > 0);
    QTest::keyClicks(m_pView, "abcd");
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_Delete, Qt::Key_End, Qt::Key_Left,
                              Qt::Key_Backspace, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown}) {
        QTest::keyClick(m_pView, key);
    }
    QCOMPARE(m_pDocument->GetText(TextId), QString("ad"));
    QCOMPARE(QPoint(m_pView->horizontalScrollBar()->value(), m_pView->verticalScrollBar()->value()), before);
}

void TestTyping::shortcutsAndMnemonicsAreKeysOfTheText()
{
    QMenu* menu = m_pWindow->menuBar()->addMenu("&File");
    QSignalSpy opened(menu, &QMenu::aboutToShow);
    QAction letter;
    letter.setShortcut(Qt::Key_B);
    QAction remove;
    remove.setShortcut(QKeySequence::Delete);
    QAction undo;
    undo.setShortcut(QKeySequence::Undo);
    m_pWindow->addActions({&letter, &remove, &undo});
    QList<QAction*> triggered;
    for (QAction* action : m_pWindow->actions())
        connect(action, &QAction::triggered, this, [&triggered, action] { triggered.append(action); });

    QTest::keyClicks(m_pView, "bob");
    QTest::keyClick(m_pView, Qt::Key_Home);
    QTest::keyClick(m_pView, Qt::Key_Delete);
    QTest::keyClick(m_pView, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(m_pView, Qt::Key_F, Qt::AltModifier);
    QCOMPARE(m_pDocument->GetText(TextId), QString("fob"));
    QCOMPARE(triggered, QList<QAction*>());
    QCOMPARE(opened.count(), 0);
    // Each once.
    QCOMPARE(m_pTypist->m_Keys, QList<int>({Qt::Key_B, Qt::Key_O, Qt::Key_B, Qt::Key_Home, Qt::Key_Delete,
                                            Qt::Key_Control, Qt::Key_Z, Qt::Key_Alt, Qt::Key_F}));
}

void TestTyping::tabKeepsTheFocus()
{
    auto* other = new QWidget(m_pView->parentWidget());
    other->setFocusPolicy(Qt::StrongFocus);
    other->show();
    QTest::keyClick(m_pView, Qt::Key_Tab);
    QTest::keyClick(m_pView, Qt::Key_Backtab);
    QVERIFY(m_pView->hasFocus());
    QCOMPARE(m_pTypist->m_Keys, QList<int>({Qt::Key_Tab, Qt::Key_Backtab}));
}

ZK_REGISTER_TEST(tst_typing, TestTyping)
#include "tst_typing.moc"
