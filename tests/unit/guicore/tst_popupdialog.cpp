#include "guicore/LexoPopupDialog.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

/// A pop-up beside a button in a window.
class TestPopupDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void itHasNoFrame();
    void itOpensBelowItsAnchor();
    void itOpensAboveAnAnchorAtTheFootOfTheScreen();
    void itOpensAnewWhereTheAnchorIsThen();
    void itOutlivesItsAnchor();
    void aPressOutsideClosesItAndDoesNothingElse();
    void aPressInsideLeavesItOpen();
    void escapeRejects();
    void enterPressesTheDefaultButton();
    void execWaitsForTheAnswer();

private:
    std::unique_ptr<QWidget> m_pWindow;
    QPushButton* m_pAnchor = nullptr;
    std::unique_ptr<LexoPopupDialog> m_pPopup;
    QLineEdit* m_pField = nullptr;
    QPushButton* m_pOk = nullptr;
};

void TestPopupDialog::init()
{
    m_pWindow = std::make_unique<QWidget>();
    m_pWindow->setGeometry(50, 40, 300, 200);
    m_pAnchor = new QPushButton("Open", m_pWindow.get());
    m_pAnchor->setGeometry(20, 20, 80, 24);
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));

    m_pPopup = std::make_unique<LexoPopupDialog>(m_pWindow.get());
    auto* layout = new QVBoxLayout(m_pPopup.get());
    layout->addWidget(m_pField = new QLineEdit);
    layout->addWidget(m_pOk = new QPushButton("OK"));
    m_pOk->setDefault(true);
    connect(m_pOk, &QPushButton::clicked, m_pPopup.get(), &LXDialog::Accept);
    m_pPopup->SetAnchor(m_pAnchor);
}

void TestPopupDialog::cleanup()
{
    m_pPopup.reset();
    m_pWindow.reset();
}

void TestPopupDialog::itHasNoFrame()
{
    m_pPopup->show();
    QVERIFY(m_pPopup->isWindow());
    QCOMPARE(m_pPopup->frameGeometry(), m_pPopup->geometry());
    // The contents leave room for the line that stands for the frame.
    QCOMPARE(m_pPopup->contentsRect(), m_pPopup->rect().adjusted(1, 1, -1, -1));
}

void TestPopupDialog::itOpensBelowItsAnchor()
{
    m_pPopup->show();
    QCOMPARE(m_pPopup->geometry().topLeft(), m_pAnchor->mapToGlobal(QPoint(0, 24)));
}

void TestPopupDialog::itOpensAboveAnAnchorAtTheFootOfTheScreen()
{
    const QRect available = m_pWindow->screen()->availableGeometry();
    m_pWindow->move(50, available.bottom() - 60);
    m_pPopup->show();
    QCOMPARE(m_pPopup->geometry().bottomLeft() + QPoint(0, 1), m_pAnchor->mapToGlobal(QPoint(0, 0)));
    QVERIFY(available.contains(m_pPopup->geometry()));
}

void TestPopupDialog::itOpensAnewWhereTheAnchorIsThen()
{
    m_pPopup->show();
    m_pPopup->hide();
    m_pAnchor->move(100, 60);
    m_pPopup->show();
    QCOMPARE(m_pPopup->geometry().topLeft(), m_pAnchor->mapToGlobal(QPoint(0, 24)));
}

void TestPopupDialog::itOutlivesItsAnchor()
{
    delete m_pAnchor;
    m_pPopup->show();
    QVERIFY(m_pPopup->isVisible());
}

void TestPopupDialog::aPressOutsideClosesItAndDoesNothingElse()
{
    // Only a window system that grabs the mouse hands the press on; this is what forbids it.
    QVERIFY(m_pPopup->testAttribute(Qt::WA_NoMouseReplay));
    const QSignalSpy rejected(m_pPopup.get(), &LXDialog::Rejected);
    const QSignalSpy clicked(m_pAnchor, &QPushButton::clicked);
    m_pPopup->show();
    InputDriver().Click(m_pAnchor);
    QVERIFY(!m_pPopup->isVisible());
    QCOMPARE(rejected.count(), 1);
    QCOMPARE(clicked.count(), 0);

    InputDriver().Click(m_pAnchor);
    QCOMPARE(clicked.count(), 1);
}

void TestPopupDialog::aPressInsideLeavesItOpen()
{
    m_pPopup->show();
    InputDriver().Click(m_pPopup.get(), QPoint(2, 2));
    QVERIFY(m_pPopup->isVisible());
}

void TestPopupDialog::escapeRejects()
{
    const QSignalSpy rejected(m_pPopup.get(), &LXDialog::Rejected);
    m_pPopup->show();
    InputDriver().Key(Qt::Key_Escape);
    QVERIFY(!m_pPopup->isVisible());
    QCOMPARE(rejected.count(), 1);
}

void TestPopupDialog::enterPressesTheDefaultButton()
{
    const QSignalSpy accepted(m_pPopup.get(), &LXDialog::Accepted);
    m_pPopup->show();
    m_pField->setFocus();
    InputDriver input;
    input.Type("warm");
    input.Key(Qt::Key_Return);
    QCOMPARE(m_pField->text(), QString("warm"));
    QVERIFY(!m_pPopup->isVisible());
    QCOMPARE(accepted.count(), 1);
}

void TestPopupDialog::execWaitsForTheAnswer()
{
    QTimer::singleShot(0, m_pPopup.get(), [this] { InputDriver().Click(m_pOk); });
    QCOMPARE(m_pPopup->Exec(), 1);
    QTimer::singleShot(0, m_pPopup.get(), [this] { InputDriver().Click(m_pAnchor); });
    QCOMPARE(m_pPopup->Exec(), 0);
}

ZK_REGISTER_TEST(tst_popupdialog, TestPopupDialog)
#include "tst_popupdialog.moc"
