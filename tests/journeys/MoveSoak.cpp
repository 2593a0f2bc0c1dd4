#include "MoveSoak.h"

#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel.h"
#include "document/LayerLocks.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/LXShortcut.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "history/SelectionCommand.h"
#include "history/SelectionCommandData.h"
#include "scripting/InputDriver.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QItemSelectionModel>
#include <QKeySequence>
#include <QList>
#include <QMatrix4x4>
#include <QMenuBar>
#include <QPainterPath>

#include <algorithm>

namespace {
constexpr int DeepestMenu = 4;
/// Fewer than the editor keeps.
constexpr int MostSteps = 150;

QString PointText(const QPointF& point)
{
    return QString("%1, %2").arg(point.x()).arg(point.y());
}

/// Rasters, one with locked pixels and one that is locked in its place; masks, linked and not.
LayerState RandomLayer(DocumentFixture::Random& random, int number, const QSize& canvas)
{
    const QRect around(QPoint(0, 0), canvas);
    LayerState layer;
    layer.properties.name = QString("Layer %1").arg(number);
    layer.properties.rect = DocumentFixture::PickRect(random, around, 8);
    layer.image = DocumentFixture::Noise(random, layer.properties.rect.size());
    layer.properties.hasMask = number > 0;
    layer.properties.maskReveals = number % 2 == 0;
    layer.properties.isMaskLinked = number != 2;
    if (layer.properties.hasMask) {
        layer.properties.maskRect = DocumentFixture::PickRect(random, around, 4);
        layer.mask = DocumentFixture::MaskNoise(random, layer.properties.maskRect.size());
    }
    if (number == 4) layer.properties.locks = LayerLocks::Pixels;
    if (number == 5) layer.properties.locks = LayerLocks::Position;
    return layer;
}

QList<QKeySequence> NudgeKeys()
{
    QList<QKeySequence> keys;
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
        for (const int modifiers : {0, int(Qt::SHIFT), int(Qt::ALT), int(Qt::SHIFT + Qt::ALT)}) {
            keys.append(QKeySequence(Qt::CTRL + modifiers + key));
        }
    }
    return keys;
}

/// Whether the view's own scrolling has a timer running.
bool IsScrolling(const ZKDocumentView* view)
{
    const QObjectList& children = view->children();
    return std::any_of(children.begin(), children.end(), [](QObject* child) {
        return child->inherits("ViewAutoscroll") &&
               !QAbstractEventDispatcher::instance()->registeredTimers(child).isEmpty();
    });
}

bool HasOverlay(const LXDocumentInterface* document)
{
    for (int row = 0; row < document->GetModel()->rowCount(); ++row) {
        const auto id = static_cast<unsigned int>(row) + 1;
        if (document->GetAdditionalLayerImage(id) || document->GetAdditionalMaskImage(id)) return true;
    }
    return false;
}
} // namespace

MoveSoak::MoveSoak(unsigned int seed) : m_Random(seed)
{
    qApp->installEventFilter(this);
    AddPicture({64, 48});
    AddPicture({150, 140});
    m_Editor.GetInput().Key(Qt::Key_V);
    for (const char* help : {"snapAction", "showDragOffsetAction"}) {
        m_Editor.Window()->findChild<QAction*>(help)->trigger();
    }
}

MoveSoak::~MoveSoak()
{
    qApp->removeEventFilter(this);
}

void MoveSoak::AddPicture(const QSize& size)
{
    Picture picture;
    picture.document = m_Editor.Files()->New(size, Qt::white);
    picture.window = m_Editor.Window()->GetDocumentArea()->GetActiveWindow();
    picture.view = m_Editor.View();
    picture.history = m_Editor.History();
    auto* insides = LXDocumentInterfacePrivate::Get(picture.document);
    for (int number = 0; number < 6; ++number) {
        insides->InsertLayer(0, RandomLayer(m_Random, number, size));
    }
    const unsigned int text = picture.document->AddTextLayer("Text", QPointF(10, 20));
    picture.document->SetText(text, "Ag");
    picture.document->SetTextLayerTransformation(text, QMatrix4x4(QTransform().rotate(10)));
    picture.document->AddAdjustmentLayer("Adjustment", LXAdjustment());
    picture.start = DocumentFixture::DescribeWhole(picture.document);
    m_Pictures.push_back(picture);
}

