#pragma once

#include "EditorExport.h"

#include <QWidget>

#include <memory>

class AdjustmentPanelPrivate;
class ZKDocumentView;

/// The panel with the sliders of the adjustment layer that is selected. Main thread only.
class ZK_EDITOR_EXPORT AdjustmentPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AdjustmentPanel(QWidget* parent = nullptr);
    ~AdjustmentPanel() override;

    /// Shows the selected layer of this view; null shows that there is none. The panel lets go of the view by
    /// itself before it goes away.
    void SetView(ZKDocumentView* view);

private:
    std::unique_ptr<AdjustmentPanelPrivate> m_pPrivate;
};
