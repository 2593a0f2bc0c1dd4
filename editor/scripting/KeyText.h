#pragma once

#include <QString>

/// What a keyboard with the common western layout has on its keys. Any thread.
namespace KeyText {
struct Stroke
{
    int key = 0; ///< a `Qt::Key`
    Qt::KeyboardModifiers modifiers;
};

/// The text that pressing the key brings; empty with Ctrl, Alt or Meta down and for keys without one.
QString OfKey(int key, Qt::KeyboardModifiers modifiers);

/// How a character is typed; a line feed is the Return key.
Stroke OfCharacter(QChar character);
} // namespace KeyText
