#pragma once

#include "ZKHostExport.h"

#include <QWidget>

#include <memory>

class LayersWidgetPrivate;

/// The panel of the current document's layers. Main thread only.
class ZK_HOST_EXPORT LayersWidget : public QWidget
{
    Q_OBJECT

public:
    explicit LayersWidget(QWidget* parent = nullptr);
    ~LayersWidget() override;

    /// Never null: made at first use; whoever gives it a parent owns it.
    static LayersWidget* GetInstance();

private:
    std::unique_ptr<LayersWidgetPrivate> m_pPrivate;
};
