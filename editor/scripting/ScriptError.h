#pragma once

#include <QString>

#include <stdexcept>

/// What a script did wrong, in words for its author. Thrown inside the calls of the script objects, which
/// all end as errors of the script (ScriptObject::Call).
class ScriptError : public std::runtime_error
{
public:
    explicit ScriptError(const QString& message) : std::runtime_error(message.toStdString()) {}
};
