#include "app/HeadlessPlatform.h"

#include <QApplication>
#include <QFont>

namespace {
constexpr int FontSize = 9; // points

const QLatin1String PlatformNotes[] = {QLatin1String("This plugin does not support "),
                                       QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")};

QtMessageHandler& Previous()
{
    static QtMessageHandler previous = nullptr;
    return previous;
}

void DropPlatformNotes(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    for (const QLatin1String& note : PlatformNotes) {
        if (message.startsWith(note)) return;
    }
    Previous()(type, context, message);
}
} // namespace

void HeadlessPlatform::Choose()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Previous() = qInstallMessageHandler(DropPlatformNotes);
}

void HeadlessPlatform::UseReadableFont()
{
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) return;
    QApplication::setFont(QFont(QStringLiteral("Sans Serif"), FontSize));
}
