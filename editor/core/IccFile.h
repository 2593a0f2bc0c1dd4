#pragma once

#include "image/ZKCMSProfile.h"

#include <QString>
#include <QStringList>

/// Color profiles as files. Any thread.
namespace IccFile {
/// The person's folders for profiles, then the system's, whether they are there or not.
QStringList Folders();

/// The files with the endings of profiles that stand in the folders and below them, sorted by name in each;
/// absolute, none twice. What is in them isn't looked at; folders that aren't there have none.
QStringList In(const QStringList& folders);

/// An RGB profile; null when the file holds none.
/// @param message  then why, in words for people
ZKCMSProfile Read(const QString& file, QString* message);

/// Why the profile is none for an RGB picture, in words for people that go on after its name; empty for one
/// that is.
QString WhyUnusable(const ZKCMSProfile& profile);
} // namespace IccFile
