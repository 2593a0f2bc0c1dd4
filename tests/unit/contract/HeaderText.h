#pragma once

#include <QString>
#include <QStringList>

/// The declarations of one floor of host/, as text to look names up in.
class HeaderText
{
public:
    /// Reads every header of the folder, without comments.
    explicit HeaderText(const QString& folder);

    bool IsEmpty() const { return m_Text.isEmpty(); }

    /// Whether the class, or one that it is derived from, declares the name; "-" stands for the whole floor.
    /// @param name  with "()" for what is called, without for what is not
    bool Declares(const QString& className, const QString& name) const;

private:
    /// What stands between the braces of a class, struct, union or namespace of that name.
    QString BodyOf(const QString& className, QStringList* bases) const;

    QString m_Text;
};