// Messages about locks and empty selections come when they may; nobody reads them here.
bool MoveSoak::eventFilter(QObject* object, QEvent* event)
{
    auto* box = event->type() == QEvent::Show ? qobject_cast<LXMessageBox*>(object) : nullptr;
    if (box) QMetaObject::invokeMethod(box, "close", Qt::QueuedConnection);
    return false;
}

const MoveSoak::Picture& MoveSoak::Current() const
{
    const auto isActive = [this](const Picture& picture) { return picture.view == m_Editor.View(); };
    return *std::find_if(m_Pictures.begin(), m_Pictures.end(), isActive);
}

// ---- acts

QString MoveSoak::Act()
{
    if (m_bPressed) return ActPressed();
    LeaveMenus();

    switch (Pick(0, 17)) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4: return Press();
    case 5:
    case 6:
    case 7: return NudgeByKey();
    case 8: return ChangeTool();
    case 9: return StepThroughHistory();
    case 10:
    case 11: return ChangeRows();
    case 12: return ChangeMaskTarget();
    case 13:
    case 14: return SelectRectangle();
    case 15: return ClickTwice();
    case 16: return PanWithTheMoveKey();
    default: return ChangeView();
    }
}

// Alt that is pressed and let go without a key between goes into the menus, as it does for a person; the next
// keys would choose there.
void MoveSoak::LeaveMenus()
{
    const QMenuBar* bar = m_Editor.Window()->menuBar();
    const auto isInMenus = [bar] { return bar->activeAction() || QApplication::activePopupWidget(); };
    for (int tries = 0; isInMenus() && tries < DeepestMenu; ++tries)
        m_Editor.GetInput().Key(Qt::Key_Escape);
    if (bar->hasFocus()) Current().view->setFocus();
}

QString MoveSoak::ActPressed()
{
    InputDriver& input = m_Editor.GetInput();
    const QPointF point = PickPoint();
    switch (Pick(0, 11)) {
    case 0:
    case 1:
    case 2:
    case 3: input.MoveInScene(Current().view, point); return "move to " + PointText(point);
    case 4: input.HoldModifiers(Qt::NoModifier); return "let go of all keys";
    case 5: input.Key(Qt::Key_Z, Qt::ControlModifier); return "undo in a drag";
    case 6: Current().history->commit(); return "a commit in a drag";
    default:
        // A person can't change the document here; a program can.
        if (Pick(0, 20) == 0) return ChangeView();
        input.ReleaseInScene(Current().view, point);
        m_bPressed = false;
        input.HoldModifiers(Qt::NoModifier);
        m_Editor.Settle();
        return "release at " + PointText(point);
    }
}

QString MoveSoak::Press()
{
    const Qt::KeyboardModifiers choices[] = {Qt::NoModifier, Qt::NoModifier, Qt::AltModifier,
                                             Qt::ControlModifier, Qt::ControlModifier | Qt::AltModifier};
    const Qt::KeyboardModifiers modifiers = choices[Pick(0, 4)];
    const QPointF point = PickPoint();
    InputDriver& input = m_Editor.GetInput();
    input.HoldModifiers(modifiers);
    input.PressInScene(Current().view, point);
    // A message has swallowed the release.
    m_bPressed = input.GetButtons() != Qt::NoButton;
    if (!m_bPressed) input.HoldModifiers(Qt::NoModifier);
    return QString("press at %1 with %2").arg(PointText(point)).arg(int(modifiers), 0, 16);
}

QString MoveSoak::ClickTwice()
{
    const QPointF point = PickPoint();
    m_Editor.GetInput().DoubleClickInScene(Current().view, point);
    m_Editor.Settle();
    return "two clicks at " + PointText(point);
}

