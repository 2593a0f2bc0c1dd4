#pragma once

#include "ZKHostExport.h"

#include <QWidget>

#include <memory>

class HistogramWidgetPrivate;
class LXDocumentInterface;

/// How often each level from 0 to 255 occurs in the merged picture of a document. Main thread only.
///
/// A pixel counts once, whatever its opacity; one with an alpha of 0 can't be seen and doesn't count. With
/// several channels the number of pixels with a level is the mean of the channels' numbers, to nearest, so
/// that all levels together have as many pixels as the picture. The selection doesn't matter, nor does the
/// profile: levels are those of the document. The tallest level between black and white fills the height.
///
/// Counting runs on workers, tile by tile; later only tiles that changed are counted anew. The plot and the
/// numbers follow as counts arrive. While the widget isn't visible it counts nothing. Memory that runs out is
/// told in the plot, and the next rebuild tries again. A document may go away at any time.
///
/// A drag over the plot chooses a range of levels, a click all of them again; Escape ends a drag. On the
/// keyboard Left, Right, Page Up, Page Down, Home and End move over the levels, with Shift they choose a
/// range, and Escape chooses all levels.
class ZK_HOST_EXPORT HistogramWidget : public QWidget
{
    Q_OBJECT

public:
    explicit HistogramWidget(QWidget* parent = nullptr);
    ~HistogramWidget() override;

    /// Counts this document from now on; null for none. All levels are chosen again, and the signals tell so.
    void SetDocument(LXDocumentInterface* document);

    /// Which channels count; RGB at first.
    /// @param channel  bits 1 red, 2 green, 4 blue; 7 for RGB, 0 for the luminance; others are ignored
    void SetChannel(int channel);
    int GetChannel() const;

    /// Counts what changed since the last time, as soon as the event loop runs.
    void RebuildHistogramm();

    /// Whether counts are still to come. Hidden, it may wait as long.
    bool IsCounting() const;

    /// The levels that are chosen, both within; 0 and 255 for all.
    int GetFirstLevel() const;
    int GetLastLevel() const;
    /// Levels are brought into 0 to 255, and into order.
    void SetLevelRange(int first, int last);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void LevelRangeChanged(int first, int last);
    /// Another number of pixels has a level of the range.
    void CountChanged(int pixels);
    /// The pointer, or the keyboard, is at a level that so many pixels have.
    void StatsChanged(int pixels, int level);
    /// It is at none any more.
    void StatsNoInfo();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    friend class HistogramWidgetPrivate;
    std::unique_ptr<HistogramWidgetPrivate> m_pPrivate;
};
