// Draws the SVG pictures of the program as the PNG files that it loads.
//
//   iconrenderer theme    OUT FILE.svg...   OUT/{dark,light}/NAME[-SIZE][@2x].png
//   iconrenderer patterns OUT FILE.svg...   OUT/NAME.png in the size that the picture names
//   iconrenderer app      OUT FILE.svg...   OUT/NAME-SIZE.png
//
// A picture of the theme is drawn in the ink and the accent of the light look, and stands in a box of 24.

#include "resource/ThemeNames.h"
#include "resource/ThemeTokens.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

namespace {
struct Size
{
    int pixels;
    const char* ending;
    const char* stroke; // in the box of 24: small pictures would grow pale with lines that shrink along
};

constexpr char DrawnStroke[] = "stroke-width=\"1.5\"";
constexpr Size PlainSize = {24, "", DrawnStroke};
constexpr Size FurtherIconSizes[] = {{16, "-16", "stroke-width=\"1.9\""}, {40, "-40", DrawnStroke}};
constexpr int ApplicationSizes[] = {16, 32, 48, 128, 256};

bool Render(QSvgRenderer& renderer, const QSize& size, const QString& file)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32).save(file);
}

bool RenderThemePicture(const ThemeTokens& tokens, QByteArray svg, const QString& base)
{
    svg.replace(LightTokens.text, tokens.text);
    svg.replace(LightTokens.accent, tokens.accent);
    const auto renderSize = [&](const Size& size) {
        QSvgRenderer renderer(QByteArray(svg).replace(DrawnStroke, size.stroke));
        const QString file = base + size.ending;
        return renderer.isValid() && Render(renderer, {size.pixels, size.pixels}, file + ".png") &&
               Render(renderer, {2 * size.pixels, 2 * size.pixels}, file + "@2x.png");
    };
    bool done = renderSize(PlainSize);
    if (ThemeNames::IsCursor(QFileInfo(base).fileName())) return done;
    for (const Size& size : FurtherIconSizes) {
        done = renderSize(size) && done;
    }
    return done;
}

bool RenderFile(const QString& kind, const QString& out, const QString& name, const QByteArray& svg)
{
    bool done = true;
    if (kind == "theme") {
        for (const ThemeTokens* tokens : {&DarkTokens, &LightTokens}) {
            const QString folder = out + '/' + tokens->name;
            done = QDir().mkpath(folder) && RenderThemePicture(*tokens, svg, folder + '/' + name) && done;
        }
        return done;
    }
    QSvgRenderer renderer(svg);
    if (!renderer.isValid() || !QDir().mkpath(out)) return false;
    if (kind == "patterns") return Render(renderer, renderer.defaultSize(), out + '/' + name + ".png");
    for (const int size : ApplicationSizes) {
        done = Render(renderer, {size, size}, QString("%1/%2-%3.png").arg(out, name).arg(size)) && done;
    }
    return done;
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: iconrenderer theme|patterns|app OUT FILE.svg...\n");
        return 2;
    }
    for (const QString& path : arguments.mid(3)) {
        QFile file(path);
        const bool done =
            file.open(QIODevice::ReadOnly) &&
            RenderFile(arguments[1], arguments[2], QFileInfo(path).completeBaseName(), file.readAll());
        if (!done) {
            std::fprintf(stderr, "iconrenderer: can't draw %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
