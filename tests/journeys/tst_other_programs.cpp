#include "support/PixelChecks.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <memory>

/// Pictures go to another program and come from it, over a real X server without a screen. Only where the
/// server and the other program are installed.
class TestOtherPrograms : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void aPictureThatWasCopiedBeforeComesInAsItIs();
    void whatIsCopiedMeanwhileBecomesARow_data();
    void whatIsCopiedMeanwhileBecomesARow();
    void aFileOfAFileManagerIsPasted_data();
    void aFileOfAFileManagerIsPasted();
    void aCopyGoesOutAsItIs();

private:
    static constexpr int Limit = 30000; // ms

    QProcessEnvironment Environment() const;
    /// Has the other program offer this; it stays in the background until something else is copied.
    void Offer(const QByteArray& format, const QString& file) const;
    QByteArray Ask(const QByteArray& format) const;
    void Write(const QString& name, const QByteArray& content) const;
    std::unique_ptr<QProcess> StartScript(const QByteArray& text) const;
    void WaitForEnd(QProcess& editor) const;
    bool WaitForFile(const QString& name) const;

    QString PathOf(const QString& name) const { return m_pFolder->filePath(name); }

    QImage m_Picture;
    std::unique_ptr<QTemporaryDir> m_pFolder;
    std::unique_ptr<QProcess> m_pServer;
    QString m_Display;
};

namespace {
/// Until a row of the panel has come.
const QByteArray WaitForRow = "function rows() { return widgets.find('ClipboardPanel/m_pList').items }\n"
                              "for (let tries = 0; rows().length === 0 && tries < 300; ++tries) wait(50)\n"
                              "expect.equal(rows().length, 1)\n";

/// Without what isn't seen: a copy has no color where nothing was copied.
QImage Visible(QImage image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) == 0) image.setPixel(x, y, 0);
        }
    }
    return image;
}
} // namespace

void TestOtherPrograms::initTestCase()
{
    for (const char* program : {"Xvfb", "xclip"}) {
        if (QStandardPaths::findExecutable(program).isEmpty()) QSKIP("Xvfb and xclip are not installed.");
    }
}

void TestOtherPrograms::init()
{
    m_pFolder = std::make_unique<QTemporaryDir>();
    m_Picture = PixelChecks::RandomImage({90, 60}, 5);
    QVERIFY(m_Picture.save(PathOf("in.png")));

    m_pServer = std::make_unique<QProcess>();
    m_pServer->start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp"});
    QTRY_VERIFY_WITH_TIMEOUT(m_pServer->canReadLine(), Limit);
    m_Display = ":" + QString::fromLatin1(m_pServer->readLine().trimmed());
}

void TestOtherPrograms::cleanup()
{
    // What hangs on the server goes with it.
    m_pServer->terminate();
    m_pServer->waitForFinished();
    m_pServer.reset();
    m_pFolder.reset();
}

QProcessEnvironment TestOtherPrograms::Environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_Display);
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("LANG", "C.UTF-8");
    return environment;
}

void TestOtherPrograms::Offer(const QByteArray& format, const QString& file) const
{
    QProcess other;
    other.setProcessEnvironment(Environment());
    // Its child in the background would keep these open.
    other.setStandardOutputFile(QProcess::nullDevice());
    other.setStandardErrorFile(QProcess::nullDevice());
    other.start("xclip", {"-selection", "clipboard", "-t", format, "-i", file});
    QVERIFY(other.waitForFinished(Limit));
    QCOMPARE(other.exitCode(), 0);
}

QByteArray TestOtherPrograms::Ask(const QByteArray& format) const
{
    QProcess other;
    other.setProcessEnvironment(Environment());
    other.start("xclip", {"-selection", "clipboard", "-t", format, "-o"});
    if (!other.waitForFinished(Limit)) return {};
    return other.readAllStandardOutput();
}

void TestOtherPrograms::Write(const QString& name, const QByteArray& content) const
{
    QFile file(PathOf(name));
    if (!file.open(QIODevice::WriteOnly)) qFatal("The file can't be written.");
    file.write(content);
}

std::unique_ptr<QProcess> TestOtherPrograms::StartScript(const QByteArray& text) const
{
    Write("main.js", text);
    auto editor = std::make_unique<QProcess>();
    editor->setProcessEnvironment(Environment());
    editor->start(ZK_PROGRAM,
                  {"--user-data", PathOf("data"), "--timeout", "60", "--script", PathOf("main.js")});
    return editor;
}

void TestOtherPrograms::WaitForEnd(QProcess& editor) const
{
    QVERIFY(editor.waitForFinished(2 * Limit));
    QVERIFY2(editor.exitCode() == 0, editor.readAllStandardError().constData());
}

bool TestOtherPrograms::WaitForFile(const QString& name) const
{
    return QTest::qWaitFor([&] { return QFileInfo::exists(PathOf(name)); }, Limit);
}

void TestOtherPrograms::aPictureThatWasCopiedBeforeComesInAsItIs()
{
    Offer("image/png", PathOf("in.png"));
    const auto editor =
        StartScript("menus.trigger('File/New from Clipboard')\n"
                    "pixels.layer(layers.at(0)).save(script.folder + '/out.png')\n"
                    "dialogs.expect({title: application.name, text: /./, answer: 'Discard'})\n"
                    "documents.active.close()\n");
    WaitForEnd(*editor);
    QCOMPARE(PixelChecks::FirstDifference(QImage(PathOf("out.png")), m_Picture), QString());
}

