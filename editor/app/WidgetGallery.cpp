#include "app/WidgetGallery.h"

#include "app/PathSamples.h"
#include "app/Tour.h"
#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "geometryengine/ControlNode.h"
#include "geometryengine/PathStrokeItem.h"
#include "geometryengine/PolylineItem.h"
#include "geometryengine/RectangleItem.h"
#include "gui/CameraView.h"
#include "gui/HistogramWidget.h"
#include "gui/LXAnchorSelection.h"
#include "gui/LXColorButton.h"
#include "gui/LXColorDlg.h"
#include "gui/LXFillOptionsDialog.h"
#include "gui/LXOperationProgressDlg.h"
#include "gui/LXUndefinedOperationProgress.h"
#include "gui/LexoCustomShapePresetModel.h"
#include "gui/MakeSelectionOptDialog.h"
#include "gui/NavigatorWidget.h"
#include "gui/PatternSelectWidget.h"
#include "gui/RecentColors.h"
#include "gui/StrokeOptionsDialog.h"
#include "gui/TransformationCenterPointControl.h"
#include "gui/ZKButtonsContainer.h"
#include "guicore/LXColorComboBox.h"
#include "guicore/LXMessageBox.h"
#include "guicore/LXWidget.h"
#include "guicore/LexoListView.h"
#include "guicore/LexoPopupDialog.h"
#include "utils/ZKIconHelper.h"

#include <QAction>
#include <QCheckBox>
#include <QFileInfo>
#include <QFont>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainterPath>
#include <QPixmap>
#include <QVBoxLayout>

