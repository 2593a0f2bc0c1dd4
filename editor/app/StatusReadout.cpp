#include "app/StatusReadout.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/MergedPartReader.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentView_p.h"
#include "image/LXImage.h"
#include "image/LXTileManager.h"
#include "image/TileStore.h"

#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <QtMath>

namespace {
constexpr int SwatchSize = 12;
constexpr int HintIndent = 8;
constexpr int HeightAroundText = 16;
constexpr int ZoomPadding = 28;        // the borders and the arrow
constexpr int MemoryInterval = 1000;   // ms
constexpr int FailureDuration = 30000; // ms
constexpr qint64 Megabyte = 1024 * 1024;

/// A read-out as wide as the longest text that it shows, so that nothing moves when it changes.
QLabel* MakeReadout(const QString& name, const QString& widestText)
{
    auto* label = new QLabel;
    label->setAccessibleName(name);
    label->setToolTip(name);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widestText) + 8);
    return label;
}

/// None when the pixels can't be had: a read-out under the moving pointer isn't worth a message.
QColor MergedColor(const LXDocumentInterface* document, const QPoint& docPos)
{
    try {
        const MergedPartReader reader(document, QRect(docPos, QSize(1, 1)));
        const LXImage32* merged = document->GetLayerImage(0);
        return merged ? QColor::fromRgba(merged->GetColor(docPos.x(), docPos.y()).value) : QColor();
    } catch (...) {
        return QColor();
    }
}

QString Percent(double scale)
{
    const double percent = scale * 100;
    return StatusReadout::tr("%1 %").arg(percent, 0, 'f', percent < 10 ? 1 : 0);
}
} // namespace

StatusReadout::StatusReadout(QWidget* parent)
    : QStatusBar(parent),
      m_pPointerTimer(new QTimer(this)),
      m_pHint(new QLabel),
      m_pPosition(MakeReadout(tr("Position of the pointer, in pixels"), QStringLiteral("000000, 000000"))),
      m_pSwatch(new QLabel),
      m_pColor(MakeReadout(tr("Color under the pointer: red, green, blue, alpha"),
                           QStringLiteral("000 000 000 000"))),
      m_pSize(MakeReadout(tr("Size of the picture, in pixels"), QStringLiteral("00000 × 00000"))),
      m_pZoom(new QToolButton),
      m_pMemory(MakeReadout(tr("Memory of all pictures"), QStringLiteral("00000 MB")))
{
    m_pPosition->setObjectName(QStringLiteral("positionReadout"));
    m_pColor->setObjectName(QStringLiteral("colorReadout"));
    m_pSize->setObjectName(QStringLiteral("sizeReadout"));
    m_pZoom->setObjectName(QStringLiteral("zoomReadout"));
    m_pMemory->setObjectName(QStringLiteral("memoryReadout"));
    m_pHint->setObjectName(QStringLiteral("toolHint"));
    m_pHint->setAccessibleName(tr("Hint for the active tool"));
    m_pHint->setMinimumWidth(1);
    m_pHint->setIndent(HintIndent);
    m_pSwatch->setFixedSize(SwatchSize, SwatchSize);

    addWidget(m_pHint, 1);
    m_pZoom->setAccessibleName(tr("Zoom"));
    m_pZoom->setToolTip(tr("Zoom"));
    m_pZoom->setPopupMode(QToolButton::InstantPopup);
    m_pZoom->setFocusPolicy(Qt::TabFocus);
    m_pZoom->setEnabled(false);
    m_pZoom->setMinimumWidth(m_pZoom->fontMetrics().horizontalAdvance(QStringLiteral("0000 %")) +
                             ZoomPadding);
    for (QWidget* readout :
         std::initializer_list<QWidget*>{m_pPosition, m_pSwatch, m_pColor, m_pSize, m_pZoom, m_pMemory})
        addPermanentWidget(readout);

    // Nothing moves when texts come and go.
    setFixedHeight(fontMetrics().height() + HeightAroundText);

    auto* memoryTimer = new QTimer(this);
    connect(memoryTimer, &QTimer::timeout, this, &StatusReadout::UpdateMemory);
    memoryTimer->start(MemoryInterval);

    // Reads the color once for a whole run of mouse moves.
    m_pPointerTimer->setSingleShot(true);
    m_pPointerTimer->setInterval(0);
    connect(m_pPointerTimer, &QTimer::timeout, this, &StatusReadout::UpdatePointer);
}

