#pragma once

#include "movetoolprivate/MoveTool.h"
#include "movetoolprivate/MoveTool_p.h"

#include "guicore/LXMessageBox.h"
#include "support/ViewFixture.h"

#include <QStringList>

#include <functional>
#include <memory>

/// The move tool, chosen, on a small document in a view: for tests of the tool without a plug-in around it.
///
/// The document is 16 by 12 with one layer, "Layer", of its size. Each pixel says where it came from: red is
/// 10 times its column, green 10 times its row, blue 0; all are opaque.
class MoveToolFixture
{
protected:
    void MakeTool();
    void DropTool();

    MoveToolPrivate* Private() const { return m_pTool->findChild<MoveToolPrivate*>(); }

    LXDocumentInterface* Document() const { return m_pFixture->Document(); }

    LXDocumentModel* Model() const { return Document()->GetModel(); }

    /// Of the view; null for none.
    const MoveViewState* Record() const { return Private()->GetRecord(m_pFixture->View()); }

    void Press(const QPointF& scenePos, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Move(const QPointF& scenePos);
    void Release(const QPointF& scenePos);
    /// A press, a move and a release.
    void Drag(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Selects a rectangle wholly.
    void Select(const QRect& rect);
    /// Gives the first layer a revealing mask in which a rectangle hides.
    void AddMask(const QRect& hidden);
    /// Adds a raster layer of one color on top and gives its id; the selected rows stay as they are.
    unsigned int AddLayer(const QRect& rect, const QColor& color);
    /// Adds a text layer or an adjustment layer on top, which is selected then.
    unsigned int AddLayerOfKind(int kind);

    /// The pixel of the fixture's picture that came from there.
    static QRgb Source(int x, int y) { return qRgb(10 * x, 10 * y, 0); }

    /// What a person sees at the pixel.
    QRgb Merged(int x, int y) const;

    /// Everything that undo must bring back, as lines.
    QStringList Whole() const;

    /// The texts of all steps, the oldest first.
    QStringList Texts() const;

    /// What the boxes say that show while the gesture runs, each "title: text", closed by the frame.
    /// @param count  how many boxes are expected
    QStringList BoxesDuring(const std::function<void()>& gesture, int count = 1);

    static void SendKey(int key, bool down);

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<MoveTool> m_pTool;
};

// What must hold between two gestures.
#define VERIFY_NOTHING_IS_HELD()                                                                             \
    QVERIFY(!m_pFixture->Document()->GetLockState());                                                        \
    QCOMPARE(m_pFixture->ToolView().GetState(), quint64(0));                                                 \
    QVERIFY(LexoAppKeyHook::instance()->AreShortcutsEnabled());                                              \
    QVERIFY(!QGuiApplication::overrideCursor());                                                             \
    QVERIFY(!m_pFixture->History().isMacroOpen())
