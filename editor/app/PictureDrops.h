#pragma once

#include "app/LayerPictures.h"

#include <QObject>
#include <QPointF>
#include <QStringList>

class MainWindow;
class QMimeData;

/// Pictures and files that are dropped on a canvas become layers of its document, with their middle where
/// they were dropped. Main thread only.
class PictureDrops : public QObject
{
    Q_OBJECT

public:
    /// @param window  outlives this object
    explicit PictureDrops(MainWindow* window);

private:
    void Take(const QMimeData* data, const QPointF& scenePos);
    QList<LXImage32> ReadFiles(const QStringList& paths);
    void Tell(const QString& message);

    MainWindow* m_pWindow;
};
