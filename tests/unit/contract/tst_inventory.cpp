#include "HeaderText.h"

#include "support/TestRegistry.h"

#include <QFile>
#include <QTest>

#include <map>

namespace {
struct Line
{
    QString floor;
    QString className;
    QString name;
    QString later; ///< the reason why it may be missing; empty: it must be there

    QString Text() const { return floor + ' ' + className + ' ' + name; }
};

QVector<Line> ReadContract()
{
    QVector<Line> lines;
    QFile file(QStringLiteral(ZK_CONTRACT_FILE));
    if (!file.open(QIODevice::ReadOnly)) return lines;
    const QStringList all = QString::fromUtf8(file.readAll()).split('\n');
    for (const QString& text : all) {
        const QStringList words = text.split(' ', Qt::SkipEmptyParts);
        if (words.size() < 3 || text.startsWith('#')) continue;
        lines.append({words.at(0), words.at(1), words.at(2), words.mid(3).join(' ')});
    }
    return lines;
}

const HeaderText& Headers(const QString& floor)
{
    static std::map<QString, HeaderText> floors;
    return floors.try_emplace(floor, QStringLiteral(ZK_HOST_FOLDER) + '/' + floor).first->second;
}

bool IsDeclared(const Line& line)
{
    return Headers(line.floor).Declares(line.className, line.name);
}
} // namespace

/// contract.txt against the headers: what tools ask for is declared, or says why not.
class TestInventory : public QObject
{
    Q_OBJECT

private slots:
    void everythingThatToolsAskForIsDeclared();
    void whatIsToComeIsNotThereYet();
    void nothingIsToCome();
    void aNameThatNobodyDeclaresIsMissed();
};

void TestInventory::everythingThatToolsAskForIsDeclared()
{
    const QVector<Line> contract = ReadContract();
    QVERIFY(contract.size() > 300);
    QStringList missing;
    for (const Line& line : contract) {
        QVERIFY2(!Headers(line.floor).IsEmpty(), qPrintable(line.floor));
        if (line.later.isEmpty() && !IsDeclared(line)) missing << line.Text();
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join('\n')));
}

void TestInventory::whatIsToComeIsNotThereYet()
{
    QStringList there;
    for (const Line& line : ReadContract()) {
        if (!line.later.isEmpty() && IsDeclared(line)) there << line.Text();
    }
    QVERIFY2(there.isEmpty(), qPrintable("no longer to come:\n" + there.join('\n')));
}

void TestInventory::nothingIsToCome()
{
    for (const Line& line : ReadContract()) {
        QVERIFY2(line.later.isEmpty(), qPrintable(line.Text() + ' ' + line.later));
    }
}

/// The search itself: names are found whole, in their class, and not in comments.
void TestInventory::aNameThatNobodyDeclaresIsMissed()
{
    const HeaderText& document = Headers("document");
    QVERIFY(document.Declares("LXDocumentInterface", "GetModel()"));
    QVERIFY(!document.Declares("LXDocumentInterface", "GetMode()"));
    QVERIFY(!document.Declares("LXDocumentInterface", "Model()"));
    QVERIFY(!document.Declares("LXDocumentModel", "GetModel()"));
    QVERIFY(!document.Declares("LXDocumentInterface", "GetSelectionMaskImage()"));
    QVERIFY(!document.Declares("NoSuchClass", "GetModel()"));
    QVERIFY(!document.Declares("LXDocumentInterface", "Straight"));
    // A base of its own floor counts.
    QVERIFY(Headers("history").Declares("LayerPaintCommandData", "SetUndoImage()"));
}

ZK_REGISTER_TEST(tst_inventory, TestInventory)
#include "tst_inventory.moc"
