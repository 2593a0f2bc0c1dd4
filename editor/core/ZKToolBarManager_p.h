#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

class ToolBarArea;

/// The bars behind ZKToolBarManager, with or without an area to stand in.
class ZKToolBarManagerPrivate
{
public:
    static ZKToolBarManagerPrivate& Get();

    void Add(QWidget* bar, const QString& title);
    void Activate(QWidget* bar);

    /// Hands all bars, and the shown one, to the area.
    void SetArea(ToolBarArea* area);

private:
    QList<QPointer<QWidget>> m_Bars;
    QPointer<QWidget> m_pActive;
    QPointer<ToolBarArea> m_pArea;
};
