#pragma once

#include <QLabel>
#include <QPointF>

class LXDocumentInterface;

/// A small tag beside the pointer that tells how far a drag has come, in the unit of the document. It takes
/// no mouse and never covers the pointer's spot. Main thread only.
class OffsetTag : public QLabel
{
    Q_OBJECT

public:
    explicit OffsetTag(QWidget* viewport);

    /// @param spot  the pointer, viewport pixels
    void Tell(const QPointF& way, const LXDocumentInterface* document, const QPoint& spot);

    /// "+12, -5 px"; whole pixels, or hundredths of inches, or tenths of millimeters.
    static QString Text(const QPointF& way, int unit, double dpi);
};
