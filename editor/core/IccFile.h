#pragma once

#include "image/ZKCMSProfile.h"

#include <QString>
#include <QStringList>

/// Color profiles as files. Any thread.
namespace IccFile {
/// The files that stand in the person's folders for profiles, then those in the system's, each sorted by
/// name; absolute. What is in them isn't looked at.
QStringList All();

/// An RGB profile; null when the file holds none.
/// @param message  then why, in words for people
ZKCMSProfile Read(const QString& file, QString* message);

/// Why the profile is none for an RGB picture, in words for people that go on after its name; empty for one
/// that is.
QString WhyUnusable(const ZKCMSProfile& profile);
} // namespace IccFile
