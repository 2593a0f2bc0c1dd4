#include "resource/ResourceFolder.h"
#include "resource/Theme.h"
#include "resource/ThemeNames.h"
#include "support/TestRegistry.h"
#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPalette>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

namespace {
double Linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color)
{
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

/// The contrast ratio of the Web Content Accessibility Guidelines, 1 to 21.
double Contrast(const QColor& one, const QColor& other)
{
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

int s_warnings = 0;

void CountWarnings(QtMsgType type, const QMessageLogContext&, const QString&)
{
    if (type != QtDebugMsg && type != QtInfoMsg) ++s_warnings;
}

QStringList Drawings(const QString& filter)
{
    return QDir(ZK_THEME_SOURCES).entryList({filter}, QDir::Files);
}
} // namespace

class TestTheme : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void textStandsOutFromItsGround_data();
    void textStandsOutFromItsGround();
    void everyDrawingIsRenderedForBothLooks_data();
    void everyDrawingIsRenderedForBothLooks();
    void iconsTakeTheInkOfTheLook_data();
    void iconsTakeTheInkOfTheLook();
    void cursorsShowOnAnyGround_data();
    void cursorsShowOnAnyGround();
    void bucketPoursFromItsHotSpot();
    void applySetsPicturesPaletteAndStyle_data();
    void applySetsPicturesPaletteAndStyle();
    void styleNamesOnlyKnownColorsAndPictures();
    void programHasAPictureInAllSizes();
};

void TestTheme::cleanup()
{
    qApp->setStyleSheet(QString());
    QDir::setSearchPaths("theme", {});
}

void TestTheme::textStandsOutFromItsGround_data()
{
    QTest::addColumn<QColor>("words");
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<double>("least");
    for (const ThemeTokens* tokens : {&DarkTokens, &LightTokens}) {
        const auto row = [&](const char* name, const QColor& words, const QColor& ground, double least) {
            QTest::addRow("%s, %s", tokens->name, name) << words << ground << least;
        };
        row("text on window", tokens->text, tokens->window, 4.5);
        row("text on panel", tokens->text, tokens->panel, 4.5);
        row("text on raised", tokens->text, tokens->raised, 4.5);
        row("text on selection", tokens->text, Theme::Selection(*tokens), 4.5);
        row("dim text on window", tokens->dimText, tokens->window, 4.5);
        row("dim text on panel", tokens->dimText, tokens->panel, 4.5);
        row("dim text on raised", tokens->dimText, tokens->raised, 4.5);
        row("danger on panel", tokens->danger, tokens->panel, 4.5);
        row("danger on raised", tokens->danger, tokens->raised, 4.5);
        row("link on panel", tokens->accent, tokens->panel, 4.5);
        row("focus ring on raised", tokens->accent, tokens->raised, 3.0);
    }
}

void TestTheme::textStandsOutFromItsGround()
{
    QFETCH(QColor, words);
    QFETCH(QColor, ground);
    QFETCH(double, least);
    const double contrast = Contrast(words, ground);
    QVERIFY2(contrast >= least, qPrintable(QString::number(contrast)));
}

void TestTheme::everyDrawingIsRenderedForBothLooks_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& file : Drawings("*.svg")) {
        QTest::newRow(qPrintable(file)) << file.chopped(4);
    }
}

void TestTheme::everyDrawingIsRenderedForBothLooks()
{
    QFETCH(QString, name);
    const bool isCursor = ThemeNames::IsCursor(name);
    for (const char* look : {"dark", "light"}) {
        const QString base = QString("%1/theme/%2/%3").arg(ResourceFolder::Path(), look, name);
        const auto hasSize = [&](const QString& ending, int pixels) {
            return QImage(base + ending + ".png").size() == QSize(pixels, pixels) &&
                   QImage(base + ending + "@2x.png").size() == 2 * QSize(pixels, pixels);
        };
        QVERIFY(hasSize("", 24));
        QCOMPARE(hasSize("-16", 16), !isCursor);
        QCOMPARE(hasSize("-40", 40), !isCursor);
    }
}

void TestTheme::iconsTakeTheInkOfTheLook_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& file : Drawings("*.svg")) {
        if (!ThemeNames::IsCursor(file.chopped(4))) QTest::newRow(qPrintable(file)) << file.chopped(4);
    }
}

