#pragma once

#include "ZKHostExport.h"

#include <QWidget>

#include <memory>

class LayersWidgetPrivate;
class ZKDocumentView;

/// The panel of the current document's layers. Main thread only.
class ZK_HOST_EXPORT LayersWidget : public QWidget
{
    Q_OBJECT

public:
    explicit LayersWidget(QWidget* parent = nullptr);
    ~LayersWidget() override;

    /// Never null: made at first use; whoever gives it a parent owns it.
    static LayersWidget* GetInstance();

    /// Shows the layers of this view's document and follows its selection; null shows that there is none.
    /// The panel lets go of the view by itself before it goes away.
    void SetView(ZKDocumentView* view);

    QSize sizeHint() const override;

private:
    std::unique_ptr<LayersWidgetPrivate> m_pPrivate;
};
