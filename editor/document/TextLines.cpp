#include "document/TextLines.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainterPathStroker>
#include <QRawFont>
#include <QTextLayout>
#include <QTextLine>
#include <QTextOption>
#include <QTransform>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <map>

namespace {
/// In pixels: outlines are exact at every size, and places of letters are kept to a 64th of a pixel.
constexpr int SettingSize = 1024;
/// Wider than any line; more would overflow what text is measured in.
constexpr double EndlessWidth = 8e6;
constexpr double TabWidth = 2.0 * SettingSize;

double SizeOf(const QFont& font)
{
    const double size = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF();
    return size > 0 ? size : 1;
}

QFont SettingFont(const QFont& font, double scale)
{
    QFont setting = font;
    setting.setPixelSize(SettingSize);
    setting.setHintingPreference(QFont::PreferNoHinting);
    setting.setStyleStrategy(QFont::ForceOutline);
    if (font.letterSpacingType() == QFont::AbsoluteSpacing) {
        setting.setLetterSpacing(QFont::AbsoluteSpacing, font.letterSpacing() / scale);
    }
    setting.setWordSpacing(font.wordSpacing() / scale);
    // Lines are drawn as shapes, in one piece under all letters.
    setting.setUnderline(false);
    setting.setStrikeOut(false);
    setting.setOverline(false);
    return setting;
}

std::unique_ptr<QTextLayout> SetLine(const QString& text, const QFont& font)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(TabWidth);
    option.setFlags(QTextOption::IncludeTrailingSpaces);

    auto layout = std::make_unique<QTextLayout>(text, font);
    layout->setTextOption(option);
    layout->beginLayout();
    QTextLine line = layout->createLine();
    line.setLineWidth(EndlessWidth);
    line.setPosition(QPointF(0, 0));
    layout->endLayout();
    return layout;
}

/// As heavy as a bold font is, whatever was asked for.
bool IsBold(const QRawFont& font)
{
    constexpr int weightPlace = 4; // of the class of weight in the table
    constexpr int demiBold = 600;
    const QByteArray table = font.fontTable("OS/2");
    if (table.size() >= weightPlace + 2 &&
        qFromBigEndian<quint16>(table.constData() + weightPlace) >= demiBold)
        return true;
    // A font of many weights has the class of its lightest.
    const QString style = font.styleName();
    const auto isNamed = [&style](const char* name) {
        return style.contains(QLatin1String(name), Qt::CaseInsensitive);
    };
    return isNamed("bold") || isNamed("black") || isNamed("heavy");
}

/// A band along the outline, half of it outside: as wide as letters without a bold font usually get heavier.
QPainterPath BandAlong(const QPainterPath& outline)
{
    QPainterPathStroker stroker;
    stroker.setWidth(SettingSize / 24.0);
    stroker.setJoinStyle(Qt::MiterJoin);
    return stroker.createStroke(outline);
}

bool IsLineEnd(QChar character)
{
    return character == QLatin1Char('\n') || character == QLatin1Char('\r') ||
           character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

} // namespace

TextLines::TextLines(const QString& text, const QFont& font)
    : m_Scale(SizeOf(font) / SettingSize), m_Length(text.size())
{
    const QFont setting = SettingFont(font, m_Scale);
    const QFontMetricsF metrics(setting);
    m_Ascent = metrics.ascent() * m_Scale;
    m_Descent = metrics.descent() * m_Scale;
    m_Spacing = metrics.lineSpacing() * m_Scale;

    m_Letters.setFillRule(Qt::WindingFill);
    m_Thickening.setFillRule(Qt::WindingFill);
    m_Decorations.setFillRule(Qt::WindingFill);
    int start = 0;
    for (int end = 0; end <= text.size(); ++end) {
        if (end < text.size() && !IsLineEnd(text[end])) continue;
        AddLine(text.mid(start, end - start), start, setting);
        const bool isPair =
            end + 1 < text.size() && text[end] == QLatin1Char('\r') && text[end + 1] == QLatin1Char('\n');
        if (isPair) ++end;
        start = end + 1;
    }
    for (const Line& line : m_Lines) {
        AddLetters(line, setting);
        if (line.width > 0) AddDecorations(line, font);
    }
}

TextLines::~TextLines() = default;

