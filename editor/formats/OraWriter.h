#pragma once

#include "formats/FileProgress.h"
#include "formats/OraArchiveWriter.h"
#include "formats/OraContent.h"
#include "formats/OraStack.h"

#include <QImage>
#include <QPair>
#include <QSet>
#include <QVector>

/// Writes one OpenRaster file into a device: the type first, then the list of layers, then what it names.
/// Any thread.
class OraWriter
{
public:
    /// All of them outlive the writer.
    OraWriter(QIODevice& device, const OraContent& content, const FileProgress& progress)
        : m_Content(content), m_Progress(progress), m_Archive(device)
    {}

    /// TooLarge for a list of layers that no reader would take.
    PictureFile::Error Write();

private:
    void ReserveNames();
    QString NewName(const QString& stem, const QString& ending);
    void AddLayer(int row, const LayerState& state);
    QString AddTexture(const LayerState& state);
    void AddChannels();
    OraStack::Image AddImage(const QString& stem, const LXImage32& image, const QPoint& offset,
                             bool isCoverage);
    void AddPng(const QString& name, const LXImage32& image, bool isCoverage, const QByteArray& exif);
    void AddBytes(const QString& name, const QByteArray& bytes);
    void AddPictures();

    const OraContent& m_Content;
    const FileProgress& m_Progress;
    OraArchiveWriter m_Archive;
    OraStack m_Stack;
    QSet<QString> m_Names;                      ///< that are taken
    QVector<QPair<QImage, QString>> m_Textures; ///< and their entries
    qint64 m_AllPixels = 0;                     ///< for the progress
    qint64 m_DonePixels = 0;
    std::vector<std::function<void()>> m_Adders; ///< of what follows the list of layers
};
