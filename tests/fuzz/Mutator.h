#pragma once

#include <QByteArray>
#include <QRandomGenerator>

/// Damages files at random, the same way for the same seed.
class Mutator
{
public:
    explicit Mutator(quint32 seed) : m_Random(seed) {}

    /// One to four small damages; most of them near the begin, where the headers are.
    QByteArray Damage(const QByteArray& bytes);

    /// The same for a PNG file, with check sums that are right again: so that what lies behind them is
    /// reached.
    QByteArray DamagePngBehindItsSums(const QByteArray& bytes);

private:
    int Place(const QByteArray& bytes);
    void DamageOnce(QByteArray& bytes);

    QRandomGenerator m_Random;
};
