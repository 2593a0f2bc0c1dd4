#include "resource/Theme.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPalette>
#include <QPixmapCache>
#include <QStyleFactory>

#include <utility>

namespace {
constexpr const char* HasStyle = "zkHasStyle";

Theme::Look s_look = Theme::Look::Dark;

QColor Mix(const QColor& one, const QColor& other, double share)
{
    const auto channel = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return QColor(channel(one.red(), other.red()), channel(one.green(), other.green()),
                  channel(one.blue(), other.blue()));
}

QString ReadText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("Can't read %s", qPrintable(path));
        return QString();
    }
    return QString::fromUtf8(file.readAll());
}
} // namespace

void Theme::Apply(Look look, const QString& resources)
{
    // A new style would make all widgets anew; it is the same for every look.
    if (!qApp->property(HasStyle).toBool()) {
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        qApp->setProperty(HasStyle, true);
    }
    s_look = look;
    const ThemeTokens& tokens = Tokens(look);
    QDir::setSearchPaths("theme", {resources + "/theme/" + tokens.name});
    // Pictures of the style sheet are kept by names that mean others now.
    QPixmapCache::clear();
    QApplication::setPalette(Palette(tokens));
    qApp->setStyleSheet(StyleSheet(tokens, ReadText(resources + "/style.qss")));
    QApplication::setWindowIcon(ApplicationIcon(resources));
}

Theme::Look Theme::Current()
{
    return s_look;
}

const ThemeTokens& Theme::Tokens()
{
    return Tokens(s_look);
}

const ThemeTokens& Theme::Tokens(Look look)
{
    return look == Look::Dark ? DarkTokens : LightTokens;
}

QColor Theme::Selection(const ThemeTokens& tokens)
{
    constexpr double accentShare = 0.35;
    return Mix(tokens.accent, tokens.panel, accentShare);
}

QPalette Theme::Palette(const ThemeTokens& tokens)
{
    const QColor panel = tokens.panel;
    const QColor raised = tokens.raised;
    const QColor text = tokens.text;
    QPalette palette(raised, panel);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Light, Mix(raised, Qt::white, 0.9));
    palette.setColor(QPalette::Mid, tokens.line);
    palette.setColor(QPalette::Dark, tokens.window);
    palette.setColor(QPalette::Base, raised);
    palette.setColor(QPalette::AlternateBase, Mix(raised, panel, 0.5));
    palette.setColor(QPalette::Midlight, Mix(raised, panel, 0.5));
    palette.setColor(QPalette::Shadow, tokens.line);
    palette.setColor(QPalette::ToolTipBase, raised);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::BrightText, tokens.danger);
    palette.setColor(QPalette::Link, tokens.accent);
    palette.setColor(QPalette::LinkVisited, tokens.accent);
    palette.setColor(QPalette::PlaceholderText, tokens.dimText);
    palette.setColor(QPalette::Highlight, Selection(tokens));
    palette.setColor(QPalette::HighlightedText, text);
    const QColor off = Mix(text, panel, 0.4);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, off);
    }
    return palette;
}

QString Theme::StyleSheet(const ThemeTokens& tokens, QString style)
{
    const QPalette palette = Palette(tokens);
    const std::pair<const char*, QString> words[] = {
        {"@window", tokens.window},
        {"@panel", tokens.panel},
        {"@raised", tokens.raised},
        {"@hover", Mix(tokens.raised, tokens.text, 0.9).name()},
        {"@filled", Mix(tokens.text, tokens.panel, 0.25).name()},
        {"@line", tokens.line},
        {"@text", tokens.text},
        {"@dimText", tokens.dimText},
        {"@off", palette.color(QPalette::Disabled, QPalette::Text).name()},
        {"@accent", tokens.accent},
        {"@selection", Selection(tokens).name()},
        {"@danger", tokens.danger},
    };
    for (const auto& [word, color] : words) {
        style.replace(word, color);
    }
    return style;
}

QIcon Theme::ApplicationIcon(const QString& resources)
{
    QIcon icon;
    const QFileInfoList files = QDir(resources + "/app").entryInfoList({"*.png"}, QDir::Files);
    for (const QFileInfo& file : files) {
        icon.addFile(file.absoluteFilePath());
    }
    return icon;
}