QString MoveSoak::PanWithTheMoveKey()
{
    InputDriver& input = m_Editor.GetInput();
    Current().view->setFocus();
    input.KeyDown(Qt::Key_Space);
    input.HoldModifiers(Qt::ControlModifier);
    const bool isPanLonger = Pick(0, 1) == 0;
    if (isPanLonger) input.HoldModifiers(Qt::NoModifier);
    input.KeyUp(Qt::Key_Space);
    input.HoldModifiers(Qt::NoModifier);
    return isPanLonger ? QString("Ctrl while panning") : QString("Ctrl beyond panning");
}

QString MoveSoak::NudgeByKey()
{
    const Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
    const Qt::Key key = keys[Pick(0, 3)];
    Qt::KeyboardModifiers modifiers = Qt::ControlModifier;
    if (Pick(0, 3) == 0) modifiers |= Qt::AltModifier;
    if (Pick(0, 3) == 0) modifiers |= Qt::ShiftModifier;
    m_Editor.GetInput().Key(key, modifiers);
    return QString("key %1 with %2").arg(int(key), 0, 16).arg(int(modifiers), 0, 16);
}

QString MoveSoak::ChangeTool()
{
    const Qt::Key keys[] = {Qt::Key_V, Qt::Key_V, Qt::Key_W, Qt::Key_F, Qt::Key_Return};
    const Qt::Key key = keys[Pick(0, 4)];
    m_Editor.GetInput().Key(key);
    return QString("key %1").arg(int(key), 0, 16);
}

