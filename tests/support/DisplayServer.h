#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

/// An X server without a screen, for what the offscreen platform can't show: windows of the real window
/// system and the clipboard between programs. It ends with this object, and with it whatever hangs on it.
class DisplayServer
{
public:
    DisplayServer();
    ~DisplayServer();
    Q_DISABLE_COPY(DisplayServer)

    /// Whether the server is installed.
    static bool IsThere();

    /// For programs that shall use it.
    QProcessEnvironment Environment() const;

private:
    QProcess m_Server;
    QString m_Display;
};
