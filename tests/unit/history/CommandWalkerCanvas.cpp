// The steps of the walker that change the canvas, paths and color samples.

#include "CommandWalker.h"

#include "document/LXColorSampleModel.h"
#include "document/LXPathsListModel.h"
#include "document/SelectionChannels.h"
#include "history/ChangeCommandHelper.h"
#include "history/ChangeSubpathCommandData.h"
#include "history/ChannelCommands.h"
#include "history/ColorSamplesCommand.h"
#include "history/ColorSamplesCommandDataAdd.h"
#include "history/ColorSamplesCommandDataClear.h"
#include "history/ColorSamplesCommandDataMove.h"
#include "history/ColorSamplesCommandDataRemove.h"
#include "history/GuideCommands.h"
#include "history/ImageSizeCommand.h"
#include "history/ImageSizeCommandData.h"
#include "history/InsertPathCommandData.h"
#include "history/InsertSubpathCommandData.h"
#include "history/LayerColors.h"
#include "history/LexoUndoStack.h"
#include "history/PathCommand.h"
#include "history/PathCommands.h"
#include "history/ProfileCommands.h"
#include "history/RemovePathCommandData.h"
#include "history/RemoveSubpathCommandData.h"
#include "history/SubpathCommand.h"
#include "history/TransformCommand.h"
#include "history/TransformCommandData.h"
#include "history/TransformPathCommandData.h"
#include "history/TransformSelectionCommand.h"
#include "history/TransformSelectionCommandData.h"

#include <QColor>
#include <QColorSpace>

using namespace DocumentFixture;

namespace {
/// Canvas sides between which the walk stays, so that it stays quick.
constexpr int LeastSide = 60;
constexpr int MostSide = 160;

/// Hidden parts grow with every enlargement.
bool HasLargeLayer(LXDocumentInterface* document)
{
    constexpr int large = 400;
    for (int id = 1; id <= document->GetModel()->rowCount(); ++id) {
        const QRect both = document->GetLayerGeometry(static_cast<unsigned int>(id)) |
                           document->GetMaskGeometry(static_cast<unsigned int>(id));
        if (both.width() > large || both.height() > large) return true;
    }
    return false;
}

LXPath SubPathOf(const LXPathsListModel* paths, int row, int subPath)
{
    LXPath elements;
    LXPathsListModel::LogicalOp operation = LXPathsListModel::None;
    paths->GetSubPath(row, subPath, elements, operation);
    return elements;
}
} // namespace

/// Pushes a command that is built of the document alone.
template <class Command>
void CommandWalker::Push(LexoCommandData* data)
{
    auto* command = new Command(m_pDocument);
    command->SetCommandData(data);
    m_pStack->push(command);
}

/// Of a box of the size at the origin, to somewhere on the canvas.
QTransform CommandWalker::PickTransform(const QSize& box)
{
    QTransform transform = QTransform::fromTranslate(Pick(-20, 60), Pick(-20, 60));
    switch (Pick(0, 3)) {
    case 0: return transform;
    case 1: return transform.scale(Pick(5, 20) / 10.0, Pick(5, 20) / 10.0);
    case 2: return transform.rotate(90).translate(0, -box.height());
    default: return transform.rotate(Pick(0, 359)).scale(0.9, 1.2);
    }
}

LXPath CommandWalker::PickPath()
{
    LXPath path;
    for (int i = Pick(2, 5); i > 0; --i) {
        const QPointF anchor(Pick(-20, 180) / 2.0, Pick(-20, 180) / 3.0);
        path << LXPathElement(anchor, anchor - PickDelta(), anchor + PickDelta());
    }
    return path;
}

void CommandWalker::TransformLayer()
{
    const unsigned int id = PickId();
    const bool isMask = PickBool() && m_pDocument->GetMaskImage(id);
    m_pDocument->GetModel()->SetMaskSelected(static_cast<int>(id) - 1, isMask);
    const LXImage32 image = isMask ? *m_pDocument->GetMaskImage(id) : *m_pDocument->GetLayerImage(id);
    const QRect rect = isMask ? m_pDocument->GetMaskGeometry(id) : m_pDocument->GetLayerGeometry(id);
    const QTransform transform = PickTransform(rect.size());
    auto* data = new TransformCommandData;
    data->SetUndoLayerImage(id, image, rect.topLeft());
    data->SetTransform(transform);
    data->SetOldTransform(m_pDocument->GetModel()->GetTextLayerTransformation(static_cast<int>(id) - 1));
    auto* command = new TransformCommand(m_pDocument, PickBool());
    command->SetCommandData(data);
    m_pStack->push(command);
}

