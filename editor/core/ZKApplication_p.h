#pragma once

#include "EditorExport.h"

#include "core/ApplicationFolders.h"

#include <QAction>
#include <QBrush>
#include <QColor>
#include <QPointer>
#include <QSettings>
#include <QStringList>

#include <memory>

/// The state behind ZKApplication.
class ZK_EDITOR_EXPORT ZKApplicationPrivate
{
public:
    static ZKApplicationPrivate& Get();

    /// Makes the writable folders and reads the settings and the patterns from there anew. Called at start,
    /// or never: then the folders are the system's.
    void SetFolders(const ApplicationFolders& folders);

    const ApplicationFolders& Folders();
    QSettings& Settings();
    const QStringList& Patterns();

    QColor m_Foreground = Qt::black;
    QColor m_Background = Qt::white;
    QBrush m_Gradient;
    int m_TexturePatternIndex = 0;
    QPointer<QAction> m_pRefineSelection;

private:
    void UseDefaultFolders();

    ApplicationFolders m_Folders;
    std::unique_ptr<QSettings> m_pSettings; // null until there are folders
    QStringList m_Patterns;                 // absolute, native separators, by name
};
