#pragma once

#include "magicwand/MagicWandTool.h"

#include "guicore/LXMessageBox.h"
#include "support/ViewFixture.h"

#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

/// The magic wand, chosen, on a small document in a view: for tests of the tool without a plug-in around it.
/// The document is 8 by 6, white, with a black column at x = 4.
class MagicWandFixture
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

    void SetMode(int row) const;
    void Click(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);
    void Press(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);
    void Move(const QPointF& scenePos);
    void Release(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);

    /// What the boxes say that show while the gesture runs, each "title: text", closed with Ok or by the
    /// frame.
    QStringList BoxesDuring(const std::function<void()>& gesture);

    /// Selects by rows of values: '.' 0, '#' 255, 'h' 128, 'l' 127, 'f' 100.
    void Select(const QStringList& rows, const QPoint& offset = {});
    /// The selection on the whole canvas in the same letters; what isn't one of the values is '?'.
    QStringList Selection() const;

    static void SendKey(int key, bool down);

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<MagicWandTool> m_pTool;
};

// What must hold after every gesture.
#define VERIFY_NOTHING_IS_HELD()                                                                             \
    QVERIFY(!m_pFixture->Document()->GetLockState());                                                        \
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(0));                                                 \
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());                                              \
    QVERIFY(!QGuiApplication::overrideCursor())