namespace {
const QColor SkyColor(0xF2, 0xA6, 0x5A);
const QColor TranslucentColor(0x3A, 0x7B, 0xD5, 0x80);

using Ground = WidgetGallery::Ground;

QString Tr(const char* text)
{
    return WidgetGallery::tr(text);
}

// ---- dialogs

std::unique_ptr<QWidget> MakeMessage(const Ground& ground)
{
    auto question = std::make_unique<LXMessageBox>(ground.window);
    question->SetIcon(LXMessageBox::WarningIcon);
    question->SetWindowTitle(QGuiApplication::applicationDisplayName());
    question->SetText(Tr("“%1” has changed. Save it before it closes?").arg(QStringLiteral("lake.jpg")));
    for (const LXMessageBox::Button button :
         {LXMessageBox::Save, LXMessageBox::Discard, LXMessageBox::Cancel})
        question->AddButton(button);
    return question;
}

std::unique_ptr<QWidget> MakeProgress(const Ground& ground)
{
    auto progress = std::make_unique<LXOperationProgressDlg>(ground.window);
    progress->SetProgressRange(0, 100);
    progress->SetProgressPos(40);
    progress->SetProgressLabel(Tr("Opening “%1”…").arg(QStringLiteral("lake.jpg")));
    QObject::connect(progress.get(), &LXOperationProgressDlg::Cancelled, progress.get(), &QWidget::hide);
    return progress;
}

class NoWork : public LXUndefinedOperationProgress
{
public:
    using LXUndefinedOperationProgress::LXUndefinedOperationProgress;

protected:
    void Run() override {}
};

std::unique_ptr<QWidget> MakeEndlessProgress(const Ground& ground)
{
    auto progress = std::make_unique<NoWork>(ground.window);
    progress->SetProgressLabel(Tr("Looking at the colors…"));
    return progress;
}

std::unique_ptr<QWidget> MakeFillOptions(const Ground& ground)
{
    return std::make_unique<LXFillOptionsDialog>(ground.window);
}

std::unique_ptr<QWidget> MakeColorDialog(const Ground& ground)
{
    auto dialog = std::make_unique<LXColorDlg>(ground.window);
    dialog->SetColor(SkyColor);
    return dialog;
}

std::unique_ptr<QWidget> MakeColorDialogWithAlpha(const Ground& ground)
{
    for (int step = 0; step < 9; ++step)
        RecentColors::Add(QColor(step * 28, 90, 255 - step * 28, step == 4 ? 0x80 : 0xff));
    auto dialog = std::make_unique<LXColorDlg>(ground.window);
    dialog->SetAlphaEnabled(true);
    dialog->SetColor(TranslucentColor);
    return dialog;
}

std::unique_ptr<QWidget> MakePopupDialog(const Ground& ground)
{
    auto dialog = std::make_unique<LexoPopupDialog>(ground.window);
    auto* layout = new QVBoxLayout(dialog.get());
    layout->addWidget(new QCheckBox(Tr("From center"), dialog.get()));
    layout->addWidget(new QCheckBox(Tr("Snap to pixels"), dialog.get()));
    return dialog;
}

// ---- controls

std::unique_ptr<QWidget> MakeOptionsWidget(bool hasTitle)
{
    auto widget = std::make_unique<LXWidget>();
    widget->setWindowTitle(Tr("Pen tool options"));
    widget->SetTitleBarVisible(hasTitle);
    widget->SetResizable(hasTitle);
    auto* layout = new QVBoxLayout(widget.get());
    layout->addWidget(new QCheckBox(Tr("Rubber band"), widget.get()));
    return widget;
}

std::unique_ptr<QWidget> MakePanelWidget(const Ground&)
{
    return MakeOptionsWidget(true);
}

std::unique_ptr<QWidget> MakePopupWidget(const Ground&)
{
    return MakeOptionsWidget(false);
}

/// Opaque, translucent, and off.
std::unique_ptr<QWidget> MakeColorButtons(const Ground&)
{
    auto row = std::make_unique<QWidget>();
    auto* layout = new QHBoxLayout(row.get());
    for (const QColor& color : {SkyColor, TranslucentColor, SkyColor}) {
        auto* button = new LXColorButton(row.get());
        button->SetColor(color);
        button->setEnabled(layout->count() < 2);
        layout->addWidget(button);
    }
    return row;
}

std::unique_ptr<QWidget> MakeColorBox(const Ground&)
{
    auto box = std::make_unique<LXColorComboBox>();
    for (int step = 0; step < 6; ++step)
        box->AddColor(QColor(255, step * 51, 0));
    box->setCurrentIndex(3);
    return box;
}

std::unique_ptr<QWidget> MakeShapeList(const Ground&)
{
    auto list = std::make_unique<LexoListView>();
    list->setModel(new LexoCustomShapePresetModel(list.get()));
    list->setCurrentIndex(list->model()->index(0, 0));
    list->resize(list->sizeHint());
    return list;
}

std::unique_ptr<QWidget> MakePatternList(const Ground&)
{
    auto list = std::make_unique<PatternSelectWidget>();
    for (int i = 0; i < ZKApplication::GetPatternCount(); ++i) {
        const QString file = ZKApplication::GetPatternFile(i);
        list->AddItem(file, QFileInfo(file).completeBaseName());
    }
    list->SelectItem(1);
    return list;
}

/// One tool; one tool that is chosen; one button for several.
std::unique_ptr<QWidget> MakeToolButtons(const Ground&)
{
    auto row = std::make_unique<QWidget>();
    auto* layout = new QHBoxLayout(row.get());
    const auto makeAction = [&row](const char* name) {
        return new QAction(ZKIconHelper::DisabledIcon(QLatin1String(name)), Tr("A tool"), row.get());
    };
    for (const bool isChosen : {false, true}) {
        auto* button = new LToolBoxButton(row.get());
        button->setDefaultAction(makeAction("theme:tool-bar-bucket.png"));
        button->setCheckable(true);
        button->setChecked(isChosen);
        layout->addWidget(button);
    }
    auto* several = new ZKButtonsContainer(row.get());
    for (const char* name : {"theme:picker.png", "theme:sampler.png"}) {
        several->BindAction(new ZKActivateAction(row.get()), Tr("A tool"),
                            ZKIconHelper::DisabledIcon(QLatin1String(name)));
    }
    layout->addWidget(several);
    return row;
}

// ---- items of scenes

/// A target with four arms that leave its middle free.
QPainterPath TargetShape()
{
    constexpr double ring = 5;
    constexpr double arm = 9;
    QPainterPath shape;
    shape.addEllipse(QPointF(), ring, ring);
    for (const QPointF& direction : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1)}) {
        shape.moveTo(direction * ring);
        shape.lineTo(direction * arm);
    }
    return shape;
}

