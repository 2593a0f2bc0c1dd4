#pragma once

#include "ZKHostExport.h"

#include <QPoint>
#include <QRectF>
#include <QWidget>

#include <memory>

class LXColorTransformBase;
class LXDocumentInterface;
class NavigatorWidgetPrivate;

/// The whole canvas of a document, small, with a frame round the part that a view shows. Main thread only.
///
/// The picture keeps its proportions and fills the widget as far as they allow. It is made on workers, later
/// only where it changed, and nothing is made while the widget isn't visible. A document may go away at any
/// time.
///
/// A press inside the frame takes hold of it and a drag moves it along; a press beside it brings its middle
/// there, and so does a click inside it. Escape ends a drag where it began. On the keyboard the arrows move
/// it by a tenth of its size, with Shift by all of it. The widget itself only asks (ViewRectPosChanged): the
/// frame stands where SetViewRect() puts it.
class ZK_HOST_EXPORT NavigatorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit NavigatorWidget(QWidget* parent = nullptr);
    ~NavigatorWidget() override;

    /// Shows this document from now on; null for none. The frame stays where it was set.
    /// @param colorTransform  from the document's colors to those of the screen, used on any thread. It holds
    ///                        until one of the two gets another profile; from then on, and with null, colors
    ///                        go from the document's profile to the screen's
    void SetDocument(LXDocumentInterface* document,
                     const std::shared_ptr<const LXColorTransformBase>& colorTransform);

    /// The part of the scene that the view shows, document pixels; it may reach beyond the canvas. An empty
    /// one takes the frame away.
    void SetViewRect(const QRectF& rect);
    QRectF GetViewRect() const;

    /// Makes anew what changed since the last time, as soon as the event loop runs.
    void RebuildView();

    /// Whether a part is still to come. Hidden, it may wait as long.
    bool IsRebuilding() const;

    /// Where the canvas stands, widget pixels; empty without a document.
    QRect GetPictureRect() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The view shall have its middle there: document pixels, on the canvas, and such that the frame stays on
    /// it as far as it fits.
    void ViewRectPosChanged(QPoint center);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    friend class NavigatorWidgetPrivate;
    std::unique_ptr<NavigatorWidgetPrivate> m_pPrivate;
};
