#pragma once

#include "formats/OraContent.h"

#include <QString>

/// A document that a child process saves while it dies, and the process that does so.
namespace DyingSave {
/// Three layers of noise, the first of this name, other pixels for another name.
OraContent Content(const QString& name);
} // namespace DyingSave
