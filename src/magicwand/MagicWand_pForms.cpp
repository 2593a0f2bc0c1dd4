#include "magicwand/MagicWand_p.h"

// The forms of the magic wand, and its mode: chosen in them, changed by keys, shown by the cursor.

#include "IDocumentView.h"
#include "ui_MWSelectionToolBar.h"
#include "ui_MWToolWidget.h"

#include "common/JoinBothWays.h"
#include "gui/LToolBoxButton.h"
#include "utils/ZKIconHelper.h"

#include <QAction>

namespace {
constexpr QPoint CursorHotSpot(3, 3);

using Option = MagicWandPrivate::SelectionOption;

Option OptionOf(SelectionCommandData::LogicalOp op)
{
    switch (op) {
    case SelectionCommandData::Unite: return Option::Unite;
    case SelectionCommandData::Intersect: return Option::Intersect;
    case SelectionCommandData::Subtract: return Option::Subtract;
    case SelectionCommandData::Replace: break;
    }
    return Option::Replace;
}

QString CursorName(SelectionCommandData::LogicalOp op)
{
    switch (op) {
    case SelectionCommandData::Unite: return QStringLiteral("theme:magic_ward_plus_cursor.png");
    case SelectionCommandData::Intersect: return QStringLiteral("theme:magic_ward_delete_cursor.png");
    case SelectionCommandData::Subtract: return QStringLiteral("theme:magic_ward_minus_cursor.png");
    case SelectionCommandData::Replace: break;
    }
    return QStringLiteral("theme:magic_ward_cursor.png");
}
} // namespace

void MagicWandPrivate::CreateToolWidget()
{
    m_pToolWidget = new QWidget;
    m_ToolWidgetUi = std::make_unique<Ui::MWToolWidget>();
    m_ToolWidgetUi->setupUi(m_pToolWidget);
    m_pToolWidget->setWindowTitle(tr("Magic wand"));
    JoinBothWays(m_ToolWidgetUi->m_pToleranceSpin, m_ToolWidgetUi->m_pToleranceSlider);
    m_ToolWidgetUi->m_pToleranceSpin->setValue(m_ToolWidgetUi->m_pToleranceSlider->value());
    connect(m_ToolWidgetUi->m_pModeCombo, qOverload<int>(&QComboBox::currentIndexChanged), this,
            qOverload<int>(&MagicWandPrivate::activateGeometryOp));
}

void MagicWandPrivate::CreateToolBar()
{
    m_pToolBarWidget = new QWidget;
    m_ToolBarUi = std::make_unique<Ui::MWSelectionToolBar>();
    m_ToolBarUi->setupUi(m_pToolBarWidget);
    m_pToolBarWidget->setWindowTitle(tr("Magic wand toolbar"));
    m_pToolBarWidget->setStatusTip(
        tr("Click selects; Shift adds, Alt subtracts, both intersect; drag moves the selection"));

    const Ui::MWSelectionToolBar& bar = *m_ToolBarUi;
    const auto icon = [](const char* name) { return ZKIconHelper::DisabledIcon(QString::fromLatin1(name)); };
    bar.m_pPictureLabelMain->setPixmap(
        icon("theme:tool-bar-wand.png").pixmap(bar.m_pPictureLabelMain->maximumSize()));
    bar.m_pReplace->setIcon(icon("theme:add_sel.png"));
    bar.m_pUnite->setIcon(icon("theme:unite_sel.png"));
    bar.m_pSubtract->setIcon(icon("theme:subtract_sel.png"));
    bar.m_pIntersect->setIcon(icon("theme:intersect_sel.png"));
    connect(bar.m_pReplace, &QToolButton::toggled, this, &MagicWandPrivate::replaceActivated);
    connect(bar.m_pUnite, &QToolButton::toggled, this, &MagicWandPrivate::uniteActivated);
    connect(bar.m_pSubtract, &QToolButton::toggled, this, &MagicWandPrivate::subtractActivated);
    connect(bar.m_pIntersect, &QToolButton::toggled, this, &MagicWandPrivate::intersectActivated);
}

void MagicWandPrivate::CreateToolButton()
{
    m_pToolButton = new LToolBoxButton;
    connect(m_pToolButton, &LToolBoxButton::LMousePressed, this, &MagicWandPrivate::ToolButtonPressed);
    connect(m_pToolButton, &LToolBoxButton::RMousePressed, this, &MagicWandPrivate::ToolButtonPressed);
    m_pToolButton->SetShortcut(QKeySequence(Qt::Key_W));

    auto* action = new QAction(ZKIconHelper::DisabledIcon(QStringLiteral("theme:tool-bar-wand.png")),
                               tr("Magic Wand"), m_pToolButton);
    action->setCheckable(true);
    action->setChecked(true);
    m_pToolButton->setDefaultAction(action);
    m_pToolButton->setChecked(false);
}