void StatusReadout::SetView(ZKDocumentView* view)
{
    if (m_pView) {
        m_pView->disconnect(this);
        ZKDocumentViewPrivate::Get(m_pView)->disconnect(this);
        m_pView->GetModel()->GetDocument()->disconnect(this);
    }

    m_pView = view;
    m_bPointerInside = false;
    if (view) {
        LXDocumentInterface* document = view->GetModel()->GetDocument();
        connect(view, &ZKDocumentView::CursorMoved, this, &StatusReadout::MovePointer);
        connect(view, &ZKDocumentView::CursorLeft, this, &StatusReadout::LosePointer);
        // Later, because the view is in the middle of its painting.
        connect(
            ZKDocumentViewPrivate::Get(view), &ZKDocumentViewPrivate::CouldNotPaint, this,
            [this] {
                showMessage(tr("The picture cannot be shown: memory, or room on the disk, has run out."),
                            FailureDuration);
            },
            Qt::QueuedConnection);
        connect(view, &ZKDocumentView::ScaleChanged, this, &StatusReadout::UpdateZoom);
        connect(document, &LXDocumentInterface::DocumentSizeChanged, this, &StatusReadout::UpdateSize);
        connect(document, &LXDocumentInterface::CompositionChanged, m_pPointerTimer,
                qOverload<>(&QTimer::start));
    }
    UpdatePointer();
    UpdateSize();
    UpdateZoom();
    UpdateMemory();
}

void StatusReadout::SetHint(const QString& hint)
{
    m_pHint->setText(hint);
}

void StatusReadout::SetZoomMenu(QMenu* menu)
{
    m_pZoom->setMenu(menu);
}

void StatusReadout::MovePointer(const QPointF& scenePos)
{
    m_ScenePos = scenePos;
    m_bPointerInside = true;
    m_pPointerTimer->start();
}

void StatusReadout::LosePointer()
{
    m_bPointerInside = false;
    m_pPointerTimer->start();
}

void StatusReadout::UpdatePointer()
{
    const LXDocumentInterface* document = m_pView ? m_pView->GetModel()->GetDocument() : nullptr;
    if (!document || !m_bPointerInside) {
        m_pPosition->clear();
        ShowColor(QColor());
        return;
    }

    const QPoint docPos(qFloor(m_ScenePos.x()), qFloor(m_ScenePos.y()));
    m_pPosition->setText(tr("%1, %2").arg(docPos.x()).arg(docPos.y()));
    const bool isInside = QRect(QPoint(0, 0), document->GetDocumentSize()).contains(docPos);
    ShowColor(isInside ? MergedColor(document, docPos) : QColor());
}

void StatusReadout::ShowColor(const QColor& color)
{
    if (!color.isValid()) {
        m_pColor->clear();
        m_pSwatch->setPixmap(QPixmap());
        return;
    }
    m_pColor->setText(QStringLiteral("%1 %2 %3 %4")
                          .arg(color.red(), 3)
                          .arg(color.green(), 3)
                          .arg(color.blue(), 3)
                          .arg(color.alpha(), 3));
    QPixmap swatch(SwatchSize, SwatchSize);
    swatch.fill(color);
    m_pSwatch->setPixmap(swatch);
}

void StatusReadout::UpdateSize()
{
    if (!m_pView) return m_pSize->clear();

    const QSize size = m_pView->GetModel()->GetDocument()->GetDocumentSize();
    m_pSize->setText(tr("%1 × %2").arg(size.width()).arg(size.height()));
}

void StatusReadout::UpdateZoom()
{
    m_pZoom->setEnabled(m_pView != nullptr);
    m_pZoom->setText(m_pView ? Percent(m_pView->GetScale()) : QString());
}

void StatusReadout::UpdateMemory()
{
    const qint64 bytes = qint64(LXTileManager::Instance().LiveTileCount()) * LXTileManager::TileBytes;
    m_pMemory->setText(bytes == 0 ? QString() : tr("%1 MB").arg(bytes / Megabyte + 1));
    const TileStore& store = TileStore::Main();
    m_pMemory->setToolTip(tr("Memory of all pictures: %1 MB held, at most %2 MB; %3 MB on disk")
                              .arg(qint64(store.ResidentTileCount()) * LXTileManager::TileBytes / Megabyte)
                              .arg(store.MemoryBudget() / Megabyte)
                              .arg(store.SwapBytes() / Megabyte));
}
