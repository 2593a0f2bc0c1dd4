#include "gui/LXColorButton.h"

#include "core/ZKCMSManager.h"
#include "gui/DisplayColors.h"
#include "gui/LXColorDlg.h"
#include "guicore/ColorSwatch.h"
#include "guicore/ColorText.h"
#include "guicore/LineFrame.h"

#include <QPointer>
#include <QStyle>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {
constexpr QSize ButtonSize(40, 24);
constexpr int SwatchMargin = 4;
constexpr double OffOpacity = 0.4;
} // namespace

class LXColorButtonPrivate
{
public:
    QColor m_Color = Qt::black;
    QString m_DialogTitle = LXColorButton::tr("Select a color");
    bool m_bDialog = true;
    bool m_bAlpha = false;
};

LXColorButton::LXColorButton(QWidget* parent)
    : QToolButton(parent), m_pPrivate(std::make_unique<LXColorButtonPrivate>())
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Color"));
    setAccessibleDescription(ColorText::WithAlpha(m_pPrivate->m_Color));
    connect(this, &QToolButton::clicked, this, &LXColorButton::Ask);
    const auto repaint = qOverload<>(&QWidget::update);
    connect(ZKCMSManager::GetInstance(), &ZKCMSManager::DisplayChanged, this, repaint);
    connect(ZKCMSManager::GetInstance(), &ZKCMSManager::WorkingProfileChanged, this, repaint);
}

LXColorButton::~LXColorButton() = default;

QColor LXColorButton::GetColor() const
{
    return m_pPrivate->m_Color;
}

void LXColorButton::SetColor(const QColor& color)
{
    if (!color.isValid() || color.rgba() == m_pPrivate->m_Color.rgba()) return;
    m_pPrivate->m_Color = color.toRgb();
    setAccessibleDescription(ColorText::WithAlpha(m_pPrivate->m_Color));
    update();
    emit ColorChanged(m_pPrivate->m_Color);
}

void LXColorButton::SetDialogTitle(const QString& title)
{
    m_pPrivate->m_DialogTitle = title;
}

void LXColorButton::SetDialogEnabled(bool enabled)
{
    m_pPrivate->m_bDialog = enabled;
}

void LXColorButton::SetAlphaEnabled(bool enabled)
{
    m_pPrivate->m_bAlpha = enabled;
}

QSize LXColorButton::sizeHint() const
{
    return ButtonSize;
}

void LXColorButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.icon = QIcon();
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);

    const QRect swatch = rect().adjusted(SwatchMargin, SwatchMargin, -SwatchMargin, -SwatchMargin);
    if (!isEnabled()) painter.setOpacity(OffOpacity);
    ColorSwatch::Paint(painter, swatch, DisplayColors::ShownOwn(m_pPrivate->m_Color));
    // Lets a swatch in the color of the bar be seen.
    PaintLineFrame(painter, swatch, palette().color(QPalette::Mid));
}

void LXColorButton::Ask()
{
    if (!m_pPrivate->m_bDialog) return;
    // A bar may be built anew while the dialog is open.
    const QPointer<LXColorButton> guard(this);
    const auto channels =
        m_pPrivate->m_bAlpha ? LXColorDlg::Channels::ColorAndAlpha : LXColorDlg::Channels::Color;
    const QColor color =
        LXColorDlg::Choose(window(), m_pPrivate->m_DialogTitle, m_pPrivate->m_Color, channels);
    if (guard) SetColor(color);
}
