#pragma once

#include "image/LXAdjustment.h"

#include <QWidget>

#include <memory>

class AdjustmentWidgetPrivate;

/// The sliders of an adjustment. Main thread only.
class AdjustmentWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AdjustmentWidget(QWidget* parent = nullptr);
    ~AdjustmentWidget() override;

    /// Shows these values, and only the sliders of their kind. Sends nothing.
    void SetAdjustment(const LXAdjustment& adjustment);

signals:
    /// The person wants these values; more may come.
    void Changed(const LXAdjustment& adjustment);
    /// The slider was let go, or a value typed.
    void Finished();

private:
    std::unique_ptr<AdjustmentWidgetPrivate> m_pPrivate;
};