void CommandWalker::TransformSelection()
{
    if (!m_pDocument->HasSelection()) return SelectMask();
    auto* data = new TransformSelectionCommandData;
    data->SetUndoImage(m_pDocument->GetSelectionMask(), m_pDocument->GetSelectionMaskOffset());
    data->SetTransform(PickTransform(m_pDocument->GetSelectionGeometry().size()));
    Push<TransformSelectionCommand>(data);
}

void CommandWalker::ChangeCanvas()
{
    const QSize canvas = m_pDocument->GetDocumentSize();
    QSize size(Pick(LeastSide, MostSide), Pick(LeastSide, MostSide));
    QTransform transform = QTransform::fromTranslate(Pick(-15, 15), Pick(-15, 15));
    bool isResampled = false;
    switch (Pick(0, 3)) {
    case 0:
        transform = QTransform().translate(canvas.height(), 0).rotate(90);
        size = canvas.transposed();
        break;
    case 1:
        transform = QTransform().translate(canvas.width(), 0).scale(-1, 1);
        size = canvas;
        break;
    case 2:
        transform.rotate(Pick(-30, 30) + 0.5);
        isResampled = true;
        break;
    default: break;
    }
    const bool isHiding = PickBool() && !HasLargeLayer(m_pDocument);
    const QColor extension = PickBool() ? QColor::fromRgba(m_Random()) : QColor();
    // An idle one is refused and leaves no step.
    if (!ChangeCommandHelper::MakeCropCommand(m_pDocument, "crop", transform, size, isHiding, isResampled,
                                              extension, m_pStack)) {
        PaintLayer();
    }
}

void CommandWalker::ChangeImageSize()
{
    const QSize canvas = m_pDocument->GetDocumentSize();
    const auto near = [this](int side) { return qBound(LeastSide, side * Pick(80, 120) / 100, MostSide); };
    auto* data = new ImageSizeCommandData;
    data->Init(m_pDocument, canvas, m_pDocument->GetDPI(), QSize(near(canvas.width()), near(canvas.height())),
               Pick(72, 600), Pick(0, 3) != 0, static_cast<ImageSizeCommandData::ResampleType>(Pick(0, 2)));
    Push<ImageSizeCommand>(data);
}

void CommandWalker::ChangePath()
{
    const LXPathsListModel* paths = m_pDocument->GetPathListModel();
    const int count = paths->rowCount();
    const int row = Pick(0, qMax(0, count - 1));
    const int choice = count == 0 ? 0 : Pick(0, 9);
    if (choice == 0 && count < 4) {
        auto* data = new InsertPathCommandData;
        data->SetPathIndex(Pick(0, count));
        data->SetPathName("path");
        return Push<PathCommand>(data);
    }
    if (choice <= 1) {
        auto* data = new RemovePathCommandData;
        data->SetPathIndex(row);
        data->SetPathName(paths->GetPathName(row));
        data->SetPath(paths->GetPath(row));
        return Push<PathCommand>(data);
    }
    switch (choice) {
    case 2: return m_pStack->push(PathCommands::Move(m_pDocument, row, Pick(0, count - 1)));
    case 3: return m_pStack->push(PathCommands::Rename(m_pDocument, row, QString::number(m_Random())));
    case 4: return m_pStack->push(PathCommands::SetVisible(m_pDocument, row, PickBool()));
    default: return ChangeSubPath(row);
    }
}

void CommandWalker::ChangeSubPath(int row)
{
    const LXPathsListModel* paths = m_pDocument->GetPathListModel();
    const int count = paths->GetSubPathsCount(row);
    const int subPath = Pick(0, qMax(0, count - 1));
    const int choice = count == 0 ? 0 : Pick(0, 3);
    if (choice == 0 && count < 4) {
        auto* data = new InsertSubpathCommandData;
        data->SetPathIndex(row);
        data->SetSubpathIndex(Pick(0, count));
        data->SetLogicalOp(Pick(0, 4));
        data->SetData(PickPath());
        return Push<SubpathCommand>(data);
    }
    if (choice <= 1) {
        auto* data = new RemoveSubpathCommandData;
        data->SetPathIndex(row);
        data->SetSubpathIndex(subPath);
        data->SetLogicalOp(paths->GetPath(row)[subPath].second);
        data->SetUndoData(SubPathOf(paths, row, subPath));
        return Push<SubpathCommand>(data);
    }
    if (choice == 2) {
        auto* data = new ChangeSubpathCommandData;
        data->SetPathIndex(row);
        data->SetSubpathIndex(subPath);
        data->SetUndoData(SubPathOf(paths, row, subPath));
        data->SetRedoData(PickPath());
        return Push<SubpathCommand>(data);
    }
    auto* data = new TransformPathCommandData;
    data->SetPathIndex(row);
    data->SetSubpathIndex(PickBool() ? subPath : -1);
    data->SetPath(paths->GetPath(row));
    data->SetTransform(PickTransform(QSize(50, 50)));
    Push<PathCommand>(data);
}

