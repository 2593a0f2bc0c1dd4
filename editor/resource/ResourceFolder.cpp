#include "resource/ResourceFolder.h"

#include "resource/LXResource.h"

#include <QCoreApplication>
#include <QDir>

QString ResourceFolder::Path()
{
    const QString wanted = "share/" + LXResource::GetData(LXResource::ApplicationName).toString();
    const QString programFolder = QCoreApplication::applicationDirPath();
    for (QDir folder(programFolder);;) {
        if (folder.exists(wanted)) return folder.absoluteFilePath(wanted);
        if (!folder.cdUp()) break;
    }
    return QDir::cleanPath(programFolder + "/../" + wanted);
}
