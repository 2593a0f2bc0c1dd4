#pragma once

#include "ZKHostExport.h"

#include <QByteArray>
#include <QString>

/// A color profile: the ICC blob as files carry it. A value: cheap to copy, equal when the bytes are.
///
/// Any bytes may be held, so that nothing is lost on the way; what they are good for is asked. The answers
/// are read from the bytes each time. Any thread.
class ZK_HOST_EXPORT ZKCMSProfile
{
public:
    /// What the colors are that a profile gives a meaning to.
    enum class Kind
    {
        None,    ///< there is no profile
        Damaged, ///< no profile, or one that can't be used
        Rgb,
        Gray,
        Cmyk,
        Other,
    };

    /// No profile: the picture counts as sRGB.
    ZKCMSProfile() = default;

    explicit ZKCMSProfile(const QByteArray& icc) : m_Data(icc) {}

    /// The same bytes each time.
    static ZKCMSProfile SRGB();

    /// The ICC blob; empty without a profile.
    const QByteArray& GetData() const { return m_Data; }

    bool IsNull() const { return m_Data.isEmpty(); }

    Kind GetKind() const;

    /// Whether it can be the profile of a picture: RGB, and whole enough to read colors by. Not without one.
    bool IsValid() const { return GetKind() == Kind::Rgb; }

    /// Whether colors can be brought into it too, as a screen's or a working space's; those of cameras and
    /// scanners often only tell what their colors are.
    bool IsTarget() const;

    /// The name that the profile gives itself, cut down to 100 characters; empty without one.
    QString GetDescription() const;

    friend bool operator==(const ZKCMSProfile& a, const ZKCMSProfile& b) { return a.m_Data == b.m_Data; }

    friend bool operator!=(const ZKCMSProfile& a, const ZKCMSProfile& b) { return !(a == b); }

private:
    QByteArray m_Data;
};
