#pragma once

#include "app/CommandLine.h"
#include "formats/PictureFile.h"

#include <QCoreApplication>

/// The road from a picture to a file of another format without a window: what `--export` asks for. Blocks
/// until it is done; main thread only.
class ZK_EDITOR_EXPORT PictureExport
{
    Q_DECLARE_TR_FUNCTIONS(PictureExport)

public:
    /// Reads the one file of the command line, or makes the empty picture, and writes it. An older file of
    /// that name is replaced, and stays as it was when something fails.
    /// @param losses  takes what the new file could not hold, in sentences; empty when it holds all
    static PictureFile::Outcome Run(const CommandLine& line, QString* losses);
};
