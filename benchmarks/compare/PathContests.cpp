#include "PathContests.h"

#include "Contest.h"

#include "image/LXBlend.h"
#include "image/LXImage.h"

#include <QBrush>
#include <QConicalGradient>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>

#include <cairo.h>

#include <cmath>
#include <memory>
#include <random>

namespace {
struct Sheet
{
    QImage painted;
    LXImage32 tiles;
};

std::shared_ptr<Sheet> MakeSheet(int side)
{
    auto sheet = std::make_shared<Sheet>();
    sheet->painted = QImage(side, side, QImage::Format_ARGB32);
    sheet->painted.fill(0xFF203040);
    return sheet;
}

/// Each run of ours fills a picture whose tiles are all its own, as cairo's is.
void Renew(Sheet& sheet)
{
    sheet.tiles = LXImage32(sheet.painted.width(), sheet.painted.height());
    sheet.tiles.Fill(LXRGBA32i(0xFF203040));
    for (LXTilePointer& tile : sheet.tiles.m_Tiles) {
        DetachTile(tile);
    }
}

Contest MakeContest(const QString& name, double goal, const std::shared_ptr<Sheet>& sheet)
{
    Contest contest;
    contest.name = name;
    contest.goal = goal;
    contest.pixels = qint64(sheet->painted.width()) * sheet->painted.height();
    contest.bytes = contest.pixels * 4;
    contest.prepare = [sheet] { Renew(*sheet); };
    return contest;
}

void FillByCairo(QImage& image, const QPolygonF& polygon, Qt::FillRule rule, int top, int bottom)
{
    uchar* const bits = image.bits() + qsizetype(top) * image.bytesPerLine();
    cairo_surface_t* const surface = cairo_image_surface_create_for_data(
        bits, CAIRO_FORMAT_ARGB32, image.width(), bottom - top, static_cast<int>(image.bytesPerLine()));
    cairo_t* const cairo = cairo_create(surface);
    cairo_translate(cairo, 0, -top);
    cairo_set_antialias(cairo, CAIRO_ANTIALIAS_FAST);
    cairo_set_fill_rule(cairo, rule == Qt::OddEvenFill ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_set_source_rgb(cairo, 0.8, 0.2, 0.1);
    for (const QPointF& point : polygon) {
        cairo_line_to(cairo, point.x(), point.y());
    }
    cairo_fill(cairo);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
}

void RunFill(const QString& name, int side, const QPolygonF& polygon, Qt::FillRule rule, int threads)
{
    const auto sheet = MakeSheet(side);
    Contest contest = MakeContest(name, 1.0, sheet);
    QPainterPath path;
    path.addPolygon(polygon);
    path.setFillRule(rule);
    contest.ours = [=] {
        FillPath(sheet->tiles, static_cast<int>(BlendMode::Source), path, QBrush(QColor(204, 51, 25)));
    };
    uchar* const detached = sheet->painted.bits();
    Q_UNUSED(detached)
    contest.other = [=](int count) {
        Contests::InBands(count, side, [&](int top, int bottom) {
            FillByCairo(sheet->painted, polygon, rule, top, bottom);
        });
    };
    Contests::Run(contest, threads);
}

void RunGradient(const QString& name, double goal, int side, QGradient gradient, int threads)
{
    gradient.setColorAt(0, QColor(250, 10, 80, 255));
    gradient.setColorAt(0.4, QColor(20, 200, 100, 90));
    gradient.setColorAt(1, QColor(255, 255, 255, 200));
    const auto sheet = MakeSheet(side);
    const QBrush brush(gradient);
    Contest contest = MakeContest(name, goal, sheet);
    QPainterPath path;
    path.addRect(0, 0, side, side);
    contest.ours = [=] { FillPath(sheet->tiles, static_cast<int>(BlendMode::Source), path, brush); };
    uchar* const bits = sheet->painted.bits();
    contest.other = [=](int count) {
        Contests::InBands(count, side, [&](int top, int bottom) {
            QImage band(bits + qsizetype(top) * sheet->painted.bytesPerLine(), side, bottom - top,
                        QImage::Format_ARGB32);
            QPainter painter(&band);
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.translate(0, -top);
            painter.fillRect(0, top, side, bottom - top, brush);
        });
    };
    Contests::Run(contest, threads);
}

QPolygonF Star(int side)
{
    constexpr int corners = 1000;
    QPolygonF star;
    for (int i = 0; i < corners; ++i) {
        const double radius = side * (i % 2 == 0 ? 0.49 : 0.2);
        const double angle = 2 * M_PI * i / corners;
        star << QPointF(side / 2.0 + radius * std::cos(angle), side / 2.0 + radius * std::sin(angle));
    }
    return star;
}

QPolygonF Scribble(int side)
{
    std::mt19937 random(9);
    QPolygonF scribble;
    for (int i = 0; i < 300; ++i) {
        scribble << QPointF(random() % 100000 * (side / 100000.0), random() % 100000 * (side / 100000.0));
    }
    return scribble;
}
} // namespace

void PathContests::Run(int side, int threads)
{
    RunFill(QStringLiteral("path fill, star of 1000 corners"), side, Star(side), Qt::WindingFill, threads);
    RunFill(QStringLiteral("path fill, scribble, odd even"), side, Scribble(side), Qt::OddEvenFill, threads);
    RunFill(QStringLiteral("path fill, scribble, winding"), side, Scribble(side), Qt::WindingFill, threads);
    const double middle = side / 2.0;
    RunGradient(QStringLiteral("gradient, linear"), 2, side, QLinearGradient(0, 0, side, middle), threads);
    RunGradient(QStringLiteral("gradient, radial"), 2, side, QRadialGradient(middle, middle, middle),
                threads);
    RunGradient(QStringLiteral("gradient, conical"), 4, side, QConicalGradient(middle, middle, 30), threads);
}
