#include "HeaderText.h"

#include <QDir>
#include <QRegularExpression>

namespace {
QString WithoutComments(QString text)
{
    static const QRegularExpression comment("//[^\n]*|/\\*.*?\\*/",
                                            QRegularExpression::DotMatchesEverythingOption);
    return text.remove(comment);
}

/// The text from the brace at `open` to the one that closes it.
QString Braced(const QString& text, int open)
{
    int depth = 0;
    for (int i = open; i < text.size(); ++i) {
        if (text.at(i) == '{') ++depth;
        if (text.at(i) == '}' && --depth == 0) return text.mid(open, i - open + 1);
    }
    return QString();
}

QStringList BasesIn(const QString& derivation)
{
    static const QRegularExpression base("public\\s+(?:virtual\\s+)?(\\w+)");
    QStringList bases;
    QRegularExpressionMatchIterator found = base.globalMatch(derivation);
    while (found.hasNext())
        bases << found.next().captured(1);
    return bases;
}

bool Contains(const QString& text, const QString& name)
{
    const bool isCalled = name.endsWith("()") && !name.startsWith("operator");
    const QString bare = isCalled ? name.chopped(2) : name;
    const QString ending = isCalled ? "\\s*\\(" : (bare.at(bare.size() - 1).isLetterOrNumber() ? "\\b" : "");
    const QRegularExpression use("(?<![\\w~])" + QRegularExpression::escape(bare) + ending);
    return text.contains(use);
}
} // namespace

HeaderText::HeaderText(const QString& folder)
{
    const QFileInfoList headers = QDir(folder).entryInfoList({"*.h"}, QDir::Files, QDir::Name);
    for (const QFileInfo& header : headers) {
        QFile file(header.filePath());
        if (file.open(QIODevice::ReadOnly)) m_Text += WithoutComments(QString::fromUtf8(file.readAll()));
    }
}

bool HeaderText::Declares(const QString& className, const QString& name) const
{
    if (className == "-") return Contains(m_Text, name);
    QStringList bases;
    if (Contains(BodyOf(className, &bases), name)) return true;
    for (const QString& base : bases) {
        if (Declares(base, name)) return true;
    }
    return false;
}

QString HeaderText::BodyOf(const QString& className, QStringList* bases) const
{
    const QRegularExpression head("\\b(?:class|struct|union|namespace)\\s+(?:ZK_HOST_EXPORT\\s+)?" +
                                  QRegularExpression::escape(className) + "\\b([^;{(>]*)\\{");
    const QRegularExpressionMatch found = head.match(m_Text);
    if (!found.hasMatch()) return QString();
    *bases = BasesIn(found.captured(1));
    return Braced(m_Text, found.capturedEnd() - 1);
}
