#include "gui/ZKDocumentWidget.h"

#include "gui/ZKDocumentView.h"

#include <QVBoxLayout>

ZKDocumentWidget::ZKDocumentWidget(LXDocumentInterface* document, LexoUndoStack* history, QWidget* parent)
    : QWidget(parent), m_pView(new ZKDocumentView(document, history, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pView);
    setFocusProxy(m_pView);
}

ZKDocumentWidget::~ZKDocumentWidget() = default;
