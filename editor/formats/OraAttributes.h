#pragma once

#include <QString>
#include <QTransform>
#include <QXmlStreamAttributes>

class QXmlStreamWriter;

/// The attributes of one of our own elements. A value that isn't there leaves what it would set alone; one
/// that can't be read is damage, which IsSound() tells at the end. Any thread.
class OraAttributes
{
public:
    explicit OraAttributes(const QXmlStreamAttributes& attributes) : m_Attributes(attributes) {}

    /// Empty for an attribute that isn't there.
    QString Text(const char* name) const { return m_Attributes.value(QLatin1String(name)).toString(); }

    bool Is(const char* name, QLatin1String word) const
    {
        return m_Attributes.value(QLatin1String(name)) == word;
    }

    /// Brought to the nearest value of the range.
    void Read(const char* name, double least, double most, double* value);
    void Read(const char* name, int least, int most, int* value);

    /// One that flattens everything is left out.
    void ReadMatrix(const char* name, QTransform* transform);

    bool IsSound() const { return m_IsSound; }

private:
    QXmlStreamAttributes m_Attributes;
    bool m_IsSound = true;
};

/// The way back: attributes of the element that a writer is at. Any thread.
namespace OraWriting {
void Put(QXmlStreamWriter& xml, const char* name, const QString& value);
/// Nothing for the identity.
void PutMatrix(QXmlStreamWriter& xml, const char* name, const QTransform& transform);

/// The shortest text that comes back as the same number; 0 for what is none, as a transform may leave it.
QString NumberText(double number);
} // namespace OraWriting
