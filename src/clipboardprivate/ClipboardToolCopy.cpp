#include "clipboardprivate/ClipboardGuard.h"
#include "clipboardprivate/ClipboardTool.h"

#include "common/OverrideCursor.h"
#include "common/PushCommand.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/ClipboardRole.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMimePictures.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoCommand.h"
#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QMainWindow>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace {
constexpr bool ApplyOnPush = true;
constexpr int ThumbnailSide = 32;
constexpr int NoLayer = -1;
constexpr unsigned int MergedPicture = 0;
constexpr int BytesPerPixel = 4;

// Columns of the list.
constexpr int StateColumn = 3;
constexpr int CellsOfRow = 4;

QString StateText(const QString& what)
{
    return QStringLiteral("ARGB32\n%1").arg(what);
}

using Cell = std::unique_ptr<QStandardItem>;

Cell MakeCell(const QString& text)
{
    auto cell = std::make_unique<QStandardItem>(text);
    cell->setEditable(false);
    cell->setCheckable(false);
    return cell;
}

Cell MakeTextCell(const QString& text)
{
    Cell cell = MakeCell(text);
    cell->setTextAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    return cell;
}

QPixmap Thumbnail(const LXImage32& image)
{
    QPixmap thumbnail(ThumbnailSide, ThumbnailSide);
    thumbnail.fill(Qt::transparent);
    QPainter painter(&thumbnail);
    painter.drawImage(0, 0, ClipboardPixels::FitInto(image, ThumbnailSide));
    return thumbnail;
}

bool IsTooLargeToCut(const QRect& selection)
{
    return selection.width() > ClipboardPixels::LongestSide ||
           selection.height() > ClipboardPixels::LongestSide;
}
} // namespace

// ---- reading

ClipboardPixels::Placed ClipboardTool::ReadPixels(const Target& target) const
{
    const LXDocumentLayerLockerForRead locker(m_pDocument, target.layerId);
    const bool isMask = target.pixels == PaintTarget::Mask;
    const LXImage32* image =
        isMask ? m_pDocument->GetMaskImage(target.layerId) : m_pDocument->GetLayerImage(target.layerId);
    const QRect geometry =
        isMask ? m_pDocument->GetMaskGeometry(target.layerId) : m_pDocument->GetLayerGeometry(target.layerId);
    if (!image) return {};
    return {*image, geometry.topLeft()};
}

ClipboardPixels::Placed ClipboardTool::ReadSelection() const
{
    const LXDocumentSelectionLockerForRead locker(m_pDocument);
    return {m_pDocument->GetSelectionMask(), m_pDocument->GetSelectionMaskOffset()};
}

// ---- copy and cut

void ClipboardTool::Copy()
{
    GuardClipboard(ZK_HERE, tr("Cannot copy. Unexpected error occurred."), [this] { CopySelection(); });
}

void ClipboardTool::CopySelection()
{
    const bool isMerged = std::exchange(m_bMergedPending, false);
    // Who holds the document may have pixels of it in the hand.
    if (!m_pDocument || !m_pView || IsDocumentLocked()) return;

    const int layer = isMerged ? int(MergedPicture) : CurrentLayerNumber();
    if (layer == NoLayer || !m_pDocument->HasSelection()) return;

    const OverrideCursor waiting(Qt::WaitCursor);
    LandFloatingPieces();
    const Target target{static_cast<unsigned int>(layer),
                        IsMaskTarget(layer) ? PaintTarget::Mask : PaintTarget::Layer};
    const ClipboardPixels::Placed source = ReadPixels(target);
    ClipboardPixels::Placed lifted = target.pixels == PaintTarget::Mask
                                         ? ClipboardPixels::LiftMask(source, ReadSelection())
                                         : ClipboardPixels::Lift(source, ReadSelection());
    const bool isCut = std::exchange(m_bCutPending, false);
    // A selection beside the layer holds no pixel.
    if (lifted.image.IsNull()) return;

    lifted.image.m_Profile = m_pDocument->GetICCProfile();
    AddRow(lifted.image, lifted.topLeft, isCut ? tr("Cut") : tr("Copied"));
    UpdateActions(HasItems());
    PutOnSystemClipboard(lifted.image);
}

void ClipboardTool::Cut()
{
    m_bCutPending = true;
    const int layer = m_pDocument && m_pView ? CurrentLayerNumber() : NoLayer;
    if (layer < 1 || !m_pDocument->HasSelection() || IsDocumentLocked() || m_bPastingOnMask) {
        m_bCutPending = false;
        m_bMergedPending = false;
        return;
    }
    const Target target{static_cast<unsigned int>(layer),
                        IsMaskTarget(layer) ? PaintTarget::Mask : PaintTarget::Layer};
    GuardClipboard(ZK_HERE, tr("Cannot cut. Unexpected error occurred."), [&] {
        CopySelection();
        if (MayPaintOn(target)) CutSelection(target);
    });
    m_bCutPending = false;
}

