#pragma once

#include "EditorExport.h"

#include <QList>
#include <QObject>

class QDockWidget;
class QMainWindow;

/// The panels at the right side of the window, one group under the other; the panels of a group are tabs.
/// Panels are neither closed nor torn off, so that none is ever lost beyond the screen. Main thread only.
class ZK_EDITOR_EXPORT PanelArea : public QObject
{
    Q_OBJECT

public:
    /// From the top.
    enum Group
    {
        ToolGroup,     ///< the active tool's own panel, and what is measured
        DocumentGroup, ///< layers, history and what else the document holds
        ViewGroup,     ///< ways to look at it
        ColorGroup,

        GroupCount,
    };

    explicit PanelArea(QMainWindow* window);

    /// Adds a panel behind the others of its group; the first one of a group is in front at first.
    /// @param name  under which the arrangement remembers it; unique
    QDockWidget* Add(Group group, const QString& name, const QString& title, QWidget* content);

    /// All panels in their order.
    QList<QDockWidget*> GetPanels() const;

    /// Brings the panel to the front of its group and gives it the focus.
    void Show(QDockWidget* panel);

    /// The arrangement of a first start.
    void Reset();

private:
    void NameTabs();

    QMainWindow* m_pWindow;
    QList<QDockWidget*> m_Groups[GroupCount];
};
