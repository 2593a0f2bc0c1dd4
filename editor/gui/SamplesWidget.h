#pragma once

#include "EditorExport.h"

#include <QWidget>

#include <memory>

class SamplesWidgetPrivate;
class ZKDocumentView;

/// The panel that reads out the color samples of the current document. Main thread only.
class ZK_EDITOR_EXPORT SamplesWidget : public QWidget
{
    Q_OBJECT

public:
    explicit SamplesWidget(QWidget* parent = nullptr);
    ~SamplesWidget() override;

    /// Shows the samples of this view's document; null shows that there is none. The panel lets go of the
    /// view by itself before it goes away.
    void SetView(ZKDocumentView* view);

    QSize sizeHint() const override;

private:
    std::unique_ptr<SamplesWidgetPrivate> m_pPrivate;
};
