#include "core/ZKApplication.h"
#include "core/ZKCMSManager.h"
#include "gui/LXColorButton.h"
#include "gui/LXColorDlg.h"
#include "scripting/InputDriver.h"
#include "support/IccProfiles.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

namespace {
struct PaintCounter : public QObject
{
    explicit PaintCounter(QObject* watched) { watched->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int count = 0;
};
} // namespace

/// The button that shows a color and asks for another.
class TestColorButton : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void itBeginsWithBlack();
    void aChangeIsToldOnce();
    void anInvalidColorIsIgnored();
    void theColorIsSeen();
    void aTranslucentColorIsSeenOverAChecker();
    void aPressAsksForAColor_data();
    void aPressAsksForAColor();
    void aCancelledQuestionChangesNothing();
    void theAlphaIsAskedForOnlyWhereItIsWanted();
    void whoAsksInAnotherWayHearsThePress();
    void aButtonMayGoWhileItAsks();
    void anotherScreenIsSeenAtOnce();

private:
    QColor SeenAt(const QPoint& place) const { return m_pButton->grab().toImage().pixelColor(place); }

    std::unique_ptr<QWidget> m_pWindow;
    LXColorButton* m_pButton = nullptr;
    InputDriver m_Input;
};

void TestColorButton::init()
{
    ZKApplication::SetUserValue("ColorDialog/Recent", QStringList());
    m_pWindow = std::make_unique<QWidget>();
    m_pButton = new LXColorButton(m_pWindow.get());
    m_pButton->setGeometry(QRect(QPoint(10, 10), m_pButton->sizeHint()));
    m_pWindow->resize(200, 100);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
}

void TestColorButton::cleanup()
{
    m_pWindow.reset();
    ZKCMSManager::GetInstance()->SetDisplay(ZKCMSProfile(), {});
}

void TestColorButton::itBeginsWithBlack()
{
    QCOMPARE(m_pButton->GetColor(), QColor(0, 0, 0, 255));
    QCOMPARE(m_pButton->accessibleName(), QString("Color"));
    QCOMPARE(m_pButton->accessibleDescription(), QString("#FF000000"));
}

void TestColorButton::aChangeIsToldOnce()
{
    const QSignalSpy changed(m_pButton, &LXColorButton::ColorChanged);
    m_pButton->SetColor(QColor(1, 2, 3, 4));
    m_pButton->SetColor(QColor(1, 2, 3, 4));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].value<QColor>(), QColor(1, 2, 3, 4));
    QCOMPARE(m_pButton->GetColor(), QColor(1, 2, 3, 4));
    QCOMPARE(m_pButton->accessibleDescription(), QString("#04010203"));
}

void TestColorButton::anInvalidColorIsIgnored()
{
    const QSignalSpy changed(m_pButton, &LXColorButton::ColorChanged);
    m_pButton->SetColor(QColor());
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_pButton->GetColor(), QColor(Qt::black));
}

void TestColorButton::theColorIsSeen()
{
    m_pButton->SetColor(QColor(200, 100, 50));
    QCOMPARE(SeenAt({20, 12}), QColor(200, 100, 50));
    m_pButton->setEnabled(false);
    QVERIFY(SeenAt({20, 12}) != QColor(200, 100, 50));
}

void TestColorButton::aTranslucentColorIsSeenOverAChecker()
{
    m_pButton->SetColor(QColor(200, 100, 50, 0));
    // Squares of 4, and the line takes the first row and column of the first one.
    QCOMPARE(SeenAt({5, 5}), QColor(0x9a, 0x9a, 0x9a));
    QCOMPARE(SeenAt({8, 5}), QColor(0xb4, 0xb4, 0xb4));
    QCOMPARE(SeenAt({8, 8}), QColor(0x9a, 0x9a, 0x9a));
}

void TestColorButton::aPressAsksForAColor_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by key") << true;
}