void TestOtherPrograms::whatIsCopiedMeanwhileBecomesARow_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QString>("file");
    QTest::newRow("PNG") << QByteArray("image/png") << "in.png";
    QTest::newRow("TIFF") << QByteArray("image/tiff") << "in.tiff";
    QTest::newRow("SVG") << QByteArray("image/svg+xml") << "in.svg";
}

void TestOtherPrograms::whatIsCopiedMeanwhileBecomesARow()
{
    QFETCH(QByteArray, format);
    QFETCH(QString, file);

    Write("in.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='60'>"
                    "<rect width='90' height='60' fill='#00ff00'/></svg>");
    QImage expected = m_Picture;
    if (file == "in.svg") expected.fill(Qt::green);
    if (file == "in.tiff") {
        // The format multiplies colors by alpha, so only opaque ones come as they are.
        expected = m_Picture.convertToFormat(QImage::Format_RGB32).convertToFormat(QImage::Format_ARGB32);
        QVERIFY(expected.save(PathOf(file), "TIFF"));
    }

    const auto editor = StartScript("documents.create(90, 60, {background: 'transparent'})\n"
                                    "documents.active.exportAs(script.folder + '/ready.png')\n" +
                                    WaitForRow +
                                    "menus.trigger('Edit/Paste in Place')\n"
                                    "pixels.layer(layers.current).save(script.folder + '/out.png')\n"
                                    "history.undo()\n");
    QVERIFY(WaitForFile("ready.png"));
    Offer(format, PathOf(file));
    WaitForEnd(*editor);
    QCOMPARE(PixelChecks::FirstDifference(QImage(PathOf("out.png")).convertToFormat(QImage::Format_ARGB32),
                                          expected),
             QString());
}

void TestOtherPrograms::aFileOfAFileManagerIsPasted_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("rows");
    // The host's command needs no row; what the tool pastes is one from then on.
    QTest::newRow("in place") << "Edit/Paste in Place" << 0;
    QTest::newRow("by the tool") << "Edit/Paste as/New layer" << 1;
}

void TestOtherPrograms::aFileOfAFileManagerIsPasted()
{
    QFETCH(QString, entry);
    QFETCH(int, rows);
    Write("list", QUrl::fromLocalFile(PathOf("in.png")).toEncoded() + "\r\n");
    const auto editor = StartScript("documents.create(90, 60, {background: 'transparent'})\n"
                                    "documents.active.exportAs(script.folder + '/ready.png')\n"
                                    "let isDone = false\n"
                                    "for (let tries = 0; !isDone && tries < 300; ++tries) {\n"
                                    "    wait(50)\n"
                                    "    try { menus.trigger('" +
                                    entry.toLatin1() +
                                    "'); isDone = true } catch (error) { }\n"
                                    "}\n"
                                    "const items = widgets.find('ClipboardPanel/m_pList').items\n"
                                    "expect.equal(items.length, " +
                                    QByteArray::number(rows) +
                                    ")\n"
                                    "pixels.layer(layers.current).save(script.folder + '/out.png')\n"
                                    "history.undo()\n");
    QVERIFY(WaitForFile("ready.png"));
    Offer("text/uri-list", PathOf("list"));
    WaitForEnd(*editor);
    // A paste blends, so that what isn't seen has no color.
    const QImage pasted = QImage(PathOf("out.png")).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(PixelChecks::FirstDifference(Visible(pasted), Visible(m_Picture)), QString());
}

void TestOtherPrograms::aCopyGoesOutAsItIs()
{
    const auto editor = StartScript("documents.open(script.folder + '/in.png')\n"
                                    "input.key('Ctrl+A')\n"
                                    "input.key('Ctrl+C')\n"
                                    "idle()\n"
                                    "const done = script.folder + '/done.png'\n"
                                    "pixels.merged.save(script.folder + '/ready.png')\n"
                                    "let isDone = false\n"
                                    "for (let tries = 0; !isDone && tries < 300; ++tries) {\n"
                                    "    wait(50)\n"
                                    "    try { pixels.file(done); isDone = true } catch (error) { }\n"
                                    "}\n"
                                    "// Its own copy is no other row.\n"
                                    "expect.equal(widgets.find('ClipboardPanel/m_pList').items.length, 1)\n"
                                    "history.index = 0\n");
    QVERIFY(WaitForFile("ready.png"));
    const QList<QByteArray> formats = Ask("TARGETS").split('\n');
    const QImage taken = QImage::fromData(Ask("image/png"), "PNG");
    QVERIFY(m_Picture.save(PathOf("done.png")));
    WaitForEnd(*editor);

    QCOMPARE(PixelChecks::FirstDifference(taken.convertToFormat(QImage::Format_ARGB32), Visible(m_Picture)),
             QString());
    // Of all kinds of pictures that are offered, the one with straight alpha comes first.
    QByteArray first;
    for (const QByteArray& format : formats) {
        if (first.isEmpty() && format.startsWith("image/")) first = format;
    }
    QCOMPARE(first, QByteArray("image/png"));
}

ZK_REGISTER_TEST(tst_other_programs, TestOtherPrograms)
#include "tst_other_programs.moc"
