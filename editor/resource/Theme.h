#pragma once

#include "EditorExport.h"

#include "resource/ThemeTokens.h"

#include <QColor>
#include <QIcon>
#include <QString>

class QPalette;

/// How the program looks: its pictures ("theme:"), its palette and its style sheet. Main thread only.
///
/// The palette's Window is the color of panels and Dark that of the surround of documents.
class ZK_EDITOR_EXPORT Theme
{
public:
    enum class Look
    {
        Dark,
        Light,
    };

    Theme() = delete;

    /// Gives the running application this look: before the first window at start, and whenever it changes.
    /// Icons by ZKIconHelper follow by themselves; who keeps a pixmap takes it anew on a palette change.
    /// @param resources  the folder that holds `theme/`; ResourceFolder::Path() as a rule.
    static void Apply(Look look, const QString& resources);

    /// The look that was applied last; dark before.
    static Look Current();

    /// The colors of the look that was applied last.
    static const ThemeTokens& Tokens();
    static const ThemeTokens& Tokens(Look look);

    /// The ground of a selected row or text: as much accent as lets words and pictures stand out.
    static QColor Selection(const ThemeTokens& tokens);

    static QPalette Palette(const ThemeTokens& tokens);

    /// The style sheet with its "@token" words replaced by colors.
    static QString StyleSheet(const ThemeTokens& tokens, QString style);

    /// The program's own picture in all its sizes.
    static QIcon ApplicationIcon(const QString& resources);
};