/// A handle, a chosen one, and both with a shape and a number.
void AddHandles(QGraphicsScene& scene, const QPointF& corner, bool inverse)
{
    QFont font;
    font.setPointSize(8);
    for (int i = 0; i < 4; ++i) {
        auto* node = new ControlNode;
        scene.addItem(node);
        node->setPos(corner + QPointF(18 + 26 * i, 16));
        node->useInverseColor(inverse);
        node->setSunken(i % 2 == 1);
        if (i < 2) continue;
        node->setNodeShape(TargetShape());
        node->setLabel(QString::number(i), font);
    }
}

std::unique_ptr<QWidget> MakeHandles(const Ground&)
{
    return WidgetGallery::OnGrounds([](QGraphicsScene& scene) {
        for (int i = 0; i < WidgetGallery::GroundCount; ++i) {
            const QPointF corner(i * WidgetGallery::GroundSize, 0);
            AddHandles(scene, corner + QPointF(0, 10), false);
            AddHandles(scene, corner + QPointF(0, 60), true);
        }
    });
}

/// A rectangle to be dragged, a polyline with its nodes, and a line in inverse.
std::unique_ptr<QWidget> MakeOutlines(const Ground&)
{
    return WidgetGallery::OnGrounds([](QGraphicsScene& scene) {
        for (int i = 0; i < WidgetGallery::GroundCount; ++i) {
            const QPointF corner(i * WidgetGallery::GroundSize, 0);
            auto* rectangle = new RectangleItem;
            scene.addItem(rectangle);
            rectangle->setRect(QRectF(corner + QPointF(16, 14), QSizeF(60, 36)));
            rectangle->setMovable(true);

            auto* polyline = new PolylineItem;
            scene.addItem(polyline);
            polyline->editActivate(true);
            for (const QPointF& point : {QPointF(14, 80), QPointF(60, 64), QPointF(106, 82)})
                polyline->addPoint(corner + point);

            QPainterPath line(corner + QPointF(10, 110));
            line.cubicTo(corner + QPointF(40, 80), corner + QPointF(80, 130), corner + QPointF(110, 14));
            auto* stroke = new PathStrokeItem;
            stroke->setPath(line);
            stroke->useInverseColor(true);
            scene.addItem(stroke);
        }
    });
}

std::unique_ptr<QWidget> MakePathEditor(const Ground&)
{
    return WidgetGallery::OnGrounds(PathSamples::AddEditors);
}

std::unique_ptr<QWidget> MakePathCreator(const Ground&)
{
    return WidgetGallery::OnGrounds(PathSamples::AddCreators);
}

/// A canvas that grows, one that shrinks, one that grows to the left and down.
std::unique_ptr<QWidget> MakeAnchors(const Ground&)
{
    auto row = std::make_unique<QWidget>();
    auto* layout = new QHBoxLayout(row.get());
    layout->addWidget(new LXAnchorSelection(row.get()));
    auto* shrinking = new LXAnchorSelection(row.get());
    shrinking->ShrinkHorizontal(true);
    shrinking->ShrinkVertical(true);
    layout->addWidget(shrinking);
    auto* atCorner = new LXAnchorSelection(row.get());
    atCorner->SetState(LXAnchorSelection::TopRight);
    layout->addWidget(atCorner);
    return row;
}

/// With a point somewhere else, in the middle, at a corner, and off.
std::unique_ptr<QWidget> MakeCenterPoints(const Ground&)
{
    using Control = TransformationCenterPointControl;
    auto row = std::make_unique<QWidget>();
    auto* layout = new QHBoxLayout(row.get());
    for (const Control::ControlState state : {Control::None, Control::Center, Control::BottomRight}) {
        auto* control = new Control(row.get());
        control->SetState(state);
        layout->addWidget(control);
    }
    auto* off = new Control(row.get());
    off->SetState(Control::Left);
    off->setEnabled(false);
    layout->addWidget(off);
    return row;
}

