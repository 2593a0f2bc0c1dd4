#include "gui/StrokeJob.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LayerLocks.h"
#include "history/LayerMaskPaintCommand.h"
#include "history/LayerMaskPaintCommandData.h"
#include "history/LayerPaintCommand.h"
#include "history/LayerPaintCommandData.h"
#include "image/BlendMode.h"
#include "image/DabStroke.h"

#include <QCoreApplication>

#include <atomic>

namespace {
constexpr bool ApplyOnPush = true;
constexpr bool ChangeAlpha = false;
constexpr quint32 Opaque = 0xFF000000;
constexpr double Percent = 100.0;

/// Where a stroke may leave anything.
QRect LimitOf(const StrokeJob::Target& target)
{
    const QRect ground = target.keepAlpha ? target.geometry : target.geometry | target.canvas;
    return target.hasSelection ? ground & target.selectionRect : ground;
}

/// The target in the rectangle, grown where it ends before.
LXImage32 GroundIn(const QRect& rect, const StrokeJob::Target& target)
{
    LXImage32 ground(rect.width(), rect.height());
    ground.Fill(LXRGBA32i(target.ground));
    const QRect common = rect & target.geometry;
    BlendOn(target.image, common.translated(-target.geometry.topLeft()), BlendMode::Source, ground,
            common.translated(-rect.topLeft()), 1.0, ChangeAlpha);
    return ground;
}

template <class Command, class Data>
std::unique_ptr<LexoCommand> MakePaint(LXDocumentInterface* document, const StrokeJob::Target& target,
                                       const StrokeJob::Change& change)
{
    auto data = std::make_unique<Data>();
    data->SetLayerID(target.id);
    data->SetUndoImage(change.before, QRect());
    data->SetUndoGeometry(target.geometry);
    data->SetRedoGeometry(change.rect);
    data->SetRedoImage(change.after, QRect());
    auto command = std::make_unique<Command>(document, ApplyOnPush);
    command->setText(QCoreApplication::translate("StrokeJob", "Stroke path"));
    // The command has it now.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    return command;
}
} // namespace

StrokeJob::Target StrokeJob::Read(const LXDocumentInterface* document, unsigned int id, bool isMask)
{
    Target target{};
    target.id = id;
    target.isMask = isMask;
    target.canvas = QRect(QPoint(0, 0), document->GetDocumentSize());
    target.keepAlpha = !isMask && (document->GetLayerLockFlags(id) & LayerLocks::Transparency) != 0;
    bool reveals = false;
    if (isMask) document->GetMaskInverted(id, &reveals);
    target.ground = reveals ? Opaque : 0;
    {
        const LXDocumentLayerLockerForRead locker(document, id);
        target.image = isMask ? *document->GetMaskImage(id) : *document->GetLayerImage(id);
        target.geometry = isMask ? document->GetMaskGeometry(id) : document->GetLayerGeometry(id);
    }
    const LXDocumentSelectionLockerForRead locker(document);
    target.hasSelection = document->HasSelection();
    target.selection = document->GetSelectionMask();
    target.selectionRect = document->GetSelectionGeometry();
    return target;
}

StrokeJob::Change StrokeJob::Paint(const Target& target, const QPainterPath& path, const QColor& color,
                                   const ZKBrushSettings& settings, const Progress& progress)
{
    const DabStroke stroke(path, RoundDab(settings.size, settings.hardness / Percent),
                           settings.size * (settings.spacing / Percent), LimitOf(target));
    Change change;
    change.rect = stroke.Bounds();
    if (change.rect.isEmpty()) return change;

    std::atomic<int> done{0};
    const int all = stroke.CountTiles();
    const LXImage32 ink = stroke.Draw(LXRGBA32i(color.rgb()), [&] { progress(++done, all); });
    change.before = CopyPart(target.image, change.rect.translated(-target.geometry.topLeft()));
    change.after = GroundIn(change.rect, target);
    const unsigned int mode = target.isMask ? BlendMode::GrayToMask : BlendMode::Normal;
    const double opacity = settings.opacity / Percent;
    if (target.hasSelection) {
        BlendMaskOn(ink, ink.Rect(), mode, change.after, change.after.Rect(), opacity, target.selection,
                    change.rect.translated(-target.selectionRect.topLeft()), target.keepAlpha, ChangeAlpha);
    } else {
        BlendOn(ink, ink.Rect(), mode, change.after, change.after.Rect(), opacity, target.keepAlpha);
    }
    return change;
}

std::unique_ptr<LexoCommand> StrokeJob::MakeCommand(LXDocumentInterface* document, const Target& target,
                                                    const Change& change)
{
    if (target.isMask)
        return MakePaint<LayerMaskPaintCommand, LayerMaskPaintCommandData>(document, target, change);
    return MakePaint<LayerPaintCommand, LayerPaintCommandData>(document, target, change);
}
