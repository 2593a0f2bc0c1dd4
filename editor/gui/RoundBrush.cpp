#include "gui/RoundBrush.h"

#include "core/ZKApplication.h"
#include "core/ZKBrushToolManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/DocumentOf.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/StrokeProgress.h"
#include "gui/StrokeTarget.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PushOrRun.h"

#include <QPainterPath>
#include <QPointer>
#include <QScopeGuard>

#include <new>

namespace {
const QLatin1String SizeKey("RoundBrush/Size");
const QLatin1String HardnessKey("RoundBrush/Hardness");
const QLatin1String OpacityKey("RoundBrush/Opacity");
const QLatin1String SpacingKey("RoundBrush/Spacing");
constexpr int WholePercent = 100;
} // namespace

RoundBrush::RoundBrush(QObject* parent) : QObject(parent)
{
    ZKBrushToolManager::Register(Id, this);
}

RoundBrush::~RoundBrush()
{
    ZKBrushToolManager::Unregister(this);
}

QString RoundBrush::GetName() const
{
    return tr("Round brush");
}

ZKBrushSettings RoundBrush::GetSettings() const
{
    const auto read = [](QLatin1String key, int usual, int least, int most) {
        return qBound(least, ZKApplication::GetUserValue(key, usual).toInt(), most);
    };
    const ZKBrushSettings usual;
    ZKBrushSettings settings;
    settings.size = read(SizeKey, usual.size, 1, ZKBrushSettings::MaxSize);
    settings.hardness = read(HardnessKey, usual.hardness, 0, WholePercent);
    settings.opacity = read(OpacityKey, usual.opacity, 0, WholePercent);
    settings.spacing = read(SpacingKey, usual.spacing, 1, ZKBrushSettings::MaxSpacing);
    return settings;
}

void RoundBrush::SetSettings(const ZKBrushSettings& settings)
{
    ZKApplication::SetUserValue(SizeKey, settings.size);
    ZKApplication::SetUserValue(HardnessKey, settings.hardness);
    ZKApplication::SetUserValue(OpacityKey, settings.opacity);
    ZKApplication::SetUserValue(SpacingKey, settings.spacing);
}

void RoundBrush::StrokePath(const QPainterPath& path)
{
    const QPointer<ZKDocumentView> view = ViewOf(LXDocumentManager::GetDocumentArea()->GetActiveWindow());
    if (!view || path.isEmpty()) return;
    if (!MayPaint(view)) return;
    const int row = StrokeTarget::RowOf(view);

    // A floating piece lands before the pixels are read.
    if (LexoUndoStack* history = view->GetHistory()) history->commit();
    const QPointer<LXDocumentInterface> document = view->GetModel()->GetDocument();
    if (!document->Lock()) return;
    QString failure;
    {
        // It can be closed while the worker paints.
        const auto unlock = qScopeGuard([&document] {
            if (document) document->Unlock();
        });
        failure = Stroke(view, row, path, GetSettings());
    }
    if (failure.isEmpty() || !view) return;
    LXMessageBox::Critical(view->window(), tr("Operation error"),
                           tr("Cannot stroke the path.") + ' ' + failure);
}

bool RoundBrush::MayPaint(ZKDocumentView* view)
{
    const StrokeTarget::Obstacle obstacle = StrokeTarget::ObstacleOf(view);
    if (obstacle == StrokeTarget::Obstacle::Locked) {
        LXMessageBox::Warning(view->window(), tr("Zenkari"), tr("Cannot stroke. Layer is locked."));
    } else if (obstacle == StrokeTarget::Obstacle::NoPixels) {
        LXMessageBox::Warning(view->window(), tr("Zenkari"),
                              tr("Cannot stroke. The layer has no pixels of its own."));
    }
    return obstacle == StrokeTarget::Obstacle::None;
}

QString RoundBrush::Stroke(ZKDocumentView* view, int row, const QPainterPath& path,
                           const ZKBrushSettings& settings)
{
    const LXDocumentModel* model = view->GetModel();
    LXDocumentInterface* document = model->GetDocument();
    const bool isMask = model->GetMaskSelected(row);
    const QColor color = isMask ? ZKApplication::GetMaskForeground() : ZKApplication::GetForeground();
    try {
        const StrokeJob::Target target =
            StrokeJob::Read(document, static_cast<unsigned int>(row) + 1, isMask);
        // Not below the view, which may go first.
        StrokeProgress progress(view->window(), target, path, color, settings);
        connect(view, &ZKDocumentView::AboutDestroy, &progress, &StrokeProgress::OnCancel);
        if (progress.Paint())
            PushOrRun(view->GetHistory(), StrokeJob::MakeCommand(document, target, progress.GetChange()));
        return progress.GetFailure();
    } catch (const std::bad_alloc&) {
        return tr("There is not enough memory.");
    } catch (const std::exception& exception) {
        return QString::fromUtf8(exception.what());
    } catch (...) {
        return tr("Unexpected error occurred.");
    }
}
