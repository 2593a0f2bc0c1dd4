#pragma once

#include <QObject>

class MainWindow;
class ZKDocumentView;
struct ColorPreferences;
struct Preferences;

/// Makes the running program follow the preferences: its look, its color profiles, the memory for pictures
/// and the limits of every history. Reads them at its start and whenever they are changed. Main thread only.
class PreferencesUse : public QObject
{
    Q_OBJECT

public:
    /// The look alone, which must be there before the first window.
    static void ApplyLook(const QString& resources);

    /// @param window  becomes the owner
    PreferencesUse(MainWindow* window, const QString& resources);

    /// Shows the dialog; what is accepted is kept and followed at once.
    void AskAndUse();

private:
    void Use(const Preferences& values);
    /// The window is on another screen, maybe.
    void FollowScreen();
    void UseColors(const ColorPreferences& values);
    void Tell(const QString& message);
    void LimitHistory(ZKDocumentView* view) const;

    MainWindow* m_pWindow;
    QString m_Resources;
    QString m_Screen; ///< whose profile is in use, as ScreenProfile::KeyOf()
    int m_UndoSteps = 0;
    qint64 m_UndoBytes = 0;
};