std::unique_ptr<QWidget> MakeSelectionOptions(const Ground& ground)
{
    return std::make_unique<MakeSelectionOptDialog>(ground.window);
}

std::unique_ptr<QWidget> MakeStrokeOptions(const Ground& ground)
{
    return std::make_unique<StrokeOptionsDialog>(ground.window);
}

// ---- views

std::unique_ptr<QWidget> MakeCamera(const Ground& ground)
{
    auto camera = std::make_unique<CameraView>();
    const QSize size = ground.document->GetDocumentSize();
    camera->SetDocument(ground.document);
    camera->SetLookPoint(QPointF(size.width() * 0.7, size.height() * 0.55));
    camera->SetScaleFactor(10);
    camera->SetGridType(CameraView::StandardGrid);
    return camera;
}

std::unique_ptr<QWidget> MakeNavigator(const Ground& ground)
{
    auto navigator = std::make_unique<NavigatorWidget>();
    const QSize size = ground.document->GetDocumentSize();
    navigator->SetDocument(ground.document, nullptr);
    navigator->SetViewRect(
        QRectF(size.width() * 0.3, size.height() * 0.25, size.width() * 0.4, size.height() * 0.35));
    return navigator;
}

std::unique_ptr<QWidget> MakeHistogram(const Ground& ground)
{
    auto histogram = std::make_unique<HistogramWidget>();
    histogram->SetDocument(ground.document);
    histogram->SetLevelRange(60, 210);
    return histogram;
}
} // namespace

const QVector<WidgetGallery::Sample>& WidgetGallery::Samples()
{
    static const QVector<Sample> samples{
        {"message", MakeMessage},
        {"progress", MakeProgress},
        {"progress-endless", MakeEndlessProgress},
        {"fill-options", MakeFillOptions},
        {"patterns", MakePatternList},
        {"selection-options", MakeSelectionOptions},
        {"stroke-options", MakeStrokeOptions},
        {"anchor", MakeAnchors},
        {"center-point", MakeCenterPoints},
        {"tool-buttons", MakeToolButtons},
        {"handles", MakeHandles},
        {"outlines", MakeOutlines},
        {"color", MakeColorDialog},
        {"color-with-alpha", MakeColorDialogWithAlpha},
        {"color-buttons", MakeColorButtons},
        {"color-box", MakeColorBox},
        {"popup-dialog", MakePopupDialog},
        {"widget-with-title", MakePanelWidget},
        {"widget-without-title", MakePopupWidget},
        {"shapes", MakeShapeList},
        {"path-editor", MakePathEditor},
        {"path-creator", MakePathCreator},
        {"camera", MakeCamera},
        {"navigator", MakeNavigator},
        {"histogram", MakeHistogram},
    };
    return samples;
}

std::unique_ptr<QWidget> WidgetGallery::OnGrounds(void (*add)(QGraphicsScene& scene))
{
    auto view = std::make_unique<QGraphicsView>();
    auto* scene = new QGraphicsScene(0, 0, GroundCount * GroundSize, GroundSize, view.get());
    const QSize square(GroundSize, GroundSize);
    const QPixmap photo =
        QPixmap(Tour::DefaultFile()).scaled(square, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QBrush grounds[GroundCount] = {Qt::white, Qt::black, QColor(128, 128, 128), photo};
    for (int i = 0; i < GroundCount; ++i) {
        QGraphicsRectItem* item = scene->addRect(QRectF(QPointF(0, 0), square), Qt::NoPen, grounds[i]);
        item->setPos(i * GroundSize, 0);
    }
    add(*scene);
    view->setScene(scene);
    view->setFrameStyle(QFrame::NoFrame);
    view->setFixedSize(scene->sceneRect().size().toSize());
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return view;
}
