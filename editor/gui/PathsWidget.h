#pragma once

#include "EditorExport.h"

#include <QWidget>

#include <memory>

class PathsWidgetPrivate;
class ZKDocumentView;

/// The panel of the current document's paths. Main thread only.
class ZK_EDITOR_EXPORT PathsWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PathsWidget(QWidget* parent = nullptr);
    ~PathsWidget() override;

    /// Shows the paths of this view's document and follows its selection; null shows that there is none. The
    /// panel lets go of the view by itself before it goes away.
    void SetView(ZKDocumentView* view);

    QSize sizeHint() const override;

private:
    std::unique_ptr<PathsWidgetPrivate> m_pPrivate;
};
