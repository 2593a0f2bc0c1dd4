#include "support/DisplayServer.h"

#include <QStandardPaths>

namespace {
constexpr int Limit = 20000; // ms

const QString& ServerName()
{
    static const QString name = QStringLiteral("Xvfb");
    return name;
}
} // namespace

DisplayServer::DisplayServer()
{
    m_Server.start(ServerName(),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp")});
    // Its number comes when it listens.
    while (!m_Server.canReadLine()) {
        if (!m_Server.waitForReadyRead(Limit)) qFatal("The display server did not start.");
    }
    m_Display = QLatin1Char(':') + QString::fromLatin1(m_Server.readLine().trimmed());
}

DisplayServer::~DisplayServer()
{
    m_Server.terminate();
    m_Server.waitForFinished();
}

bool DisplayServer::IsThere()
{
    return !QStandardPaths::findExecutable(ServerName()).isEmpty();
}

QProcessEnvironment DisplayServer::Environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_Display);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    return environment;
}
