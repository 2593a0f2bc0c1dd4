#include "selectionmenu/ColorRangeSelect_p.h"

#include "IDocumentView.h"
#include "selectionmenu/SelectColorRangeDlg.h"

#include "common/MaskSelection.h"
#include "common/Messages.h"
#include "common/OverrideCursor.h"
#include "common/PushCommand.h"
#include "common/Reports.h"
#include "core/ZKMenuManager.h"
#include "document/LXColorInfoHelper.h"
#include "document/LXColorTransformBase.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXSelectionMaskHelper.h"
#include "gui/LXColorDlg.h"
#include "gui/LXMdiArea.h"
#include "gui/LexoAppKeyHook.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"

#include <QApplication>
#include <QMainWindow>
#include <QtConcurrentRun>

#include <cmath>

namespace {
constexpr int MenuPosition = 6;
constexpr unsigned int MergedPicture = 0;
constexpr int MaxColors = 256;

QPoint PixelAt(const QPointF& scenePos)
{
    return {static_cast<int>(std::floor(scenePos.x())), static_cast<int>(std::floor(scenePos.y()))};
}

ConvertResult Convert(const QColor& color, const std::shared_ptr<const LXColorTransformBase>& transform)
{
    ConvertResult result{color, color};
    (*transform)(result.shown);
    return result;
}

// The pixels are shared, so the locker is held for a moment only.
LXImage32 ReadPicture(const LXDocumentInterface* document)
{
    const LXDocumentLayerLockerForRead locker(document, MergedPicture);
    return *document->GetLayerImage(MergedPicture);
}

// Over the panels: in the middle, where dialogs stand, it would hide the picture that is clicked.
void PlaceBesidePicture(QWidget* dialog)
{
    constexpr int distance = 16;
    const QWidget* window = LXMdiArea::MainWindow();
    if (!window) return;

    dialog->adjustSize();
    const QRect frame = window->frameGeometry();
    dialog->move(frame.right() - dialog->width() - distance, frame.top() + 4 * distance);
}

ColorRangeResult MakePreview(const LXImage32& picture, const ColorRange& range, const QSize& bounds)
{
    try {
        return {MakeColorRangePreview(picture, range, bounds)};
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
    return {};
}
} // namespace

ColorRangeSelectPrivate::ColorRangeSelectPrivate(QObject* parent)
    : LXDialogViewToolBase(parent),
      m_pConversion(new QFutureWatcher<ConvertResult>(this)),
      m_pPreview(new QFutureWatcher<ColorRangeResult>(this))
{
    using Tool = ColorRangeSelectPrivate;
    connect(this, &LXViewToolBase::OnDocumentViewChange, this, [this](IDocumentView* oldView) {
        if (m_pDlg) m_pDlg->Reject();
        if (oldView) disconnect(oldView->GetNotifier(), nullptr, this, nullptr);
    });
    connect(this, &LXViewToolBase::OnDocumentViewChanged, this, &Tool::OnDocumentViewChangedSlot);
    connect(this, &LXViewToolBase::CurrentDocumentLocked, this,
            [this](bool locked) { locked ? DocumentLocked() : DocumentUnlocked(); });
    connect(this, qOverload<QPointF, Qt::MouseButton>(&LXViewToolBase::OnMousePress), this,
            &Tool::OnMousePressSlot);
    connect(this, &LXViewToolBase::OnMouseMove, this, &Tool::OnMouseMoveSlot);
    connect(this, &Tool::SelectColor, this, &Tool::OnSelectColor);
    connect(m_pConversion, &QFutureWatcherBase::resultReadyAt, this, &Tool::OnConversionRadyAt);
    connect(m_pConversion, &QFutureWatcherBase::finished, this, &Tool::OnConversionFinishedSlot);
    connect(m_pPreview, &QFutureWatcherBase::resultReadyAt, this, &Tool::OnSelectionRadyAt);
    connect(m_pPreview, &QFutureWatcherBase::finished, this, &Tool::OnSelectionFinishedSlot);
}

ColorRangeSelectPrivate::~ColorRangeSelectPrivate()
{
    m_pConversion->disconnect(this);
    m_pPreview->disconnect(this);
    m_pConversion->waitForFinished();
    m_pPreview->waitForFinished();
    delete m_pDlg;
}

// ---- the menu

void ColorRangeSelectPrivate::Init(QObject* parent)
{
    LXDialogViewToolBase::Init(parent);
    m_pAction = new QAction(tr("Color range"), this);
    m_pAction->setStatusTip(tr("Selects everything that has one of the colors that you click"));
    connect(m_pAction, &QAction::triggered, this, &ColorRangeSelectPrivate::onActivate);
    m_Entries.insert(MainMenuEntry({ZKMenuManager::Selection, MenuPosition}, m_pAction));
    UpdateAction();
    connect(LexoAppKeyHook::instance(), &LexoAppKeyHook::KeyPressed, this,
            &ColorRangeSelectPrivate::OnKeyPress);
}

MainMenuEntries ColorRangeSelectPrivate::GetMainMenuEntries()
{
    return m_Entries;
}

void ColorRangeSelectPrivate::onActivate()
{
    StartDialog();
}

void ColorRangeSelectPrivate::UpdateAction()
{
    const LXDocumentInterface* document = GetDocument();
    const bool isFree = document && !document->GetLockState() &&
                        (GetDocumentView()->GetState() & IDocumentView::LockBit) == 0;
    m_pAction->setEnabled(isFree);
}

void ColorRangeSelectPrivate::DocumentLocked()
{
    m_pAction->setEnabled(false);
}

void ColorRangeSelectPrivate::DocumentUnlocked()
{
    UpdateAction();
}

void ColorRangeSelectPrivate::DocumentViewLocked()
{
    m_pAction->setEnabled(false);
}

void ColorRangeSelectPrivate::DocumentViewUnlocked()
{
    UpdateAction();
}

void ColorRangeSelectPrivate::OnDocumentViewChangedSlot(IDocumentView*, IDocumentView* newView)
{
    if (newView) FollowViewState(newView);
    UpdateAction();
}

void ColorRangeSelectPrivate::FollowViewState(IDocumentView* view)
{
    connect(view->GetNotifier(), &DocumentViewNotifier::StateChanged, this,
            [this](quint64, quint64 newState) {
                if ((newState & IDocumentView::LockBit) != 0) {
                    DocumentViewLocked();
                } else {
                    DocumentViewUnlocked();
                }
            });
}

// ---- the dialog

QWidget* ColorRangeSelectPrivate::CreateDialog(ZKDocumentView*)
{
    using Tool = ColorRangeSelectPrivate;
    m_pDlg = new SelectColorRangeDlg(LXMdiArea::MainWindow());
    connect(m_pDlg, &SelectColorRangeDlg::ToleranceChanged, this, &Tool::OnToleranceChanged);
    connect(m_pDlg, &SelectColorRangeDlg::SwatchClicked, this, &Tool::OnSelectColor);
    connect(m_pDlg, &SelectColorRangeDlg::ChooseColorClicked, this, &Tool::OnChooseColor);
    connect(m_pDlg, &SelectColorRangeDlg::RemoveClicked, this, &Tool::OnRemoveCurrentColor);
    connect(m_pDlg, &SelectColorRangeDlg::RemoveAllClicked, this, &Tool::OnClearColors);
    PlaceBesidePicture(m_pDlg);
    return m_pDlg;
}

void ColorRangeSelectPrivate::DialogStarted()
{
    // A piece that floats lands before its picture is read.
    if (LexoUndoStack* history = GetHistory()) history->commit();
    RequestPreview();
}

void ColorRangeSelectPrivate::DialogFinished()
{
    m_JobFlags &= ~(ConversionWanted | PreviewWanted);
}

void ColorRangeSelectPrivate::DialogAccepted()
{
    ApplySelection();
    DialogRejected();
}

void ColorRangeSelectPrivate::DialogRejected()
{
    m_Colors.clear();
    m_CurrentColor = -1;
    if (m_pDlg) m_pDlg->deleteLater();
    m_pDlg = nullptr;
}

void ColorRangeSelectPrivate::OnKeyPress(int key)
{
    if (!m_pDlg || !m_pDlg->isVisible() || m_pDlg->isActiveWindow()) return;
    // A key closes what stands in front, as the choice of a color or a menu does.
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget()) return;

    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        m_pDlg->Accept();
    } else if (key == Qt::Key_Escape) {
        m_pDlg->Reject();
    }
}

