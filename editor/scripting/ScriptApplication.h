#pragma once

#include "scripting/ScriptObject.h"

#include <QString>
#include <QStringList>

/// `application`: what belongs to the program and not to a document.
class ScriptApplication : public ScriptObject
{
    Q_OBJECT
    /// Colors read as "#aarrggbb"; names and "#rrggbb" can be set too.
    Q_PROPERTY(QString foreground READ GetForeground WRITE SetForeground)
    Q_PROPERTY(QString background READ GetBackground WRITE SetBackground)
    /// The two as a mask takes them.
    Q_PROPERTY(QString maskForeground READ GetMaskForeground)
    Q_PROPERTY(QString maskBackground READ GetMaskBackground)
    Q_PROPERTY(int patternCount READ GetPatternCount)
    /// The index of the chosen pattern.
    Q_PROPERTY(int pattern READ GetPattern WRITE SetPattern)
    /// The names of the color profiles, sRGB first.
    Q_PROPERTY(QStringList profiles READ GetProfiles)
    /// The name of the one that the two colors are meant in; until the end of the program.
    Q_PROPERTY(QString workingProfile READ GetWorkingProfile WRITE SetWorkingProfile)
    Q_PROPERTY(QString name READ GetName)
    Q_PROPERTY(QString version READ GetVersion)
    Q_PROPERTY(QString dataFolder READ GetDataFolder)
    Q_PROPERTY(QString resourceFolder READ GetResourceFolder)
    /// False while a tool has switched them off.
    Q_PROPERTY(bool shortcutsEnabled READ AreShortcutsEnabled)
    /// The cursor that stands over all windows, as `tools.cursor` tells one; null for none.
    Q_PROPERTY(QJSValue overrideCursor READ GetOverrideCursor)
    /// The text on the system's clipboard; empty for none.
    Q_PROPERTY(QString clipboardText READ GetClipboardText WRITE SetClipboardText)
    /// The image on the clipboard, `{width, height}`; null for none.
    Q_PROPERTY(QJSValue clipboardImage READ GetClipboardImage)

public:
    ScriptApplication(ScriptContext& context, QObject* parent);

    QString GetForeground() const;
    void SetForeground(const QString& color);
    QString GetBackground() const;
    void SetBackground(const QString& color);
    QString GetMaskForeground() const;
    QString GetMaskBackground() const;
    int GetPatternCount() const;
    int GetPattern() const;
    void SetPattern(int index);
    QStringList GetProfiles() const;
    QString GetWorkingProfile() const;
    void SetWorkingProfile(const QString& name);
    QString GetName() const;
    QString GetVersion() const;
    QString GetDataFolder() const;
    QString GetResourceFolder() const;
    bool AreShortcutsEnabled() const;
    QJSValue GetOverrideCursor() const;
    QString GetClipboardText() const;
    void SetClipboardText(const QString& text);
    QJSValue GetClipboardImage() const;

    Q_INVOKABLE QString patternFile(const QJSValue& index) const;
    /// A value of the person's settings; `whenMissing` if it was never written.
    Q_INVOKABLE QJSValue userValue(const QString& key, const QJSValue& whenMissing = QJSValue()) const;
    Q_INVOKABLE void setUserValue(const QString& key, const QJSValue& value);
    /// Puts a picture file on the clipboard, and writes the clipboard's image to a file.
    Q_INVOKABLE void copyImage(const QString& path);
    Q_INVOKABLE void saveClipboardImage(const QString& path) const;
    Q_INVOKABLE void clearClipboard();
};
