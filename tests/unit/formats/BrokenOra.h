#pragma once

#include "support/ZipBytes.h"

#include <QByteArray>
#include <QVector>

/// OpenRaster files that nobody should trust.
namespace BrokenOra {
struct File
{
    QByteArray name; ///< what is wrong with it
    QByteArray bytes;
};

/// A file that is all right, with a layer, its mask, a profile and a part that nobody knows.
QVector<ZipBytes::Entry> GoodEntries();

/// The same with another list of layers.
QByteArray WithStack(const QByteArray& xml);

/// A list of layers around this one.
QByteArray StackOf(const QByteArray& layers);

/// Each of them has to be refused.
QVector<File> Files();
} // namespace BrokenOra
