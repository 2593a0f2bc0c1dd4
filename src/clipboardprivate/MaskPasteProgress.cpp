#include "clipboardprivate/MaskPasteProgress.h"

#include "common/LXBlender.h"

#include <QReadLocker>
#include <QWriteLocker>

namespace {
constexpr LXRGBA32i OpaqueGround(0xFF000000u);
} // namespace

MaskPasteProgress::MaskPasteProgress(const ClipboardPixels::Placed& item, const ClipboardPixels::Placed& mask,
                                     const QRect& resultRect, bool isGroundOpaque, QWidget* parent)
    : LXOperationProgress(parent),
      m_Item(item),
      m_Mask(mask),
      m_ResultRect(resultRect),
      m_bGroundOpaque(isGroundOpaque)
{
    connect(this, &MaskPasteProgress::ConversionProgressRange, this,
            &LXOperationProgressDlg::SetProgressRange);
    connect(this, &MaskPasteProgress::ConversionPosition, this, &LXOperationProgressDlg::SetProgressPos);
    connect(this, &MaskPasteProgress::ConversionLabel, this, &LXOperationProgressDlg::SetProgressLabel);
}

void MaskPasteProgress::OnCancel()
{
    {
        const QWriteLocker locker(&m_CancelLock);
        m_bStop = true;
    }
    LXOperationProgress::OnCancel();
}

bool MaskPasteProgress::IsStopped() const
{
    const QReadLocker locker(&m_CancelLock);
    return m_bStop;
}

void MaskPasteProgress::RethrowFailure() const
{
    if (m_Failure) std::rethrow_exception(m_Failure);
}

void MaskPasteProgress::Run()
{
    try {
        Convert();
    } catch (...) {
        m_Failure = std::current_exception();
    }
}

void MaskPasteProgress::Convert()
{
    m_Result = LXImage32(m_ResultRect.width(), m_ResultRect.height());
    if (m_bGroundOpaque) m_Result.Fill(OpaqueGround);
    TakeOverMask();
    if (!IsStopped()) PaintItem();
}

template <class Visit>
void MaskPasteProgress::ForEachTile(const QString& label, Visit visit)
{
    const int columns = static_cast<int>(m_Result.m_TilesX);
    const int count = columns * static_cast<int>(m_Result.m_TilesY);
    emit ConversionLabel(label);
    emit ConversionProgressRange(0, count);
    emit ConversionPosition(0);
    for (int tile = 0; tile < count && !IsStopped(); ++tile) {
        visit(QPoint(tile % columns, tile / columns));
        emit ConversionPosition(tile + 1);
    }
}

void MaskPasteProgress::TakeOverMask()
{
    // Cut out, the mask's tiles lie as those of the result do.
    const LXImage32 source = CopyPart(m_Mask.image, m_ResultRect.translated(-m_Mask.topLeft));
    ForEachTile(tr("Prepare conversion"), [&](const QPoint& tile) {
        const LXTileReader<LXRGBA32i> pixels = source.ReadTile(tile.x(), tile.y());
        m_Map.Run(m_Result, QRect(tile, QSize(1, 1)), [&](LXRGBA32i* target, int, int) {
            return LXBlend::LXBlender<LXRGBA32i, LXBlend::LXSource<0>>{pixels.Pixels(), target};
        });
    });
}

void MaskPasteProgress::PaintItem()
{
    const LXImage32 item = CopyPart(m_Item.image, m_ResultRect.translated(-m_Item.topLeft));
    ForEachTile(tr("Mask conversion"), [&](const QPoint& tile) { BlendTile(m_Map, m_Result, item, tile); });
}