QString MoveSoak::StepThroughHistory()
{
    const bool undo = Pick(0, 1) == 0;
    m_Editor.GetInput().Key(undo ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
    return undo ? QString("undo") : QString("redo");
}

QString MoveSoak::ChangeRows()
{
    QItemSelectionModel* selection = Current().view->GetLayerSelection();
    const LXDocumentModel* model = Current().view->GetModel();
    selection->clearSelection();
    const int count = Pick(0, 5);
    // One row most of the time.
    for (int i = 0; i < (count > 2 ? 1 : count); ++i) {
        selection->select(model->index(Pick(0, model->rowCount() - 1)),
                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    return QString("%1 rows").arg(selection->selectedRows().size());
}

QString MoveSoak::ChangeMaskTarget()
{
    LXDocumentModel* model = Current().view->GetModel();
    const QModelIndexList rows = Current().view->GetLayerSelection()->selectedRows();
    if (rows.isEmpty()) return "no mask";

    const int row = rows.first().row();
    model->SetMaskSelected(row, !model->GetMaskSelected(row));
    return QString("the other target of row %1").arg(row);
}

QString MoveSoak::SelectRectangle()
{
    LXDocumentInterface* document = Current().document;
    const QRect canvas(QPoint(0, 0), document->GetDocumentSize());
    QPainterPath path;
    // Half pixels are selected in part.
    path.addRect(QRectF(DocumentFixture::PickRect(m_Random, canvas, 4)).translated(Pick(0, 1) * 0.5, 0));
    auto data = std::make_unique<SelectionCommandData>();
    data->SetSelectionOp(SelectionCommandData::Replace);
    data->SetSelectionGeometry(path);
    Current().history->commit();
    data->SetUndoSel(document->GetSelectionMaskOffset(), document->GetSelectionMask());
    auto command = std::make_unique<SelectionCommand>(document);
    command->setText("Select");
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    Current().history->push(command.release());
    return "select " + PointText(path.boundingRect().topLeft());
}

QString MoveSoak::ChangeView()
{
    const std::size_t next = static_cast<std::size_t>(Pick(0, 1));
    if (m_bPressed || Pick(0, 1) == 0) {
        m_Editor.Window()->GetDocumentArea()->setActiveSubWindow(m_Pictures[next].window);
        return QString("document %1").arg(next);
    }
    const int notches = Pick(-2, 2);
    m_Editor.GetInput().WheelInScene(Current().view, PickPoint(), 120 * notches);
    return QString("zoom by %1").arg(notches);
}

QPointF MoveSoak::PickPoint()
{
    const LXDocumentInterface* document = Current().document;
    // On a selected pixel, that a drag lifts; or anywhere, the room round the canvas too.
    const QRect selected = document->GetSelectionBoundingRect() & QRect({0, 0}, document->GetDocumentSize());
    const bool isInside = !selected.isEmpty() && Pick(0, 1) == 0;
    const QRect rect =
        isInside ? selected : QRect({0, 0}, document->GetDocumentSize()).adjusted(-3, -3, 3, 3);
    return QPointF(Pick(rect.left(), rect.right()) + 0.5, Pick(rect.top(), rect.bottom()) + 0.5);
}

// ---- what must hold

QString MoveSoak::Fault() const
{
    for (const Picture& picture : m_Pictures) {
        const QString fault = FaultOf(picture);
        if (!fault.isEmpty()) return picture.document->GetDocumentName() + ": " + fault;
    }
    return m_bPressed ? QString() : FaultAtRest();
}

QString MoveSoak::FaultAtRest() const
{
    if (!LexoAppKeyHook::instance()->AreShortcutsEnabled()) return "the shortcuts are off";
    if (QGuiApplication::overrideCursor()) return "a cursor is left";
    for (const LXShortcut* shortcut : m_Editor.Window()->findChildren<LXShortcut*>()) {
        const bool isNudge = NudgeKeys().contains(shortcut->Key());
        if (isNudge && !shortcut->IsEnabled()) return shortcut->Key().toString() + " is off";
    }
    for (const Picture& picture : m_Pictures) {
        const Qt::CursorShape shape = picture.view->cursor().shape();
        if (shape == Qt::OpenHandCursor || shape == Qt::ClosedHandCursor) return "a hand is left";
        const QWidget* tag = picture.view->findChild<QWidget*>("dragOffsetTag");
        if (tag && tag->isVisible()) return "the way of a drag is left";
        if (IsScrolling(picture.view)) return "a view goes on scrolling";
    }
    return {};
}

QString MoveSoak::FaultOf(const Picture& picture) const
{
    const int state = picture.document->GetDocumentState();
    const bool isOpen = picture.history->isDelayedOpen();
    const bool isFloating = HasOverlay(picture.document);
    if (state < 0 || state > 1) return QString("the state is %1").arg(state);
    if (state == 0 && isFloating) return "an overlay is left";
    if (state == 0 && isOpen) return "a step stands open";
    if (state == 1 && isFloating == isOpen) return "the state counts what isn't there";
    if (picture.history->isMacroOpen()) return "a macro stands open";
    if (!m_bPressed && picture.document->GetLockState()) return "a lock is left";
    if (isFloating) ++m_Floats;
    return {};
}

bool MoveSoak::IsHistoryFull() const
{
    return std::any_of(m_Pictures.begin(), m_Pictures.end(),
                       [](const Picture& picture) { return picture.history->count() >= MostSteps; });
}

QString MoveSoak::UndoEverything()
{
    m_Editor.GetInput().LetGo();
    m_bPressed = false;
    m_Editor.Settle();
    for (const Picture& picture : m_Pictures) {
        picture.history->commit();
        // Which of its two pictures a layer paints on is no step of the history.
        for (int row = 0; row < picture.document->GetModel()->rowCount(); ++row) {
            picture.document->GetModel()->SetMaskSelected(row, false);
        }
        m_Steps += picture.history->count();
        const QString name = picture.document->GetDocumentName();
        const int done = picture.history->index();
        const QStringList end = DocumentFixture::DescribeWhole(picture.document);
        picture.history->setIndex(0);
        if (DocumentFixture::DescribeWhole(picture.document) != picture.start) return name + ": the start";
        picture.history->setIndex(done);
        if (DocumentFixture::DescribeWhole(picture.document) != end) return name + ": the end";
        picture.history->setIndex(0);
        picture.history->clear();
    }
    return Fault();
}
