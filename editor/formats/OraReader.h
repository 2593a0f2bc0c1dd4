#pragma once

#include "formats/FileProgress.h"
#include "formats/FormatFailure.h"
#include "formats/FormatLimits.h"
#include "formats/OraArchiveReader.h"
#include "formats/OraContent.h"
#include "formats/OraStack.h"

#include <QCoreApplication>
#include <QSet>

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
    QByteArray m_LayerProfile; ///< of the first layer that brings one
    QString m_ProfileProblem;
};
