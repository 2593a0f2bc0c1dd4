/// What a script costs: the start of the editor without a display to the script's first line, and how many
/// small pictures a batch opens, fills and saves in a second, with one process and with two.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {
constexpr int StartCount = 15;
constexpr int PictureCount = 200;
constexpr int PictureSize = 256; // pixels
constexpr int Limit = 600000;    // ms

const char* const FirstLineScript = "print('begun')";
const char* const FillScript = R"(
const document = documents.open(script.args[0])
application.foreground = '#ff0000'
tools.activate('Fillcan')
input.click(10, 10)
idle()
expect.equal(history.texts, ['Fill'])
document.save(script.args[1] + '/' + script.args[0].split('/').pop())
document.close()
)";

QString Write(const QTemporaryDir& folder, const QString& name, const char* text)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly)) qFatal("%s can't be written.", qPrintable(name));
    file.write(text);
    return file.fileName();
}

/// From the start of the process to its first line, in ms.
qint64 MeasureFirstLine(const QString& script)
{
    QProcess program;
    QElapsedTimer clock;
    clock.start();
    program.start(QStringLiteral(ZK_PROGRAM),
                  {QStringLiteral("--headless"), QStringLiteral("--script"), script});
    while (!program.canReadLine()) {
        if (!program.waitForReadyRead(Limit)) qFatal("The script printed nothing.");
    }
    const qint64 elapsed = clock.elapsed();
    program.waitForFinished(Limit);
    return elapsed;
}

/// Plain ground with a frame that no two pictures share.
QStringList MakePictures(const QTemporaryDir& folder)
{
    QStringList files;
    for (int i = 0; i < PictureCount; ++i) {
        QImage picture(PictureSize, PictureSize, QImage::Format_RGB32);
        picture.fill(Qt::white);
        for (int x = 0; x < PictureSize; ++x)
            picture.setPixelColor(x, 100, QColor::fromHsv(i, 255, x % 256));
        const QString file = folder.filePath(QStringLiteral("%1.png").arg(i));
        if (!picture.save(file)) qFatal("A picture can't be written.");
        files << file;
    }
    return files;
}

/// Processor time of all processes that were started and have ended, in ms.
double UsedByChildren()
{
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    const timeval& user = used.ru_utime;
    const timeval& system = used.ru_stime;
    return static_cast<double>(user.tv_sec + system.tv_sec) * 1000 +
           static_cast<double>(user.tv_usec + system.tv_usec) / 1000;
}

/// Pictures in a second.
double MeasureBatch(const QString& script, const QStringList& files, const QString& target, int jobs)
{
    QProcess batch;
    batch.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer clock;
    clock.start();
    batch.start(QStringLiteral(ZK_PROGRAM),
                QStringList{QStringLiteral("batch"), script, QStringLiteral("--jobs"), QString::number(jobs),
                            QStringLiteral("--arg"), target}
                    << files);
    if (!batch.waitForFinished(Limit) || batch.exitCode() != 0) {
        qFatal("The batch failed:\n%s", batch.readAll().constData());
    }
    return 1000.0 * PictureCount / static_cast<double>(clock.elapsed());
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;

    const QString firstLine = Write(folder, QStringLiteral("first.js"), FirstLineScript);
    std::vector<qint64> starts;
    starts.reserve(StartCount);
    for (int i = 0; i < StartCount; ++i)
        starts.push_back(MeasureFirstLine(firstLine));
    std::sort(starts.begin(), starts.end());
    std::printf("start to the first line, ms: %lld fastest, %lld middle, %lld slowest of %d\n",
                starts.front(), starts[StartCount / 2], starts.back(), StartCount);

    const QString fill = Write(folder, QStringLiteral("fill.js"), FillScript);
    const QStringList files = MakePictures(folder);
    const QTemporaryDir target;
    const double usedBefore = UsedByChildren();
    const double one = MeasureBatch(fill, files, target.path(), 1);
    const double used = UsedByChildren() - usedBefore;
    const double two = MeasureBatch(fill, files, target.path(), 2);
    std::printf(
        "batch of %d pictures of %d x %d, pictures/s: %.1f with one process, %.1f with two (x %.2f)\n",
        PictureCount, PictureSize, PictureSize, one, two, two / one);
    std::printf("processor time for a picture, start of its editor included: %.0f ms\n", used / PictureCount);
    return 0;
}