void TestTheme::iconsTakeTheInkOfTheLook()
{
    QFETCH(QString, name);
    for (const ThemeTokens* tokens : {&DarkTokens, &LightTokens}) {
        const QImage image(
            QString("%1/theme/%2/%3-40@2x.png").arg(ResourceFolder::Path(), tokens->name, name));
        int inked = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                if (color.alpha() < 255) continue;
                // Only the ink, the accent and what lies between them.
                QVERIFY2(Contrast(color, tokens->panel) >= 3, qPrintable(color.name()));
                inked += color == QColor(tokens->text) ? 1 : 0;
            }
        }
        QVERIFY(inked > 100);
    }
}

void TestTheme::cursorsShowOnAnyGround_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& file : Drawings("*.svg")) {
        if (ThemeNames::IsCursor(file.chopped(4))) QTest::newRow(qPrintable(file)) << file.chopped(4);
    }
}

void TestTheme::cursorsShowOnAnyGround()
{
    QFETCH(QString, name);
    const QImage image(QString("%1/theme/dark/%2@2x.png").arg(ResourceFolder::Path(), name));
    int black = 0;
    int white = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            black += image.pixel(x, y) == qRgb(0, 0, 0) ? 1 : 0;
            white += image.pixel(x, y) == qRgb(255, 255, 255) ? 1 : 0;
        }
    }
    QVERIFY(black > 50);
    QVERIFY(white > 50);
}

void TestTheme::bucketPoursFromItsHotSpot()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    const QPoint hotSpot(3, 17);
    for (const int ratio : {1, 2}) {
        const QImage image = ZKIconHelper::ThemePixmap("theme:bucket_cursor.png", ratio).toImage();
        const QColor tip = image.pixelColor(hotSpot * ratio);
        QVERIFY2(tip.alpha() == 255 && tip.lightness() < 128, qPrintable(tip.name()));
        // Nothing black lies below or left of the tip.
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                const bool isDark = color.alpha() > 200 && color.lightness() < 64;
                const bool isBeyond =
                    x < (hotSpot.x() - 1) * ratio || (x < 6 * ratio && y > (hotSpot.y() + 1) * ratio);
                QVERIFY(!isDark || !isBeyond);
            }
        }
    }
}

void TestTheme::applySetsPicturesPaletteAndStyle_data()
{
    QTest::addColumn<int>("look");
    QTest::newRow("dark") << int(Theme::Look::Dark);
    QTest::newRow("light") << int(Theme::Look::Light);
}

void TestTheme::applySetsPicturesPaletteAndStyle()
{
    QFETCH(int, look);
    s_warnings = 0;
    const QtMessageHandler previous = qInstallMessageHandler(CountWarnings);
    Theme::Apply(static_cast<Theme::Look>(look), ResourceFolder::Path());
    qInstallMessageHandler(previous);
    QCOMPARE(s_warnings, 0);

    const ThemeTokens& tokens = Theme::Tokens();
    QCOMPARE(&tokens, &Theme::Tokens(static_cast<Theme::Look>(look)));
    QCOMPARE(QDir::searchPaths("theme"), QStringList({ResourceFolder::Path() + "/theme/" + tokens.name}));
    QVERIFY(!ZKIconHelper::DisabledIcon(QString("theme:tool-bar-bucket.png")).isNull());
    const QPalette palette = QApplication::palette();
    QCOMPARE(palette.color(QPalette::Window), QColor(tokens.panel));
    QCOMPARE(palette.color(QPalette::Dark), QColor(tokens.window));
    QCOMPARE(palette.color(QPalette::WindowText), QColor(tokens.text));
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::WindowText).alpha(), 255);
    QVERIFY(palette.color(QPalette::Disabled, QPalette::WindowText) != QColor(tokens.text));
    QVERIFY(!qApp->styleSheet().isEmpty());
}

void TestTheme::styleNamesOnlyKnownColorsAndPictures()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    const QString style = qApp->styleSheet();
    QVERIFY(!style.section("*/", 1).contains('@'));
    const QRegularExpression url("url\\(([^)]*)\\)");
    int pictures = 0;
    for (auto match = url.globalMatch(style); match.hasNext(); ++pictures) {
        const QString name = match.next().captured(1);
        QVERIFY2(QFile::exists(name), qPrintable(name));
    }
    QVERIFY(pictures > 5);
}

void TestTheme::programHasAPictureInAllSizes()
{
    const QList<QSize> sizes = Theme::ApplicationIcon(ResourceFolder::Path()).availableSizes();
    for (const int size : {16, 32, 48, 128, 256})
        QVERIFY(sizes.contains({size, size}));
}

ZK_REGISTER_TEST(tst_theme, TestTheme)
#include "tst_theme.moc"
