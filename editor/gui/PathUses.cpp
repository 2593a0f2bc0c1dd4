#include "gui/PathUses.h"

#include "core/ZKBrushToolManager.h"
#include "core/ZKIBrushTool.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LXPathConvert.h"
#include "document/LXPathSelectionModel.h"
#include "document/LXPathsListModel.h"
#include "document/PathShape.h"
#include "gui/MakeSelectionOptDialog.h"
#include "gui/StrokeOptionsDialog.h"
#include "gui/StrokeTarget.h"
#include "gui/ZKDocumentView.h"
#include "guicore/GuardedStep.h"
#include "history/LexoUndoStack.h"
#include "history/PushOrRun.h"
#include "history/SelectionCommand.h"
#include "history/SelectionCommandData.h"

#include <QCoreApplication>
#include <QPainterPath>
#include <QPointer>

#include <memory>

namespace {
QString Words(const char* text)
{
    return QCoreApplication::translate("PathUses", text);
}

LXDocumentInterface* DocumentOf(const ZKDocumentView* view)
{
    return view->GetModel()->GetDocument();
}

const LXPathSelectionModel* ChoiceOf(const ZKDocumentView* view)
{
    return qobject_cast<const LXPathSelectionModel*>(view->GetPathSelection());
}

LXSubPaths CurrentPath(const ZKDocumentView* view)
{
    return DocumentOf(view)->GetPathListModel()->GetPath(ChoiceOf(view)->CurrentPath());
}

/// What is stroked: lines, whatever areas they stand for.
QPainterPath CurrentLines(const ZKDocumentView* view)
{
    const LXSubPaths path = CurrentPath(view);
    const int subPath = ChoiceOf(view)->CurrentSubpath();
    return subPath < 0 ? PathShape::Outline(path) : ConvertFrom(path.value(subPath).first);
}

/// What stands in the way of both uses.
QString WhyNotUse(const ZKDocumentView* view)
{
    if (!view) return Words(QT_TRANSLATE_NOOP("PathUses", "no picture is open"));
    if (DocumentOf(view)->GetLockState()) return Words(QT_TRANSLATE_NOOP("PathUses", "a tool is at work"));
    // A list that gets the focus makes its first row current without choosing it.
    if (!ChoiceOf(view)->isSelected(ChoiceOf(view)->currentIndex()))
        return Words(QT_TRANSLATE_NOOP("PathUses", "choose a path"));
    return QString();
}

QString EmptyPath()
{
    return Words(QT_TRANSLATE_NOOP("PathUses", "the path is empty"));
}

/// Runs a dialog of the view, which closes with the view: gives null when it wasn't accepted.
template <class Dialog>
std::unique_ptr<Dialog> Accepted(ZKDocumentView* view)
{
    const QPointer<Dialog> dialog = new Dialog(view);
    // Another document may come to the front, and nobody meant that one.
    QObject::connect(view, &ZKDocumentView::AboutDestroy, dialog, &LXDialog::Reject);
    const bool isAccepted = dialog->Exec() == 1;
    std::unique_ptr<Dialog> owned(dialog);
    return isAccepted ? std::move(owned) : nullptr;
}

SelectionCommandData::LogicalOp OperationOf(int option)
{
    switch (option) {
    case MakeSelectionOptDialog::New: return SelectionCommandData::Replace;
    case MakeSelectionOptDialog::Add: return SelectionCommandData::Unite;
    case MakeSelectionOptDialog::Subtract: return SelectionCommandData::Subtract;
    default: return SelectionCommandData::Intersect;
    }
}

std::unique_ptr<LexoCommand> MakeCommand(LXDocumentInterface* document, const QPainterPath& shape,
                                         SelectionCommandData::LogicalOp operation)
{
    auto data = std::make_unique<SelectionCommandData>();
    data->SetSelectionOp(operation);
    data->SetSelectionGeometry(shape);
    {
        const LXDocumentSelectionLockerForRead locker(document);
        data->SetUndoSel(document->GetSelectionMaskOffset(), document->GetSelectionMask());
    }
    auto command = std::make_unique<SelectionCommand>(document);
    command->setText(Words(QT_TRANSLATE_NOOP("PathUses", "Make selection from path")));
    // The command has it now.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}
} // namespace

QString PathUses::WhyNotStroke(const ZKDocumentView* view)
{
    QString reason = WhyNotUse(view);
    if (!reason.isEmpty()) return reason;
    if (CurrentLines(view).isEmpty()) return EmptyPath();
    switch (StrokeTarget::ObstacleOf(view)) {
    case StrokeTarget::Obstacle::NotOneLayer: return Words(QT_TRANSLATE_NOOP("PathUses", "select one layer"));
    case StrokeTarget::Obstacle::Locked: return Words(QT_TRANSLATE_NOOP("PathUses", "the layer is locked"));
    case StrokeTarget::Obstacle::NoPixels:
        return Words(QT_TRANSLATE_NOOP("PathUses", "the layer has no pixels of its own"));
    case StrokeTarget::Obstacle::None: break;
    }
    return QString();
}

QString PathUses::WhyNotSelect(const ZKDocumentView* view)
{
    const QString reason = WhyNotUse(view);
    return reason.isEmpty() && CurrentPath(view).isEmpty() ? EmptyPath() : reason;
}

void PathUses::Stroke(ZKDocumentView* view)
{
    if (!WhyNotStroke(view).isEmpty()) return;
    const QPainterPath lines = CurrentLines(view);
    const auto dialog = Accepted<StrokeOptionsDialog>(view);
    if (!dialog) return;
    if (ZKIBrushTool* brush = ZKBrushToolManager::GetPlugin(dialog->GetCurrentToolID()))
        brush->StrokePath(lines);
}

void PathUses::MakeSelection(ZKDocumentView* view)
{
    if (!WhyNotSelect(view).isEmpty()) return;
    LXDocumentInterface* document = DocumentOf(view);
    const QPainterPath shape = document->GetPathListModel()->CalcShape(CurrentPath(view));
    const auto dialog = Accepted<MakeSelectionOptDialog>(view);
    if (!dialog || document->GetLockState()) return;

    GuardedStep::Run(view, [&] {
        LexoUndoStack* history = view->GetHistory();
        // A floating piece lands before the selection is read.
        if (history) history->commit();
        PushOrRun(history, MakeCommand(document, shape, OperationOf(dialog->GetSelectionOption())));
    });
}
