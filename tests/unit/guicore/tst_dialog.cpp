#include "guicore/LXDialog.h"
#include "support/TestRegistry.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {
class StubbornDialog : public LXDialog
{
public:
    void Reject() override
    {
        ++m_Asked;
        if (m_Asked > 1) LXDialog::Reject();
    }

    int m_Asked = 0;
};
} // namespace

class TestDialog : public QObject
{
    Q_OBJECT

private slots:
    void execAnswersOneForAccepted();
    void escapeRejects();
    void closingTheFrameRejects();
    void overrideKeepsTheDialogOpen();
};

void TestDialog::execAnswersOneForAccepted()
{
    LXDialog dialog;
    QSignalSpy accepted(&dialog, &LXDialog::Accepted);
    QSignalSpy rejected(&dialog, &LXDialog::Rejected);
    QTimer::singleShot(0, &dialog, &LXDialog::Accept);
    QCOMPARE(dialog.Exec(), 1);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(rejected.count(), 0);

    QTimer::singleShot(0, &dialog, &LXDialog::Reject);
    QCOMPARE(dialog.Exec(), 0);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(rejected.count(), 1);
}

void TestDialog::escapeRejects()
{
    LXDialog dialog;
    QSignalSpy rejected(&dialog, &LXDialog::Rejected);
    QTimer::singleShot(0, &dialog, [&dialog] { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QCOMPARE(dialog.Exec(), 0);
    QCOMPARE(rejected.count(), 1);
}

void TestDialog::closingTheFrameRejects()
{
    LXDialog dialog;
    QSignalSpy rejected(&dialog, &LXDialog::Rejected);
    QTimer::singleShot(0, &dialog, &QWidget::close);
    QCOMPARE(dialog.Exec(), 0);
    QCOMPARE(rejected.count(), 1);
}

void TestDialog::overrideKeepsTheDialogOpen()
{
    StubbornDialog dialog;
    dialog.show();
    QVERIFY(!dialog.close());
    QVERIFY(dialog.isVisible());
    QVERIFY(dialog.close());
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.m_Asked, 2);
}

ZK_REGISTER_TEST(tst_dialog, TestDialog)
#include "tst_dialog.moc"