void TextLines::AddLine(const QString& text, int start, const QFont& font)
{
    Line line;
    line.start = start;
    line.length = text.size();
    line.baseline = static_cast<double>(m_Lines.size()) * m_Spacing;
    line.layout = SetLine(text, font);
    line.width = line.layout->lineAt(0).naturalTextWidth() * m_Scale;
    line.left = text.isRightToLeft() ? -line.width : 0;
    m_Lines.push_back(std::move(line));
}

void TextLines::AddLetters(const Line& line, const QFont& setting)
{
    const double ascent = line.layout->lineAt(0).ascent();
    const QTransform toLines =
        QTransform::fromTranslate(line.left, line.baseline).scale(m_Scale, m_Scale).translate(0, -ascent);
    const QList<QGlyphRun> runs = line.layout->glyphRuns();
    for (const QGlyphRun& run : runs) {
        const QRawFont font = run.rawFont();
        const bool thickens = setting.bold() && !IsBold(font);
        const QVector<quint32> glyphs = run.glyphIndexes();
        const QVector<QPointF> places = run.positions();
        // Fetching an outline takes long, and texts have few different letters.
        std::map<quint32, Letter> letters;
        for (int i = 0; i < glyphs.size(); ++i) {
            auto letter = letters.find(glyphs[i]);
            if (letter == letters.end())
                letter = letters.emplace(glyphs[i], LetterOf(font, glyphs[i], thickens)).first;
            AddLetter(letter->second, QTransform::fromTranslate(places[i].x(), places[i].y()) * toLines);
        }
    }
    m_Letters.setFillRule(Qt::WindingFill);
    m_Thickening.setFillRule(Qt::WindingFill);
}

TextLines::Letter TextLines::LetterOf(const QRawFont& font, quint32 glyph, bool thickens)
{
    Letter letter;
    letter.outline = font.pathForGlyph(glyph);
    if (letter.outline.isEmpty()) {
        letter.picture = GlyphPicture::Of(font, glyph);
    } else if (thickens) {
        letter.thickening = BandAlong(letter.outline);
    }
    return letter;
}

void TextLines::AddLetter(const Letter& letter, const QTransform& toLines)
{
    m_Letters.addPath(toLines.map(letter.outline));
    m_Thickening.addPath(toLines.map(letter.thickening));
    if (!letter.picture) return;
    GlyphPicture picture = *letter.picture;
    picture.box = toLines.mapRect(picture.box);
    m_Pictures.push_back(std::move(picture));
}

void TextLines::AddDecorations(const Line& line, const QFont& font)
{
    const QFontMetricsF metrics(SettingFont(font, m_Scale));
    const double thickness = metrics.lineWidth() * m_Scale;
    const auto add = [&](double below) {
        m_Decorations.addRect(line.left, line.baseline + below * m_Scale - thickness / 2, line.width,
                              thickness);
    };
    if (font.underline()) add(metrics.underlinePos());
    if (font.strikeOut()) add(-metrics.strikeOutPos());
}

QRectF TextLines::Box() const
{
    QRectF box;
    for (const Line& line : m_Lines) {
        box |= QRectF(line.left, line.baseline - m_Ascent, std::max(line.width, m_Descent / 2),
                      m_Ascent + m_Descent);
    }
    for (const GlyphPicture& picture : m_Pictures)
        box |= picture.box;
    return box | m_Letters.boundingRect() | m_Thickening.boundingRect() | m_Decorations.boundingRect();
}

const TextLines::Line& TextLines::LineOf(int index) const
{
    const auto after = std::find_if(m_Lines.begin(), m_Lines.end(),
                                    [index](const Line& line) { return line.start > index; });
    return after == m_Lines.begin() ? m_Lines.front() : *std::prev(after);
}

QLineF TextLines::CaretAt(int index) const
{
    const int inside = std::clamp(index, 0, m_Length);
    const Line& line = LineOf(inside);
    const int inLine = std::min(inside - line.start, line.length);
    const double x = line.left + line.layout->lineAt(0).cursorToX(inLine) * m_Scale;
    return QLineF(x, line.baseline - m_Ascent, x, line.baseline + m_Descent);
}

QLineF TextLines::BaselineAt(int index) const
{
    const Line& line = LineOf(std::clamp(index, 0, m_Length));
    return QLineF(line.left, line.baseline, line.left + line.width, line.baseline);
}

bool TextLines::IsCaretPlace(int index) const
{
    if (index < 0 || index > m_Length) return false;
    const Line& line = LineOf(index);
    const int inLine = index - line.start;
    return inLine <= line.length && line.layout->isValidCursorPosition(inLine);
}
