#include "common/BuildTime.h"
#include "common/Reports.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <stdexcept>

class TestReports : public QObject
{
    Q_OBJECT

private slots:
    void aConditionHasItsFormat();
    void anExceptionHasItsFormat();
    void anUnknownExceptionHasItsFormat();
    void aNullWhatIsAnEmptyContent();
    void aPlaceholderInsideAMessageStays();
    void theMacroNamesTheLineAndTheFileFromTheProjectsRoot();
    void onlyTheLastSourceFolderCounts();
    void theBuildTimeIsInTheCompilersForm();
    void reportsGoToTheDebugLog();
};

namespace {
QString Opening()
{
    return QString("Build date=%1, time=%2. ").arg(BuildTime::Date(), BuildTime::Time());
}
} // namespace

void TestReports::aConditionHasItsFormat()
{
    QCOMPARE(Reports::ConditionText(ZK_PLACE(684, "src/LXViewToolBase"), "Document externally unlocked."),
             Opening() + "Line=684, file=\"src/LXViewToolBase\". Document externally unlocked.");
}

void TestReports::anExceptionHasItsFormat()
{
    QCOMPARE(Reports::ExceptionText(ZK_PLACE(7, "src/a/B"), "bad allocation"),
             Opening() +
                 "Unexpected exception: line=7, file=\"src/a/B\". Exception content:\"bad allocation\"");
}

void TestReports::anUnknownExceptionHasItsFormat()
{
    QCOMPARE(Reports::UnknownExceptionText(ZK_PLACE(7, "src/a/B")),
             Opening() + "Unexpected unknown exception: line=7, file=\"src/a/B\"");
}

void TestReports::aNullWhatIsAnEmptyContent()
{
    QVERIFY(Reports::ExceptionText(ZK_PLACE(7, "src/a/B"), nullptr).endsWith("Exception content:\"\""));
}

void TestReports::aPlaceholderInsideAMessageStays()
{
    QVERIFY(Reports::ConditionText(ZK_PLACE(7, "src/%5"), "100 %1 %5")
                .endsWith("Line=7, file=\"src/%5\". 100 %1 %5"));
}

void TestReports::theMacroNamesTheLineAndTheFileFromTheProjectsRoot()
{
    const int line = __LINE__ + 1;
    const Reports::Place place = ZK_HERE;
    QCOMPARE(place.line, line);
    QCOMPARE(Reports::SourceName("/home/somebody/zenkari/src/fillcan/FillCan_p.cpp"),
             QString("src/fillcan/FillCan_p"));
    QCOMPARE(Reports::SourceName("../../src/LXViewToolBase.cpp"), QString("src/LXViewToolBase"));
    QCOMPARE(Reports::SourceName("src/LXViewToolBase.cpp"), QString("src/LXViewToolBase"));
}

void TestReports::onlyTheLastSourceFolderCounts()
{
    QCOMPARE(Reports::SourceName("/usr/src/zenkari/src/common/Reports.cpp"), QString("src/common/Reports"));
}

void TestReports::theBuildTimeIsInTheCompilersForm()
{
    QCOMPARE(QString(BuildTime::Date()).size(), 11);
    QCOMPARE(QString(BuildTime::Time()).count(':'), 2);
}

void TestReports::reportsGoToTheDebugLog()
{
    const Reports::Place place = ZK_PLACE(7, "src/a/B");
    QTest::ignoreMessage(QtDebugMsg, qPrintable(Reports::ConditionText(place, "message")));
    Reports::Condition(place, "message");
    QTest::ignoreMessage(QtDebugMsg, qPrintable(Reports::ExceptionText(place, "full")));
    Reports::Exception(place, std::runtime_error("full"));
    QTest::ignoreMessage(QtDebugMsg, qPrintable(Reports::UnknownExceptionText(place)));
    Reports::UnknownException(place);
}

ZK_REGISTER_TEST(tst_reports, TestReports)

#include "tst_reports.moc"
