#include "app/PictureDrops.h"

#include "app/FlatFile.h"
#include "app/FormatLimitSettings.h"
#include "app/MainWindow.h"
#include "app/WaitedWork.h"
#include "gui/LXMimePictures.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "resource/LXResource.h"

#include <QFileInfo>
#include <QMimeData>
#include <QPointer>
#include <QUrl>

PictureDrops::PictureDrops(MainWindow* window) : QObject(window), m_pWindow(window)
{
    connect(window, &MainWindow::DroppedOnCanvas, this, &PictureDrops::Take);
}

void PictureDrops::Take(const QMimeData* data, const QPointF& scenePos)
{
    const QPointer<ZKDocumentView> view = m_pWindow->GetActiveView();
    if (!LayerPictures::MayAdd(view)) return;

    try {
        const QStringList paths = MainWindow::LocalFiles(data);
        const QList<LXImage32> images = paths.isEmpty() ? LXMimePictures::Read(data) : ReadFiles(paths);
        QList<LayerPictures::Place> places;
        for (const LXImage32& image : images)
            places.append({image, LayerPictures::Centered(image, scenePos)});
        // Reading takes its time, in which a view may go, or a tool begin.
        if (places.isEmpty() || !LayerPictures::MayAdd(view)) return;
        LayerPictures::Add(view, places, tr("Drop picture"));
    } catch (const std::exception& error) {
        Tell(tr("What was dropped can't become a layer: %1").arg(QString::fromUtf8(error.what())));
    }
}

QList<LXImage32> PictureDrops::ReadFiles(const QStringList& paths)
{
    // Read here: the settings belong to the main thread.
    const FormatLimits limits = FormatLimitSettings::Read();
    QList<LXImage32> images;
    for (const QString& path : paths) {
        DocumentFile::ReadResult result;
        WaitedWork::Run(
            m_pWindow, tr("Reading “%1”…").arg(QFileInfo(path).fileName()), true,
            [&](const FileProgress& progress) { result = DocumentFile::Read(path, limits, progress); });
        if (result.outcome.error == PictureFile::Error::Cancelled) return images;
        if (!result.outcome.IsOk()) {
            Tell(result.outcome.message);
            continue;
        }
        const LXImage32 image = FlatFile::ImageOf(result);
        if (!image.IsNull()) images.append(image);
    }
    return images;
}

void PictureDrops::Tell(const QString& message)
{
    LXMessageBox::Critical(m_pWindow, LXResource::GetData(LXResource::ProductName).toString(), message);
}
