#pragma once

#include "document/GlyphPicture.h"

#include <QFont>
#include <QLineF>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QRawFont;
class QTextLayout;
class QTransform;

/// A text set in lines, as outlines. The first baseline begins at (0, 0), y growing downward; a line that
/// reads from the right ends there and goes to the left. Sizes are document pixels, but everything is set at
/// one large size and scaled, so that letters have the same proportions at every size. Any thread.
class TextLines
{
public:
    TextLines(const QString& text, const QFont& font);
    ~TextLines();

    /// Fills by the winding rule.
    const QPainterPath& Letters() const { return m_Letters; }

    /// The letters that fonts hold as pictures, such as colored emoji; each box is where it lies.
    const std::vector<GlyphPicture>& Pictures() const { return m_Pictures; }

    /// What is drawn along the outlines of letters that shall be bold and come from a font that isn't; it
    /// overlaps the letters.
    const QPainterPath& Thickening() const { return m_Thickening; }

    /// What underlines and strikes out; it overlaps the letters.
    const QPainterPath& Decorations() const { return m_Decorations; }

    /// Around the lines from their ascent to their descent, and around all that is drawn. Never flat.
    QRectF Box() const;

    /// How many places a caret has; those inside of a letter of several code units count too.
    int Length() const { return m_Length; }

    /// From the top to the bottom of the line, before the code unit at the index; beyond the ends the
    /// nearest.
    QLineF CaretAt(int index) const;
    /// The baseline of the line in which a caret at the index stands.
    QLineF BaselineAt(int index) const;
    /// Whether a caret may stand there: not inside of a letter of several code units.
    bool IsCaretPlace(int index) const;

private:
    struct Line
    {
        int start = 0;  ///< index in the text
        int length = 0; ///< without what ends the line
        double baseline = 0;
        double left = 0;
        double width = 0;
        std::unique_ptr<QTextLayout> layout;
    };

    void AddLine(const QString& text, int start, const QFont& font);

    /// A letter as a font has it, from its origin, at the size of setting.
    struct Letter
    {
        QPainterPath outline;
        QPainterPath thickening;
        std::optional<GlyphPicture> picture;
    };

    void AddLetters(const Line& line, const QFont& setting);
    void AddLetter(const Letter& letter, const QTransform& toLines);
    static Letter LetterOf(const QRawFont& font, quint32 glyph, bool thickens);
    void AddDecorations(const Line& line, const QFont& font);
    const Line& LineOf(int index) const;

    double m_Scale = 1; ///< from the size of setting to document pixels
    double m_Ascent = 0;
    double m_Descent = 0;
    double m_Spacing = 0; ///< of baselines
    int m_Length = 0;
    std::vector<Line> m_Lines;
    QPainterPath m_Letters;
    QPainterPath m_Thickening;
    std::vector<GlyphPicture> m_Pictures;
    QPainterPath m_Decorations;
};
