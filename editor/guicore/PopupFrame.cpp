#include "guicore/PopupFrame.h"

#include "guicore/LineFrame.h"

#include <QPainter>
#include <QWidget>

void PopupFrame::Paint(QWidget& window)
{
    QPainter painter(&window);
    PaintLineFrame(painter, window.rect(), window.palette().color(QPalette::Mid));
}
