#include "core/ApplicationFolders.h"

#include "resource/ResourceFolder.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

ApplicationFolders ApplicationFolders::Default()
{
    ApplicationFolders folders;
    if (QStandardPaths::isTestModeEnabled()) {
        static const QTemporaryDir processFolder;
        folders.config = processFolder.filePath("config");
        folders.data = processFolder.filePath("data");
    } else {
        folders.config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
        folders.data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    }
    folders.resources = ResourceFolder::Path();
    return folders;
}

ApplicationFolders ApplicationFolders::Below(const QString& userFolder)
{
    const QDir folder(QDir(userFolder).absolutePath());
    ApplicationFolders folders;
    folders.config = folder.filePath(QStringLiteral("config"));
    folders.data = folder.filePath(QStringLiteral("data"));
    folders.resources = ResourceFolder::Path();
    return folders;
}