QCursor ColorRangeSelectPrivate::GetCursor()
{
    return m_bOnPicture ? Qt::CrossCursor : Qt::ArrowCursor;
}

// ---- picking

bool ColorRangeSelectPrivate::IsOnPicture(const QPointF& scenePos) const
{
    return QRect(QPoint(), GetDocumentSize()).contains(PixelAt(scenePos));
}

void ColorRangeSelectPrivate::OnMousePressSlot(QPointF scenePos, Qt::MouseButton button)
{
    if (m_pDlg && button == Qt::LeftButton) OnProcessPointSlot(scenePos);
}

void ColorRangeSelectPrivate::OnMouseMoveSlot(QPointF scenePos, Qt::MouseButtons)
{
    const bool isOnPicture = IsOnPicture(scenePos);
    if (isOnPicture == m_bOnPicture) return;
    m_bOnPicture = isOnPicture;
    RefreshCursor();
}

void ColorRangeSelectPrivate::OnProcessPointSlot(QPointF scenePos)
{
    if (!m_pDlg || !IsOnPicture(scenePos)) return;
    const QPoint globalPos = GetDocumentView()->MapToGlobal(GetDocumentView()->MapFromScene(scenePos));
    if (m_pDlg->frameGeometry().contains(globalPos)) return;

    AddColor(LXColorInfoHelper::AverageColor(GetDocument(), MergedPicture, PixelAt(scenePos), 0));
}

void ColorRangeSelectPrivate::OnChooseColor()
{
    const QColor color = LXColorDlg::Choose(m_pDlg, tr("Choose a color"), Qt::white);
    if (m_pDlg && color.isValid()) AddColor(color);
}

