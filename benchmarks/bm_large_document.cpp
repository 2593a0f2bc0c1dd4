#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "image/LXTileManager.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"

#include <QApplication>
#include <QFile>
#include <QLabel>

#include <png.h>

#include <algorithm>
#include <chrono>
#include <csetjmp>
#include <cstdio>
#include <vector>

// A picture that doesn't fit into the memory for tiles: opened from a file, looked at, filled with real mouse
// events and undone in the real editor.

namespace {
using Clock = std::chrono::steady_clock;

constexpr int Side = 30000;
constexpr int Horizon = 10000;
constexpr qint64 Budget = qint64(1) << 30;
constexpr QPoint InTheSky(15000, 5000);

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A sky of one color over a ramp, so that hardly two tiles are alike.
void MakeRow(int y, std::vector<png_byte>& row)
{
    for (int x = 0; x < Side; ++x) {
        const bool isSky = y < Horizon;
        const int value = (x / 5 + y / 3) & 0xFF;
        row[std::size_t(x) * 3] = static_cast<png_byte>(isSky ? 0x40 : value);
        row[std::size_t(x) * 3 + 1] = static_cast<png_byte>(isSky ? 0x60 : x >> 7);
        row[std::size_t(x) * 3 + 2] = static_cast<png_byte>(isSky ? 0xA0 : y >> 7);
    }
}

bool WritePicture(const QString& name)
{
    std::FILE* const file = std::fopen(QFile::encodeName(name).constData(), "wb");
    if (file == nullptr) return false;
    std::vector<png_byte> row(std::size_t(Side) * 3);
    png_structp writer = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(writer);
    if (setjmp(png_jmpbuf(writer)) == 0) {
        png_init_io(writer, file);
        png_set_IHDR(writer, info, Side, Side, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_compression_level(writer, 1);
        png_set_filter(writer, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
        png_write_info(writer, info);
        for (int y = 0; y < Side; ++y) {
            MakeRow(y, row);
            png_write_row(writer, row.data());
        }
        png_write_end(writer, info);
    }
    png_destroy_write_struct(&writer, &info);
    return std::fclose(file) == 0;
}

/// The most memory that the process ever held, in GiB.
double PeakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toDouble() / (1 << 20);
    }
    return 0;
}

void Turn()
{
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents();
    }
}

void Print(EditorFixture& editor, const char* what, Clock::time_point start)
{
    const double seconds = SecondsSince(start);
    // The read-out follows once a second.
    const Clock::time_point shown = Clock::now();
    while (SecondsSince(shown) < 1.2) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    const auto* const readout = editor.Window()->findChild<QLabel*>(QStringLiteral("memoryReadout"));
    std::printf("| %s | %.1f | %.2f | %s |\n", what, seconds, PeakMemory(), qPrintable(readout->toolTip()));
    std::fflush(stdout);
}

LXRGBA32i SkyColor(EditorFixture& editor)
{
    const LXDocumentLayerLockerForRead locker(editor.Document(), 1);
    return editor.Document()->GetLayerImage(1)->GetColor(InTheSky.x(), InTheSky.y());
}

bool Measure()
{
    EditorFixture editor;
    LXTileManager::Instance().SetMemoryBudget(Budget);
    ZKApplication::SetUserValue(QStringLiteral("Files/LargestDecodedMegabytes"), 8192);
    const QString file = editor.TempFile(QStringLiteral("large.png"));
    if (!WritePicture(file)) return false;
    std::printf("| what | s | GiB at most so far | read-out |\n|---|---|---|---|\n");

    Clock::time_point start = Clock::now();
    if (!editor.Files()->Open(file)) return false;
    Turn();
    Print(editor, "opened", start);

    ZKDocumentView* const view = editor.View();
    view->Scale(1 / view->GetScale(), view->sceneRect().center());
    start = Clock::now();
    for (int step = 0; step < 20; ++step) {
        view->centerOn(12000, 800 + step * 1400);
        Turn();
    }
    Print(editor, "scrolled down at 100 %, 20 screens", start);

    start = Clock::now();
    view->centerOn(InTheSky);
    ZKApplication::SetForeground(QColor(200, 40, 20));
    editor.Tool(QStringLiteral("Fillcan"));
    editor.GetInput().ClickInScene(view, InTheSky);
    while (editor.Document()->GetLockState()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    Turn();
    Print(editor, "the sky, a third of it, filled by a click", start);
    const bool isFilled = SkyColor(editor) == LXRGBA32i(0xFFC82814);

    start = Clock::now();
    editor.History()->undo();
    Turn();
    Print(editor, "undone", start);
    const bool isBack = SkyColor(editor) == LXRGBA32i(0xFF4060A0);
    std::printf("\n%s\n", isFilled && isBack ? "The pixels are right." : "The pixels are wrong.");
    return isFilled && isBack;
}
} // namespace

int main(int argc, char** argv)
{
    try {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(argc, argv);
        return Measure() ? 0 : 1;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
