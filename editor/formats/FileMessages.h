#pragma once

#include "formats/FormatFailure.h"
#include "formats/FormatLimits.h"
#include "formats/PictureFile.h"

#include <QCoreApplication>

/// What the user is told about a file that can't be opened or saved: what happened, to which file, and what
/// to do. Any thread.
class FileMessages
{
    Q_DECLARE_TR_FUNCTIONS(FileMessages)

public:
    explicit FileMessages(const QString& path);

    /// Empty for None and Cancelled.
    QString OfReading(PictureFile::Error error) const;
    /// The failure's own reason where it has one.
    QString OfReading(const FormatFailure& failure) const;
    QString OfEmptyFile() const;
    QString OfTooLarge(const QSize& size, const FormatLimits& limits) const;

    /// @param reason  the system's words; may be empty
    QString OfWriting(PictureFile::Error error, const QString& reason) const;
    QString OfFormatTooSmall(const QString& formatName, int maxSide) const;
    /// Of a list of layers that could not be read again.
    QString OfTooLongList() const;

private:
    QString NotOpened(const QString& why) const;
    QString NotSaved(const QString& why) const;
    QString WhyNotCreated(const QString& reason) const;

    QString m_Path; ///< as the user writes it
    QString m_Folder;
    bool m_HasFolder;
    bool m_IsFile;
};
