#include "gui/ColorWells.h"

#include "core/ZKApplication.h"
#include "gui/ColorWell.h"
#include "gui/LXColorDlg.h"
#include "gui/LXShortcut.h"
#include "utils/ZKIconHelper.h"

#include <QToolButton>

namespace {
constexpr QSize WellsSize(40, 60);
constexpr QRect ForegroundPlace(4, 20, 24, 24);
constexpr QRect BackgroundPlace(14, 32, 24, 24);
constexpr int SmallIcon = 14;
constexpr QRect ResetPlace(2, 1, 18, 18);
constexpr QRect SwapPlace(20, 1, 18, 18);
} // namespace

ColorWells::ColorWells(QWidget* parent)
    : QWidget(parent), m_pForeground(new ColorWell(this)), m_pBackground(new ColorWell(this))
{
    setFixedSize(WellsSize);
    m_pBackground->setGeometry(BackgroundPlace);
    m_pForeground->setGeometry(ForegroundPlace);
    m_pForeground->raise();
    MakeButton("theme:colors_default.png", tr("Black and white"), Qt::Key_D, &Reset)->setGeometry(ResetPlace);
    MakeButton("theme:colors_swap.png", tr("Swap the colors"), Qt::Key_X, &Swap)->setGeometry(SwapPlace);

    const auto bind = [this](ColorWell* well, const QString& name, const QColor& color, auto changed,
                             auto set) {
        well->setAccessibleName(name);
        well->setToolTip(name);
        well->SetColor(color);
        connect(ZKApplication::GetInstance(), changed, well, &ColorWell::SetColor);
        connect(well, &ColorWell::clicked, this, [=] {
            const QColor chosen = LXColorDlg::Choose(window(), name, well->GetColor());
            if (chosen.isValid()) set(chosen);
        });
    };
    bind(m_pForeground, tr("Foreground color"), ZKApplication::GetForeground(),
         &ZKApplication::ForegroundChanged, &ZKApplication::SetForeground);
    bind(m_pBackground, tr("Background color"), ZKApplication::GetBackground(),
         &ZKApplication::BackgroundChanged, &ZKApplication::SetBackground);
}

ColorWells::~ColorWells() = default;

void ColorWells::Swap()
{
    const QColor foreground = ZKApplication::GetForeground();
    ZKApplication::SetForeground(ZKApplication::GetBackground());
    ZKApplication::SetBackground(foreground);
}

void ColorWells::Reset()
{
    ZKApplication::SetForeground(Qt::black);
    ZKApplication::SetBackground(Qt::white);
}

QToolButton* ColorWells::MakeButton(const QString& icon, const QString& text, const QKeySequence& key,
                                    void (*act)())
{
    auto* button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setIcon(ZKIconHelper::DisabledIcon(icon));
    button->setIconSize({SmallIcon, SmallIcon});
    button->setAccessibleName(text);
    button->setToolTip(tr("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText)));
    connect(button, &QToolButton::clicked, this, act);

    auto* shortcut = new LXShortcut(this, key);
    shortcut->SetShortcutContext(Qt::ApplicationShortcut);
    connect(shortcut, &LXShortcut::Activated, this, act);
    return button;
}
