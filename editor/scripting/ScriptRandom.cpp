#include "scripting/ScriptRandom.h"

#include <algorithm>

ScriptRandom::ScriptRandom(int seed) : m_Generator(static_cast<quint32>(seed)) {}

double ScriptRandom::next()
{
    return m_Generator.generateDouble();
}

int ScriptRandom::integer(int low, int high)
{
    const auto [from, to] = std::minmax(low, high);
    const qint64 count = qint64(to) - from + 1;
    return static_cast<int>(from + static_cast<qint64>(next() * static_cast<double>(count)));
}

QJSValue ScriptRandom::pick(const QJSValue& list)
{
    const int length = list.property(QStringLiteral("length")).toInt();
    if (length <= 0) return QJSValue();
    return list.property(static_cast<quint32>(integer(0, length - 1)));
}
