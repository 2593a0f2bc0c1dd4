#pragma once

#include "LXViewTool.h"

#include "fillcan/FillCan_p.h"
#include "support/ViewFixture.h"

#include <QWidget>

#include <memory>

/// The fill can, chosen, on a small white document in a view: for tests of the tool without a plug-in around
/// it.
class FillCanFixture
{
protected:
    void MakeTool();
    void DropTool();

    QWidget* Bar() const;
    QWidget* Panel() const;

    template <class Control>
    Control* InBar(const char* name) const
    {
        return Bar()->findChild<Control*>(name);
    }

    template <class Control>
    Control* InPanel(const char* name) const
    {
        return Panel()->findChild<Control*>(name);
    }

    void Click(const QPointF& scenePos) { m_pFixture->Input().ClickInScene(m_pFixture->View(), scenePos); }

    /// As the key hook tells of a key.
    static void SendShortcut(const char* key);

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<LXViewTool> m_pAdapter;
    FillCanPrivate* m_pTool = nullptr;
};
