#pragma once

#include "formats/PictureFile.h"

#include <QString>

/// How a step of reading or writing ended. `why` is one or two sentences for the user about the reason, where
/// there is more to tell than the error itself says.
struct FormatFailure
{
    PictureFile::Error error = PictureFile::Error::None;
    QString why;

    bool IsNone() const { return error == PictureFile::Error::None; }
};