void MagicWandPrivate::OnRefineRegistered(QAction* action)
{
    QToolButton* button = m_ToolBarUi->m_pRefineSelection;
    button->setDefaultAction(action);
    if (action) return;

    // What the former action has brought along stays with a button.
    button->setIcon({});
    button->setStatusTip({});
    button->setText(tr("Refine selection"));
    button->setToolTip(tr("Refine selection"));
    button->setEnabled(false);
}

// ---- the mode

void MagicWandPrivate::replaceActivated(bool checked)
{
    if (checked) SetBaseOp(SelectionCommandData::Replace);
}

void MagicWandPrivate::uniteActivated(bool checked)
{
    if (checked) SetBaseOp(SelectionCommandData::Unite);
}

void MagicWandPrivate::subtractActivated(bool checked)
{
    if (checked) SetBaseOp(SelectionCommandData::Subtract);
}

void MagicWandPrivate::intersectActivated(bool checked)
{
    if (checked) SetBaseOp(SelectionCommandData::Intersect);
}

void MagicWandPrivate::SetBaseOp(LogicalOp op)
{
    m_Op = op;
    m_BaseOp = op;
    m_ToolWidgetUi->m_pModeCombo->setCurrentIndex(static_cast<int>(OptionOf(op)));
    RefreshCursor();
}

void MagicWandPrivate::activateGeometryOp(int row)
{
    activateGeometryOp(static_cast<SelectionOption>(row));
}

void MagicWandPrivate::activateGeometryOp(SelectionOption option)
{
    QToolButton* button = nullptr;
    switch (option) {
    case SelectionOption::Replace: button = m_ToolBarUi->m_pReplace; break;
    case SelectionOption::Unite: button = m_ToolBarUi->m_pUnite; break;
    case SelectionOption::Subtract: button = m_ToolBarUi->m_pSubtract; break;
    case SelectionOption::Intersect: button = m_ToolBarUi->m_pIntersect; break;
    }
    if (button && !button->isChecked()) button->setChecked(true);
}

QCursor MagicWandPrivate::GetCursor() const
{
    return {ZKIconHelper::ThemePixmap(CursorName(m_Op)), CursorHotSpot.x(), CursorHotSpot.y()};
}

void MagicWandPrivate::RefreshCursor()
{
    if (m_bActive && m_pDocumentView) ShowCursor(GetCursor());
}

// The hand of a view that is being panned stays.
void MagicWandPrivate::ShowCursor(const QCursor& cursor)
{
    if (!m_pDocumentView->IsPanning()) m_pDocumentView->SetCursor(cursor);
}

// ---- held keys

void MagicWandPrivate::KeyPressed(int key)
{
    SetModifier(key, true);
}

void MagicWandPrivate::KeyReleased(int key)
{
    SetModifier(key, false);
}

void MagicWandPrivate::SetModifier(int key, bool down)
{
    switch (key) {
    case Qt::Key_Shift: m_Modifiers.setFlag(Qt::ShiftModifier, down); break;
    case Qt::Key_Alt:
    case Qt::Key_AltGr: m_Modifiers.setFlag(Qt::AltModifier, down); break;
    case Qt::Key_Control: m_Modifiers.setFlag(Qt::ControlModifier, down); break;
    default: break;
    }
    FollowModifiers();
}

void MagicWandPrivate::FollowModifiers()
{
    Qt::KeyboardModifiers mask = m_Modifiers & (Qt::ShiftModifier | Qt::AltModifier);
    if (m_Modifiers & Qt::ControlModifier) mask = Qt::NoModifier;
    if (mask == m_ModifierMask) return;

    m_ModifierMask = mask;
    // Through the buttons the combo overwrites the user's choice.
    const LogicalOp base = m_BaseOp;
    m_Op = base;
    if (mask == Qt::ShiftModifier) m_Op = SelectionCommandData::Unite;
    if (mask == Qt::AltModifier) m_Op = SelectionCommandData::Subtract;
    if (mask == (Qt::ShiftModifier | Qt::AltModifier)) m_Op = SelectionCommandData::Intersect;
    m_ToolWidgetUi->m_pModeCombo->setCurrentIndex(static_cast<int>(OptionOf(m_Op)));
    RefreshCursor();
    m_BaseOp = base;
}
