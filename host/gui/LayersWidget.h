#pragma once

#include "ZKHostExport.h"

#include <QList>
#include <QWidget>

#include <memory>

class LayersWidgetPrivate;
class QAbstractItemModel;
class QAction;
class QItemSelectionModel;
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

    /// Hands over the list of a clipboard, which the clipboard panel shows, and what can be done with it.
    /// Rows are read by ClipboardRole. All stay the caller's, who takes them back with nulls and no actions
    /// before they go.
    /// @param selection  the current row is what is pasted
    void setClipboardModel(QAbstractItemModel* model, QItemSelectionModel* selection,
                           const QList<QAction*>& actions);
    /// The list and its selection; null for none.
    QAbstractItemModel* GetClipboardModel() const;
    QItemSelectionModel* GetClipboardSelection() const;
    QList<QAction*> GetClipboardActions() const;

    QSize sizeHint() const override;

signals:
    /// Another clipboard's list was handed over, or none.
    void ClipboardModelChanged();

private:
    std::unique_ptr<LayersWidgetPrivate> m_pPrivate;
};