void ClipboardTool::CutSelection(const Target& target)
{
    if (IsTooLargeToCut(m_pDocument->GetSelectionGeometry())) return;

    const ClipboardPixels::Placed selection = ReadSelection();
    PaintChange change;
    {
        const OverrideCursor waiting(Qt::WaitCursor);
        const ClipboardPixels::Placed source = ReadPixels(target);
        const ClipboardPixels::Change pixels =
            target.pixels == PaintTarget::Mask
                ? ClipboardPixels::CutMask(source, selection,
                                           LXRGBA32i(ZKApplication::GetMaskBackground().rgba()))
                : ClipboardPixels::Cut(source, selection);
        change = {target.layerId, pixels.before, pixels.after, source.Rect(), selection.Rect()};
    }
    Push(change, target.pixels, tr("Cut"));
}

void ClipboardTool::Push(const PaintChange& change, PaintTarget target, const QString& text)
{
    std::unique_ptr<LexoCommand> command = MakePaintCommand(m_pDocument, target, change, ApplyOnPush);
    command->setText(text);
    PushCommand(GetHistory(), std::move(command));
}

// ---- locks

bool ClipboardTool::MayPaintOn(const Target& target)
{
    const bool hasPixels =
        target.pixels == PaintTarget::Mask || m_pDocument->GetLayerKind(target.layerId) == LayerKind::Raster;
    return hasPixels && !IsLocked(target.layerId);
}

bool ClipboardTool::IsLocked(unsigned int layerId)
{
    const unsigned int locks = m_pDocument->GetLayerLockFlags(layerId) & LayerLocks::Every;
    if (locks >= LayerLocks::All) {
        Messages::ShowWarning(LXMdiArea::MainWindow(), tr("Warning. Layer is locked!"));
        return true;
    }
    if ((locks & LayerLocks::Pixels) != 0) {
        Messages::ShowWarning(LXMdiArea::MainWindow(), tr("Warning. Image pixels are locked!"));
        return true;
    }
    return false;
}

// ---- the list

void ClipboardTool::AddRow(const LXImage32& image, const QVariant& origin, const QString& what)
{
    const QString name = QApplication::activeWindow() ? tr("Untitled ") : tr("Imported ");
    const ClipboardItem item{image, name + QString::number(m_Items.size() + 1),
                             ClipboardPixels::Checksum(image)};
    // What was copied before is not kept twice, but it is what was copied last.
    const int known = FindItem(item);
    if (known >= 0) {
        // Back from another program they come without a place.
        if (origin.isValid()) RefreshRow(known, image, origin);
        MakeCurrent(known);
        return;
    }
    m_Items.reserve(m_Items.size() + 1);
    const QList<QStandardItem*> row = MakeRow(item, origin, what);
    m_Items.append(item);
    m_CurrentRow = -1;
    m_pModel->appendRow(row);
    MakeCurrent(m_Items.size() - 1);
}

void ClipboardTool::RefreshRow(int row, const LXImage32& image, const QVariant& origin)
{
    // The same values may be other colors.
    m_Items[row].m_Image = image;
    QStandardItem* picture = m_pModel->item(row);
    picture->setData(QVariant::fromValue(image), ClipboardRole::Image);
    picture->setData(origin, ClipboardRole::Origin);
}

QList<QStandardItem*> ClipboardTool::MakeRow(const ClipboardItem& item, const QVariant& origin,
                                             const QString& what) const
{
    const int width = item.m_Image.Width();
    const int height = item.m_Image.Height();
    Cell picture = MakeCell(QString());
    picture->setIcon(ZKIconHelper::DisabledIcon(Thumbnail(item.m_Image)));
    picture->setData(QVariant::fromValue(item.m_Image), ClipboardRole::Image);
    picture->setData(origin, ClipboardRole::Origin);
    Cell size =
        MakeTextCell(tr("%1\n%2x%3 px").arg(item.m_Name, QString::number(width), QString::number(height)));
    Cell memory = MakeTextCell(tr("%1\n%2 bytes")
                                   .arg(QDateTime::currentDateTime().time().toString())
                                   .arg(qint64(width) * height * BytesPerPixel));
    Cell state = MakeTextCell(StateText(what));
    QList<QStandardItem*> row;
    row.reserve(CellsOfRow);
    for (Cell* cell : {&picture, &size, &memory, &state})
        row.append(cell->release());
    return row;
}

int ClipboardTool::FindItem(const ClipboardItem& item) const
{
    const auto found = std::find_if(m_Items.begin(), m_Items.end(), [&](const ClipboardItem& other) {
        return other.m_Crc == item.m_Crc && ClipboardPixels::AreSame(other.m_Image, item.m_Image);
    });
    return found == m_Items.end() ? -1 : static_cast<int>(found - m_Items.begin());
}

