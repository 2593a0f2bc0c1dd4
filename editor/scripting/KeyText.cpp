#include "scripting/KeyText.h"

QString KeyText::OfKey(int key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return {};
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return QStringLiteral("\r");
    case Qt::Key_Tab: return QStringLiteral("\t");
    case Qt::Key_Backspace: return QStringLiteral("\b");
    case Qt::Key_Escape: return QStringLiteral("\x1b");
    case Qt::Key_Delete: return QStringLiteral("\x7f");
    default: break;
    }
    // Printable keys have the number of their character, letters that of the capital.
    if (key < Qt::Key_Space || key > 0xFFFF) return {};
    const QChar character(key);
    return (modifiers & Qt::ShiftModifier) ? character : character.toLower();
}

KeyText::Stroke KeyText::OfCharacter(QChar character)
{
    if (character == QLatin1Char('\n') || character == QLatin1Char('\r')) return {Qt::Key_Return, {}};
    if (character == QLatin1Char('\t')) return {Qt::Key_Tab, {}};
    const bool isCapital = character.isLetter() && character.isUpper();
    return {character.toUpper().unicode(), isCapital ? Qt::ShiftModifier : Qt::NoModifier};
}