void ColorRangeSelectPrivate::AddColor(const QColor& color)
{
    m_WaitingColor = color;
    if ((m_JobFlags & ConversionRuns) != 0) {
        m_JobFlags |= ConversionWanted;
        return;
    }
    OnProcessColorSlot();
}

void ColorRangeSelectPrivate::OnProcessColorSlot()
{
    m_JobFlags |= ConversionRuns;
    StartConversion(m_WaitingColor);
}

void ColorRangeSelectPrivate::StartConversion(const QColor& color)
{
    m_pConversion->setFuture(QtConcurrent::run(Convert, color, GetView()->GetColorTransform()));
}

void ColorRangeSelectPrivate::OnConversionRadyAt(int index)
{
    if (m_pDlg) AppendColor(m_pConversion->resultAt(index));
}

void ColorRangeSelectPrivate::AppendColor(const ConvertResult& result)
{
    const bool isTransparent = result.color.alpha() == 0;
    const QColor color = isTransparent ? QColor(Qt::white) : result.color;
    if (m_Colors.size() < MaxColors && !m_Colors.contains(color)) {
        m_pDlg->AddSwatch(isTransparent ? color : result.shown);
        m_Colors.append(color);
        QCoreApplication::processEvents();
        if (!m_pDlg) return;
        emit SelectColor(m_Colors.size() - 1);
    }
    RequestPreview();
}

void ColorRangeSelectPrivate::OnConversionFinishedSlot()
{
    m_JobFlags &= ~ConversionRuns;
    if ((m_JobFlags & ConversionWanted) == 0 || !m_pDlg) return;
    m_JobFlags &= ~ConversionWanted;
    OnProcessColorSlot();
}

// ---- the list

void ColorRangeSelectPrivate::OnSelectColor(int index)
{
    m_CurrentColor = index;
    if (m_pDlg) m_pDlg->SetCurrentSwatch(index);
}

void ColorRangeSelectPrivate::OnRemoveCurrentColor()
{
    if (m_CurrentColor < 0 || m_CurrentColor >= m_Colors.size()) return;

    m_Colors.removeAt(m_CurrentColor);
    m_pDlg->RemoveSwatch(m_CurrentColor);
    OnSelectColor(qMin(m_CurrentColor, m_Colors.size() - 1));
    RequestPreview();
}

void ColorRangeSelectPrivate::OnClearColors()
{
    m_Colors.clear();
    m_pDlg->RemoveSwatches();
    OnSelectColor(-1);
    RequestPreview();
}

ColorRange ColorRangeSelectPrivate::GetRange() const
{
    ColorRange range;
    range.tolerance = m_pDlg->GetTolerance();
    for (const QColor& color : m_Colors) {
        range.colors.emplace_back(color.rgba());
    }
    return range;
}

// ---- the preview

void ColorRangeSelectPrivate::OnToleranceChanged(int)
{
    RequestPreview();
}

void ColorRangeSelectPrivate::RequestPreview()
{
    if ((m_JobFlags & PreviewRuns) != 0) {
        m_JobFlags |= PreviewWanted;
        return;
    }
    if (StartPreview()) m_JobFlags |= PreviewRuns;
}

// False when the picture can't be read now: the preview stays as it is until the next request.
bool ColorRangeSelectPrivate::StartPreview()
{
    try {
        m_pPreview->setFuture(QtConcurrent::run(MakePreview, ReadPicture(GetDocument()), GetRange(),
                                                m_pDlg->GetPreviewBounds()));
        return true;
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
    return false;
}

void ColorRangeSelectPrivate::OnSelectionRadyAt(int index)
{
    if (m_pDlg) m_pDlg->SetPreview(m_pPreview->resultAt(index).preview);
}

void ColorRangeSelectPrivate::OnSelectionFinishedSlot()
{
    m_JobFlags &= ~PreviewRuns;
    if ((m_JobFlags & PreviewWanted) == 0 || !m_pDlg) return;
    m_JobFlags &= ~PreviewWanted;
    RequestPreview();
}

// ---- accepting

void ColorRangeSelectPrivate::ApplySelection()
{
    if (!m_pDlg || !GetDocument()) return;

    try {
        PushSelection(GetRange());
        return;
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
    Messages::ShowOperationError(tr("Cannot select the color range. Unexpected error occurred."));
}

void ColorRangeSelectPrivate::PushSelection(const ColorRange& range)
{
    LXDocumentInterface* document = GetDocument();
    const bool hadSelection = document->HasSelection();
    {
        const OverrideCursor waiting(Qt::WaitCursor);
        const LXImage32 mask = MakeColorRangeMask(ReadPicture(document), range);
        const QRect bound = LXSelectionMaskHelper::GetSelectionBoundRect(mask);
        std::unique_ptr<LexoCommand> command = MakeMaskSelectionCommand(
            document, CopyPart(mask, bound), bound.topLeft(), m_pDlg->GetOperation());
        command->setText(tr("Color range selection"));
        PushCommand(GetHistory(), std::move(command));
    }
    if (hadSelection && !document->HasSelection())
        Messages::ShowWarning(GetView(), tr("Warning. No pixels selected."));
}