void ClipboardTool::MakeCurrent(int row)
{
    const QModelIndex index = m_pModel->index(row, 0);
    // Selected anew, so that who shows the list brings it into sight.
    m_pSelectionModel->clearSelection();
    m_pSelectionModel->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    {
        const QSignalBlocker blocker(m_pSelectionModel);
        m_pSelectionModel->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    }
    m_CurrentRow = row;
    m_bFilesWait = false;
}

void ClipboardTool::CurrentRowChanged(const QModelIndex& current, const QModelIndex&)
{
    if (std::exchange(m_bRemoving, false)) return;
    if (current.row() < 0 || current.row() >= m_Items.size()) return;

    m_CurrentRow = current.row();
    m_bFilesWait = false;
}

void ClipboardTool::Delete()
{
    if (!HasCurrentItem()) return;

    m_bRemoving = true;
    m_Items.remove(m_CurrentRow);
    qDeleteAll(m_pModel->takeRow(m_CurrentRow));
    m_bRemoving = false;
    if (m_Items.isEmpty()) {
        m_CurrentRow = -1;
    } else {
        MakeCurrent(std::min(m_CurrentRow, m_Items.size() - 1));
    }
    UpdateActions(HasItems());
}

QModelIndex ClipboardTool::CurrentIndex() const
{
    return m_pModel->index(m_CurrentRow, 0);
}

void ClipboardTool::MarkPasted(const QModelIndex& row)
{
    if (row.isValid()) m_pModel->item(row.row(), StateColumn)->setText(StateText(tr("Pasted")));
}

// ---- the system clipboard

void ClipboardTool::PutOnSystemClipboard(const LXImage32& image)
{
    const QImage picture = ClipboardPixels::ForSystemClipboard(image);
    if (picture.isNull()) return;

    RememberOffered(picture);
    // The clipboard tells at once; where a platform tells nothing, the next change is somebody else's.
    m_bOwnCopy = true;
    QGuiApplication::clipboard()->setImage(picture, QClipboard::Clipboard);
}

void ClipboardTool::OnCopyToSystemClipboard()
{
    if (!HasCurrentItem()) return;

    GuardClipboard(ZK_HERE, tr("Cannot copy. Unexpected error occurred."), [this] {
        const QImage picture = ClipboardPixels::ForSystemClipboard(m_Items[m_CurrentRow].m_Image);
        if (picture.isNull()) return;

        RememberOffered(picture);
        QClipboard* clipboard = QGuiApplication::clipboard();
        disconnect(clipboard, &QClipboard::dataChanged, this, &ClipboardTool::DataChanged);
        clipboard->setImage(picture, QClipboard::Clipboard);
        connect(clipboard, &QClipboard::dataChanged, this, &ClipboardTool::DataChanged);
    });
}

void ClipboardTool::DataChanged()
{
    if (std::exchange(m_bOwnCopy, false)) return;

    const bool filesWent = std::exchange(m_bFilesWait, false);
    try {
        if (LXMimePictures::HasPictureFiles(QGuiApplication::clipboard()->mimeData())) {
            LetFilesWait();
        } else {
            TakePictures();
        }
        if (filesWent && !m_bFilesWait && !HasCurrentItem() && !m_Items.isEmpty())
            MakeCurrent(m_Items.size() - 1);
    } catch (const std::exception& exception) {
        // Nobody asked for it here, so nobody is told.
        Reports::Exception(ZK_HERE, exception);
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
    }
    UpdateActions(HasItems());
}

void ClipboardTool::TakePictures()
{
    const QList<LXImage32> pictures = LXMimePictures::Read(QGuiApplication::clipboard()->mimeData());
    for (const LXImage32& picture : pictures) {
        if (IsOffered(picture)) {
            MakeCurrent(m_OfferedRow.row());
        } else {
            AddRow(picture, QVariant(), tr("Copied"));
        }
    }
}

void ClipboardTool::RememberOffered(const QImage& picture)
{
    m_OfferedRow = CurrentIndex();
    m_OfferedSize = picture.size();
    m_OfferedCrc = ClipboardPixels::Checksum(picture);
}

bool ClipboardTool::IsOffered(const LXImage32& picture) const
{
    return m_OfferedRow.isValid() && picture.Rect().size() == m_OfferedSize &&
           ClipboardPixels::Checksum(picture) == m_OfferedCrc;
}

// ---- files

void ClipboardTool::LetFilesWait()
{
    // No row is what was copied last.
    m_pSelectionModel->clear();
    m_CurrentRow = -1;
    m_bFilesWait = true;
}

void ClipboardTool::TakeFiles()
{
    if (!std::exchange(m_bFilesWait, false)) return;

    const OverrideCursor waiting(Qt::WaitCursor);
    TakePictures();
    UpdateActions(HasItems());
}
