#pragma once

#include <QByteArray>

/// A color profile: the ICC blob as files carry it. A value: cheap to copy, equal when the bytes are.
class ZKCMSProfile
{
public:
    /// No profile: the picture counts as sRGB.
    ZKCMSProfile() = default;

    explicit ZKCMSProfile(const QByteArray& icc) : m_Data(icc) {}

    /// The ICC blob; empty without a profile.
    const QByteArray& GetData() const { return m_Data; }

    bool IsNull() const { return m_Data.isEmpty(); }

    friend bool operator==(const ZKCMSProfile& a, const ZKCMSProfile& b) { return a.m_Data == b.m_Data; }

    friend bool operator!=(const ZKCMSProfile& a, const ZKCMSProfile& b) { return !(a == b); }

private:
    QByteArray m_Data;
};
