#include "document/LXPathsListModel.h"
#include "support/DocumentFixture.h"
#include "support/PathFixture.h"
#include "support/TestRegistry.h"

#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

using namespace DocumentFixture;
using namespace PathFixture;

namespace {
constexpr int Workers = 8;
constexpr int Rounds = 400;

/// A path whose anchors all have the same coordinates: a torn read shows.
LXSubPaths Uniform(int value)
{
    LXPath elements;
    for (int i = 0; i < 10; ++i)
        elements << LXPathElement(QPointF(value, value));
    return {{elements, LXPathsListModel::Unite}};
}

bool IsUniform(const LXSubPaths& path)
{
    if (path.isEmpty()) return true;
    const LXPath& elements = path.first().first;
    return std::all_of(elements.begin(), elements.end(),
                       [&](const LXPathElement& element) { return element == elements.first(); });
}
} // namespace

/// Eight workers read and write paths while the main thread adds and removes them.
class TestPathThreads : public QObject
{
    Q_OBJECT

private slots:
    void everyReadIsOfOneMoment();
};

void TestPathThreads::everyReadIsOfOneMoment()
{
    const OwnedDocument document = Make(QSize(20, 20));
    LXPathsListModel* paths = document->GetPathListModel();
    paths->InsertPath(0, "path", Uniform(0));
    paths->InsertPath(1, "other", Uniform(0));

    std::atomic<int> torn{0};
    std::atomic<int> running{Workers};
    std::vector<std::thread> workers;
    workers.reserve(Workers);
    for (int number = 0; number < Workers; ++number) {
        workers.emplace_back([&, number] {
            for (int round = 0; round < Rounds; ++round) {
                const int row = (number + round) % 3;
                paths->SetPath(row, Uniform(round));
                paths->SetSubPath(row, 0, Uniform(number).first().first, round % 2 == 0);
                if (!IsUniform(paths->GetPath(row))) ++torn;
                LXPath elements;
                LXPathsListModel::LogicalOp operation = LXPathsListModel::None;
                paths->GetSubPath(row, 0, elements, operation);
                if (!IsUniform({{elements, operation}})) ++torn;
                paths->GetPathName(row);
            }
            --running;
        });
    }
    while (running > 0) {
        paths->InsertPath(2, "third", Uniform(1));
        paths->MovePath(0, 2);
        paths->InsertSubPath(1, 1, {}, LXPathsListModel::Unite);
        paths->RemoveSubPath(1, 1);
        paths->RemovePath(2);
    }
    for (std::thread& worker : workers)
        worker.join();
    QCoreApplication::sendPostedEvents(document.get());
    QCOMPARE(torn.load(), 0);
    QCOMPARE(paths->rowCount(), 2);
}

ZK_REGISTER_TEST(tst_paththreads, TestPathThreads)
#include "tst_paththreads.moc"
