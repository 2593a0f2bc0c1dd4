#pragma once

#include "formats/FileProgress.h"
#include "formats/FormatFailure.h"
#include "formats/FormatLimits.h"
#include "formats/FormatTable.h"
#include "formats/OraArchiveReader.h"
#include "formats/OraContent.h"
#include "formats/OraStack.h"

#include <QCoreApplication>
#include <QHash>
#include <QImage>
#include <QSet>
#include <QStringList>

#include <memory>

/// Reads one OpenRaster file: first everything that says how large it is, then pixels. What image code throws
/// passes through. Any thread.
class OraReader
{
    Q_DECLARE_TR_FUNCTIONS(OraReader)

public:
    OraReader(const FormatLimits& limits, const FileProgress& progress)
        : m_Limits(limits), m_Progress(progress)
    {}

    FormatFailure Read(const QString& path);

    /// Afterwards, when there was no failure.
    const OraContent& Content() const { return m_Content; }

    const OraStack& Stack() const { return m_Stack; }

    /// As Picture::profileProblem.
    QString ProfileProblem() const { return m_ProfileProblem; }

    /// The names of the text layers whose textures can't be read: they have a plain color.
    QStringList LostTextures() const { return m_LostTextures; }

private:
    FormatFailure CheckMimetype() const;
    FormatFailure ReadStack();
    FormatFailure MeasureImages();
    FormatFailure MeasureImage(const OraStack::Image& image);
    FormatFailure ReadLayers();
    FormatFailure ReadLayer(const OraStack::Layer& layer);
    FormatFailure ReadSelection();
    FormatFailure ReadChannels();
    FormatFailure ReadProfile();
    FormatFailure ReadMetadata(const OraStack::Layer& layer, LXImage32* image);
    FormatFailure ReadImage(const OraStack::Image& image, bool isCoverage, LXImage32* pixels);
    FormatFailure ReadPixels(QIODevice& entry, PixelMeaning meaning, Picture* picture);
    std::unique_ptr<QIODevice> OpenTexture(const OraBrush::Texture& texture) const;
    qint64 BytesOf(const OraBrush::Texture& texture) const;
    FormatFailure ReadTexture(const OraStack::Layer& layer, LayerProperties* properties);
    FormatFailure ReadKept(const QString& name, QByteArray* bytes);
    FormatFailure KeepOthers();
    FormatFailure TooLarge(const QSize& size) const;

    const FormatLimits& m_Limits;
    const FileProgress& m_Progress;
    OraArchiveReader m_Archive;
    OraStack m_Stack;
    OraContent m_Content;
    QSet<QString> m_Used;      ///< entries that something known refers to
    qint64 m_LayerBytes = 0;   ///< that all images will need
    qint64 m_DoneBytes = 0;    ///< of them, for the progress
    qint64 m_KeptBytes = 0;    ///< that are carried along unread
    QByteArray m_LayerProfile; ///< of the first layer that brings one
    QString m_ProfileProblem;
    QHash<QString, QImage> m_Textures; ///< that were read, by their entries; null for lost ones
    QStringList m_LostTextures;
};
