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

    /// Deletes the selected pixels of the selected layer, or of its mask when that is painted on, in one step
    /// of the history. False, and nothing happens, without a selection, unless exactly one layer is selected,
    /// and when it is locked or doesn't consist of pixels. Throws what images throw.
    bool DeleteSelection(const QString& text);

    QSize sizeHint() const override;

private:
    std::unique_ptr<LayersWidgetPrivate> m_pPrivate;
};