void CommandWalker::ChangeSample()
{
    LXColorSampleModel* samples = m_pDocument->GetColorSamples();
    const int count = samples->rowCount();
    const int row = Pick(0, qMax(0, count - 1));
    const QPoint point = PickRect(5).topLeft();
    const int choice = count == 0 ? 0 : Pick(0, 5);
    if (choice <= 1 && count < 4) {
        auto* data = new ColorSamplesCommandDataAdd;
        data->SetSamplePoint(point);
        return Push<ColorSamplesCommand>(data);
    }
    if (choice <= 3) {
        auto* data = new ColorSamplesCommandDataMove;
        data->SetData(row, samples->GetPoint(row));
        // The sample is where it was dragged before the step is taken.
        m_pStack->commit();
        samples->SetPoint(row, point);
        return Push<ColorSamplesCommand>(data);
    }
    if (choice == 4) {
        auto* data = new ColorSamplesCommandDataRemove;
        data->SetSamplePoint(row, samples->GetPoint(row));
        return Push<ColorSamplesCommand>(data);
    }
    std::vector<QPoint> points;
    points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        points.push_back(samples->GetPoint(i));
    }
    auto* data = new ColorSamplesCommandDataClear;
    data->SetData(points);
    Push<ColorSamplesCommand>(data);
}

void CommandWalker::ChangeGuides()
{
    const int count = m_pDocument->GetGuides().size();
    const int choice = count == 0 ? 0 : Pick(0, 9);
    const double position = Pick(0, LeastSide) + 0.25;
    if (choice == 9) return m_pStack->push(GuideCommands::Clear(m_pDocument));
    if (choice < 5 && count < 6) {
        const Qt::Orientation orientation = PickBool() ? Qt::Horizontal : Qt::Vertical;
        return m_pStack->push(GuideCommands::Add(m_pDocument, {orientation, position}));
    }
    m_pStack->push(GuideCommands::Move(m_pDocument, Pick(0, count - 1), position));
}

void CommandWalker::ChangeChannels()
{
    const int count = ChannelsOf(m_pDocument)->All().size();
    const int choice = count == 0 ? 0 : Pick(0, 3);
    // One that a crop left empty deselects like any other.
    const auto op = static_cast<SelectionCommandData::LogicalOp>(Pick(0, 3));
    if (choice == 1) return m_pStack->push(ChannelCommands::Delete(m_pDocument, Pick(0, count - 1)));
    if (choice == 2) return m_pStack->push(ChannelCommands::Load(m_pDocument, Pick(0, count - 1), op));
    if (!m_pDocument->HasSelection()) return SelectMask();
    // What moves is put down before it is read.
    m_pStack->commit();
    m_pStack->push(ChannelCommands::Save(m_pDocument, QString::number(Pick(1, 3))));
}

void CommandWalker::ChangeProfile()
{
    static const QVector<ZKCMSProfile> profiles{
        ZKCMSProfile::SRGB(), ZKCMSProfile(QColorSpace(QColorSpace::AdobeRgb).iccProfile()),
        ZKCMSProfile(QColorSpace(QColorSpace::ProPhotoRgb).iccProfile())};
    const int present = profiles.indexOf(m_pDocument->GetICCProfile());
    const ZKCMSProfile& other = profiles[(present + Pick(1, 2)) % profiles.size()];
    if (PickBool()) return m_pStack->push(ProfileCommands::Assign(m_pDocument, other));

    m_pStack->commit();
    const LayerColors before = LayerColors::Of(m_pDocument);
    const LayerColors after = before.Converted(other);
    m_pStack->push(ProfileCommands::Convert(m_pDocument, before, after));
}
