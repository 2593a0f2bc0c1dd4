#include "scripting/WidgetSearch.h"

#include "scripting/ScriptError.h"
#include "scripting/WidgetReading.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace {
QString TitleOf(const QWidget* widget)
{
    return widget->windowTitle().remove(QStringLiteral("[*]"));
}

bool Matches(const QWidget* widget, const QString& name)
{
    return widget->objectName() == name || widget->inherits(name.toLatin1().constData()) ||
           TitleOf(widget) == name;
}

/// The widget itself is not among them.
QList<QWidget*> MatchesBelow(const QWidget* top, const QString& name)
{
    QList<QWidget*> matches;
    for (QWidget* widget : top->findChildren<QWidget*>()) {
        if (Matches(widget, name)) matches.append(widget);
    }
    return matches;
}

QList<QWidget*> MatchesEverywhere(const QString& name)
{
    QList<QWidget*> matches;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        // A window that has a parent is found below it.
        if (window->parentWidget()) continue;
        if (Matches(window, name)) matches.append(window);
        matches.append(MatchesBelow(window, name));
    }
    return matches;
}

/// An object name is given to one widget: where it fits, classes and titles that read alike don't count.
QList<QWidget*> PreferNames(const QList<QWidget*>& found, const QString& name)
{
    QList<QWidget*> named;
    std::copy_if(found.begin(), found.end(), std::back_inserter(named),
                 [&](const QWidget* widget) { return widget->objectName() == name; });
    return named.isEmpty() ? found : named;
}

QString Quoted(const QString& path)
{
    return QStringLiteral("\"%1\"").arg(path);
}

void AppendTree(QString& text, const QWidget* widget, int depth)
{
    text += QString(depth * 2, ' ') + WidgetReading::Line(widget) + '\n';
    for (const QObject* child : widget->children()) {
        if (child->isWidgetType()) AppendTree(text, static_cast<const QWidget*>(child), depth + 1);
    }
}
} // namespace

QList<QWidget*> WidgetSearch::FindAll(const QString& path, QWidget* below)
{
    const QStringList names = path.split('/', Qt::SkipEmptyParts);
    QList<QWidget*> found;
    if (below) found.append(below);
    bool isFirst = !below;
    for (const QString& name : names) {
        QList<QWidget*> next = isFirst ? MatchesEverywhere(name) : QList<QWidget*>();
        for (const QWidget* widget : qAsConst(found)) {
            for (QWidget* match : MatchesBelow(widget, name)) {
                if (!next.contains(match)) next.append(match);
            }
        }
        found = PreferNames(next, name);
        isFirst = false;
    }
    if (names.isEmpty()) found.clear();
    std::stable_partition(found.begin(), found.end(),
                          [](const QWidget* widget) { return widget->isVisible(); });
    return found;
}

QWidget* WidgetSearch::Find(const QString& path, QWidget* below)
{
    const QList<QWidget*> found = FindAll(path, below);
    if (found.isEmpty()) throw ScriptError(QStringLiteral("There is no widget %1.").arg(Quoted(path)));

    const auto visible =
        std::count_if(found.begin(), found.end(), [](const QWidget* widget) { return widget->isVisible(); });
    const auto candidates = visible > 0 ? static_cast<int>(visible) : found.size();
    if (candidates == 1) return found.first();

    QStringList lines;
    for (int i = 0; i < std::min(candidates, 5); ++i)
        lines.append(QStringLiteral("  ") + WidgetReading::Path(found[i]));
    throw ScriptError(QStringLiteral("%1 names %2 widgets, among them\n%3")
                          .arg(Quoted(path), QString::number(candidates), lines.join('\n')));
}

QString WidgetSearch::Tree(QWidget* top)
{
    QString text;
    if (top) {
        AppendTree(text, top, 0);
        return text;
    }
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->parentWidget()) AppendTree(text, window, 0);
    }
    return text;
}
