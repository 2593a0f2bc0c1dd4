#pragma once

#include "ZKHostExport.h"

#include <QList>
#include <QWidget>

class QLabel;
class QScrollArea;
class QStackedLayout;

/// The place of the active tool's own panel, docked by the window. It shows the panel added last. Main
/// thread only.
class ZK_HOST_EXPORT LXToolWidgetManager : public QWidget
{
    Q_OBJECT

public:
    explicit LXToolWidgetManager(QWidget* parent = nullptr);
    ~LXToolWidgetManager() override;

    /// Never null: made at first use; whoever gives it a parent owns it.
    static LXToolWidgetManager* instance();

    /// Shows the panel. Null and a panel that is shown already are harmless. The panel stays its tool's own.
    void AddWidget(QWidget* widget);
    /// Hides the panel and leaves it without a parent; the one added before it shows again. Null and a panel
    /// that was never added are harmless.
    void RemoveWidget(QWidget* widget);

    /// The panel shown; null for none.
    QWidget* GetCurrentWidget() const;

    QSize sizeHint() const override;

signals:
    /// Another panel is shown; null for none.
    void CurrentWidgetChanged(QWidget* widget);

private:
    void ShowLast();
    void Forget(QWidget* widget);

    QList<QWidget*> m_Widgets;
    QStackedLayout* m_pPages;
    QLabel* m_pNoPanelLbl;
    QScrollArea* m_pPanelArea;
};