void TestColorButton::aPressAsksForAColor()
{
    QFETCH(const bool, byKey);
    m_pButton->SetColor(QColor(1, 2, 3));
    const QSignalSpy changed(m_pButton, &LXColorButton::ColorChanged);
    m_Input.WhenModalShows<LXColorDlg>([this](LXColorDlg* dialog) {
        QCOMPARE(dialog->windowTitle(), QString("Select a color"));
        QCOMPARE(dialog->GetColor(), QColor(1, 2, 3));
        dialog->findChild<QSpinBox*>("m_pBlueSpn")->setFocus();
        m_Input.Key(Qt::Key_Up);
        // Nothing changes before the person has decided.
        QCOMPARE(m_pButton->GetColor(), QColor(1, 2, 3));
        m_Input.Key(Qt::Key_Return);
    });
    m_pButton->setFocus();
    if (byKey) {
        m_Input.Key(Qt::Key_Space);
    } else {
        m_Input.Click(m_pButton);
    }
    QCOMPARE(m_Input.CountWaitingActions(), 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_pButton->GetColor(), QColor(1, 2, 4));
}

void TestColorButton::aCancelledQuestionChangesNothing()
{
    const QSignalSpy changed(m_pButton, &LXColorButton::ColorChanged);
    m_pButton->SetDialogTitle("Selecte a text color");
    m_Input.WhenModalShows<LXColorDlg>([this](LXColorDlg* dialog) {
        QCOMPARE(dialog->windowTitle(), QString("Selecte a text color"));
        dialog->findChild<QSpinBox*>("m_pBlueSpn")->setFocus();
        m_Input.Key(Qt::Key_Up);
        m_Input.Key(Qt::Key_Escape);
    });
    m_Input.Click(m_pButton);
    QCOMPARE(m_Input.CountWaitingActions(), 0);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_pButton->GetColor(), QColor(Qt::black));
}

void TestColorButton::theAlphaIsAskedForOnlyWhereItIsWanted()
{
    for (const bool isWanted : {false, true}) {
        m_pButton->SetAlphaEnabled(isWanted);
        m_Input.WhenModalShows<LXColorDlg>([this, isWanted](LXColorDlg* dialog) {
            QCOMPARE(dialog->IsAlphaEnabled(), isWanted);
            m_Input.Key(Qt::Key_Escape);
        });
        m_Input.Click(m_pButton);
        QCOMPARE(m_Input.CountWaitingActions(), 0);
    }
}

void TestColorButton::whoAsksInAnotherWayHearsThePress()
{
    m_pButton->SetDialogEnabled(false);
    const QSignalSpy clicked(m_pButton, &LXColorButton::clicked);
    m_Input.Click(m_pButton);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestColorButton::aButtonMayGoWhileItAsks()
{
    m_Input.WhenModalShows<LXColorDlg>([this](LXColorDlg* dialog) {
        delete m_pButton;
        dialog->accept();
    });
    m_pButton->setFocus();
    m_Input.Key(Qt::Key_Space);
    QCOMPARE(m_Input.CountWaitingActions(), 0);
}

void TestColorButton::anotherScreenIsSeenAtOnce()
{
    m_pButton->SetColor(QColor(200, 90, 40));
    QCOMPARE(SeenAt({20, 12}), QColor(200, 90, 40));
    const ZKCMSProfile screen = IccProfiles::AdobeRgb();
    QColor shown(200, 90, 40);
    ZKCMSTransform(ZKCMSProfile::SRGB(), screen)(shown);

    QCoreApplication::processEvents();
    PaintCounter paints(m_pButton);
    ZKCMSManager::GetInstance()->SetDisplay(screen, {});
    QCoreApplication::processEvents();
    QVERIFY(paints.count > 0);
    QCOMPARE(SeenAt({20, 12}).rgb(), shown.rgb());
    QCOMPARE(m_pButton->GetColor(), QColor(200, 90, 40));
}

ZK_REGISTER_TEST(tst_colorbutton, TestColorButton)
#include "tst_colorbutton.moc"
