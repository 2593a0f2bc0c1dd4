#include "gui/LayersWidget.h"

#include "document/LXDocumentModel.h"
#include "gui/LayerDelegate.h"
#include "gui/SingleWidget.h"
#include "gui/ZKDocumentView.h"

#include <QItemSelectionModel>
#include <QLabel>
#include <QListView>
#include <QStackedLayout>

class LayersWidgetPrivate
{
public:
    ZKDocumentView* m_pView = nullptr;
    QStackedLayout* m_pPages = nullptr;
    QListView* m_pList = nullptr;
    QLabel* m_pNoDocumentLbl = nullptr;
};

LayersWidget::LayersWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<LayersWidgetPrivate>())
{
    SingleWidget<LayersWidget>::Register(this);
    setWindowTitle(tr("Layers"));

    auto* label = new QLabel(tr("No picture is open."), this);
    label->setEnabled(false);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->setMargin(16);
    label->setWordWrap(true);

    auto* list = new QListView(this);
    list->setAccessibleName(tr("Layers"));
    list->setFrameShape(QFrame::NoFrame);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list->setUniformItemSizes(true);
    list->setItemDelegate(new LayerDelegate(list));

    m_pPrivate->m_pPages = new QStackedLayout(this);
    m_pPrivate->m_pPages->addWidget(label);
    m_pPrivate->m_pPages->addWidget(list);
    m_pPrivate->m_pNoDocumentLbl = label;
    m_pPrivate->m_pList = list;
}

LayersWidget::~LayersWidget() = default;

LayersWidget* LayersWidget::GetInstance()
{
    return SingleWidget<LayersWidget>::Get();
}

void LayersWidget::SetView(ZKDocumentView* view)
{
    if (view == m_pPrivate->m_pView) return;

    QListView* const list = m_pPrivate->m_pList;
    if (m_pPrivate->m_pView) disconnect(m_pPrivate->m_pView, nullptr, this, nullptr);
    m_pPrivate->m_pView = view;
    list->setModel(view ? view->GetModel() : nullptr);
    if (view) {
        // The list brings a selection of its own with each model.
        const std::unique_ptr<QItemSelectionModel> unused(list->selectionModel());
        list->setSelectionModel(view->GetLayerSelection());
        connect(view, &ZKDocumentView::AboutDestroy, this, [this] { SetView(nullptr); });
    }
    m_pPrivate->m_pPages->setCurrentWidget(view ? static_cast<QWidget*>(list) : m_pPrivate->m_pNoDocumentLbl);
}

QSize LayersWidget::sizeHint() const
{
    return {260, 240};
}
