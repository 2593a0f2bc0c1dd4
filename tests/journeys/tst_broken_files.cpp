#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "gui/LXDocumentManager.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"
#include "utils/FaultSeams.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QtEndian>

/// Files that can't be opened or written: a message, and the editor is as it was.
class TestBrokenFiles : public QObject
{
    Q_OBJECT

private slots:

    void cleanup() { FaultSeams::Reset(); }

    void openingLeavesTheEditorAsItWas_data();
    void openingLeavesTheEditorAsItWas();
    void aPictureBeyondTheSetLimitIsRefused_data();
    void aPictureBeyondTheSetLimitIsRefused();
    void limitsThatMakeNoSenseAreNotFollowed();
    void aFullDiskLeavesTheOldFile();
    void aPictureTooLargeForTheMemoryIsNotMade();
};

namespace {
void AppendNumber(QByteArray& bytes, quint32 number)
{
    const quint32 bigEndian = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&bigEndian), sizeof(bigEndian));
}

/// The check sum that ends a PNG chunk.
quint32 ChunkSum(const QByteArray& bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

/// A correct header of a huge picture, and nothing behind it.
QByteArray HugePng()
{
    QByteArray header("IHDR");
    AppendNumber(header, 2000000);
    AppendNumber(header, 2000000);
    header.append(QByteArray::fromHex("0806000000"));

    QByteArray file = QByteArray::fromHex("89504e470d0a1a0a");
    AppendNumber(file, static_cast<quint32>(header.size()) - 4);
    file.append(header);
    AppendNumber(file, ChunkSum(header));
    return file;
}

QByteArray CutOffPng()
{
    const QString path = QDir::temp().filePath(QStringLiteral("tst_broken_files_whole.png"));
    QImage noise(100, 100, QImage::Format_ARGB32);
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x)
            noise.setPixel(x, y, qHash(x * 1000 + y) | 0xFF000000);
    }
    noise.save(path);
    QFile whole(path);
    if (!whole.open(QIODevice::ReadOnly)) return QByteArray();
    const QByteArray bytes = whole.readAll();
    whole.remove();
    return bytes.left(bytes.size() / 2);
}

void CloseBox(InputDriver& input, QString& text)
{
    input.WhenModalShows([&input, &text](QWidget* window) {
        auto* box = qobject_cast<LXMessageBox*>(window);
        QVERIFY(box);
        text = box->GetText();
        QPushButton* button = box->findChild<QPushButton*>();
        QVERIFY(button);
        input.Click(button);
    });
}
} // namespace

void TestBrokenFiles::openingLeavesTheEditorAsItWas_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing") << "missing.png" << QByteArray();
    QTest::newRow("not a picture") << "text.png" << QByteArray("Once upon a time there was a picture.");
    QTest::newRow("cut off") << "half.png" << CutOffPng();
    QTest::newRow("header alone") << "header.png" << QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
    QTest::newRow("oversized") << "huge.png" << HugePng();
    QTest::newRow("jpeg of nothing") << "short.jpg" << QByteArray::fromHex("ffd8ffe0");
}

void TestBrokenFiles::openingLeavesTheEditorAsItWas()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    EditorFixture editor(20, 10);
    const LXDocumentInterface* document = editor.Document();
    const QImage before = editor.Pixels();
    const QString path = editor.TempFile(name);
    if (!content.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
    }

    QString told;
    CloseBox(editor.GetInput(), told);
    QVERIFY(!editor.Files()->Open(path));
    QVERIFY2(told.contains(name), qPrintable(told));

    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 1);
    QCOMPARE(editor.Document(), document);
    QCOMPARE(editor.Pixels(), before);
    editor.CheckNothingIsLeft();
}

void TestBrokenFiles::aPictureBeyondTheSetLimitIsRefused_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("limit");
    QTest::newRow("side") << "Files/LargestSide" << 1999;
    QTest::newRow("memory") << "Files/LargestDecodedMegabytes" << 3;
}

void TestBrokenFiles::aPictureBeyondTheSetLimitIsRefused()
{
    QFETCH(QString, key);
    QFETCH(int, limit);
    EditorFixture editor;
    const QString path = editor.TempFile(QStringLiteral("large.png"));
    QVERIFY(QImage(2000, 1000, QImage::Format_RGB32).save(path));

    ZKApplication::SetUserValue(key, limit);
    QString told;
    CloseBox(editor.GetInput(), told);
    QVERIFY(!editor.Files()->Open(path));
    QVERIFY2(told.contains(QLatin1String("large.png")), qPrintable(told));

    ZKApplication::SetUserValue(key, 4 * limit);
    QVERIFY(editor.Files()->Open(path));
}

void TestBrokenFiles::limitsThatMakeNoSenseAreNotFollowed()
{
    EditorFixture editor;
    const QString path = editor.TempFile(QStringLiteral("small.png"));
    QVERIFY(QImage(20, 10, QImage::Format_RGB32).save(path));
    ZKApplication::SetUserValue(QStringLiteral("Files/LargestSide"), -1);
    ZKApplication::SetUserValue(QStringLiteral("Files/LargestDecodedMegabytes"), QStringLiteral("much"));
    QVERIFY(editor.Files()->Open(path));
}

void TestBrokenFiles::aFullDiskLeavesTheOldFile()
{
    EditorFixture editor(200, 100);
    const QString path = editor.TempFile("kept.png");
    QVERIFY(editor.Files()->SaveTo(editor.Document(), path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray old = file.readAll();
    file.close();
    editor.Tool("Fillcan").Click(QPointF(5, 5));

    FaultSeams::FailNth(FaultSeams::Seam::FileWrite, 1);
    QString told;
    CloseBox(editor.GetInput(), told);
    QVERIFY(!editor.Files()->Save(editor.Document()));
    QVERIFY2(told.contains("kept.png"), qPrintable(told));

    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), old);
    QVERIFY(!editor.History()->isClean());
    QCOMPARE(QFileInfo(path).dir().entryList(QDir::Files), QStringList{"kept.png"});
}

void TestBrokenFiles::aPictureTooLargeForTheMemoryIsNotMade()
{
    EditorFixture editor(20, 10);
    QString told;
    CloseBox(editor.GetInput(), told);
    QVERIFY(!editor.Files()->New(QSize(300000, 300000), Qt::white));
    QVERIFY(!told.isEmpty());
    QCOMPARE(LXDocumentManager::Instance()->GetDocuments().size(), 1);
}

ZK_REGISTER_TEST(tst_broken_files, TestBrokenFiles)
#include "tst_broken_files.moc"
