#include "scripting/WidgetHand.h"

#include "scripting/InputDriver.h"
#include "scripting/ScriptError.h"
#include "scripting/WidgetReading.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>

namespace {
constexpr int FarFromClick = 15; ///< pixels

QString Named(const QWidget* widget)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QString::fromLatin1(widget->metaObject()->className()), WidgetReading::Path(widget));
}

[[noreturn]] void ThrowKind(const QWidget* widget, const char* what)
{
    throw ScriptError(QStringLiteral("%1 has no %2.").arg(Named(widget), QString::fromLatin1(what)));
}

/// Where a press checks the box: a long button is wider than what takes the mouse.
QPoint MarkOf(const QAbstractButton* button)
{
    QStyleOptionButton option;
    option.initFrom(button);
    const bool isCheckBox = qobject_cast<const QCheckBox*>(button) != nullptr;
    const QStyle::SubElement mark =
        isCheckBox ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator;
    return button->style()->subElementRect(mark, &option, button).center();
}

bool IsInDialog(const QWidget* widget)
{
    return qobject_cast<const QDialog*>(widget->window()) != nullptr;
}

/// A slider shows its value by where the handle is; there is no pixel for each value.
void DragSlider(QAbstractSlider* slider, int value)
{
    slider->setSliderDown(true);
    slider->setSliderPosition(value);
    slider->setSliderDown(false);
}

void RequireRange(const QWidget* widget, double value, double minimum, double maximum)
{
    if (value >= minimum && value <= maximum) return;
    throw ScriptError(
        QStringLiteral("%1 goes from %2 to %3, not to %4.")
            .arg(Named(widget), QString::number(minimum), QString::number(maximum), QString::number(value)));
}
} // namespace

void WidgetHand::RequireUsable(const QWidget* widget)
{
    if (!widget->isVisible()) throw ScriptError(QStringLiteral("%1 is hidden.").arg(Named(widget)));
    if (!widget->isEnabled()) throw ScriptError(QStringLiteral("%1 is disabled.").arg(Named(widget)));
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && !QApplication::activePopupWidget() && modal != widget->window() &&
        !modal->isAncestorOf(widget)) {
        throw ScriptError(
            QStringLiteral("%1 is blocked by \"%2\".").arg(Named(widget), modal->windowTitle()));
    }
}

void WidgetHand::Click(QWidget* widget) const
{
    RequireUsable(widget);
    if (qobject_cast<QCheckBox*>(widget) || qobject_cast<QRadioButton*>(widget)) {
        m_Input.Click(widget, MarkOf(static_cast<QAbstractButton*>(widget)));
    } else {
        m_Input.Click(widget);
    }
}

void WidgetHand::SetChecked(QWidget* widget, bool checked) const
{
    const QPointer<QAbstractButton> button = qobject_cast<QAbstractButton*>(widget);
    if (!button || !button->isCheckable()) ThrowKind(widget, "check mark");
    if (button->isChecked() != checked) Click(button);
    if (button && button->isChecked() != checked) {
        throw ScriptError(
            QStringLiteral("%1 can't be %2 by a click.")
                .arg(Named(button), checked ? QStringLiteral("checked") : QStringLiteral("unchecked")));
    }
}

void WidgetHand::TypeOver(QWidget* field, const QString& text) const
{
    RequireUsable(field);
    field->window()->activateWindow();
    field->setFocus(Qt::MouseFocusReason);
    m_Input.Key(Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty()) {
        m_Input.Key(Qt::Key_Delete);
    } else {
        m_Input.Type(text);
    }
}

void WidgetHand::EndEntry(const QWidget* field) const
{
    // Return would press the dialog's button.
    m_Input.Key(IsInDialog(field) ? Qt::Key_Tab : Qt::Key_Return);
}

void WidgetHand::SetValue(QWidget* widget, double value) const
{
    const QPointer<QWidget> alive(widget);
    if (auto* spin = qobject_cast<QSpinBox*>(widget)) {
        RequireRange(widget, value, spin->minimum(), spin->maximum());
        TypeOver(widget, QString::number(qRound(value)));
    } else if (auto* fraction = qobject_cast<QDoubleSpinBox*>(widget)) {
        RequireRange(widget, value, fraction->minimum(), fraction->maximum());
        TypeOver(widget, fraction->locale().toString(value, 'f', fraction->decimals()));
    } else if (auto* slider = qobject_cast<QAbstractSlider*>(widget)) {
        RequireUsable(widget);
        RequireRange(widget, value, slider->minimum(), slider->maximum());
        DragSlider(slider, qRound(value));
        return;
    } else {
        ThrowKind(widget, "value that can be set");
    }
    if (alive) EndEntry(widget);
}

void WidgetHand::SetText(QWidget* widget, const QString& text) const
{
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    const bool isLine = qobject_cast<QLineEdit*>(widget) || qobject_cast<QAbstractSpinBox*>(widget) ||
                        (combo && combo->isEditable());
    const bool isPage = qobject_cast<QTextEdit*>(widget) || qobject_cast<QPlainTextEdit*>(widget);
    if (!isLine && !isPage) ThrowKind(widget, "text that can be typed");

    const QPointer<QWidget> alive(widget);
    TypeOver(widget, text);
    if (isLine && alive) EndEntry(widget);
}

void WidgetHand::Choose(QWidget* widget, int index) const
{
    RequireUsable(widget);
    const int count = WidgetReading::Items(widget).size();
    if (index < 0 || index >= count) {
        throw ScriptError(QStringLiteral("%1 has %2 items, and no item %3.")
                              .arg(Named(widget), QString::number(count), QString::number(index)));
    }
    if (auto* tabWidget = qobject_cast<QTabWidget*>(widget)) widget = tabWidget->tabBar();
    if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        ChooseInCombo(combo, index);
    } else if (auto* view = qobject_cast<QAbstractItemView*>(widget)) {
        view->scrollTo(view->model()->index(index, 0));
        m_Input.Click(view->viewport(), WidgetReading::ItemGeometry(view, index).center());
    } else if (auto* tabs = qobject_cast<QTabBar*>(widget)) {
        m_Input.Click(tabs, tabs->tabRect(index).center());
    } else if (auto* menu = qobject_cast<QMenu*>(widget)) {
        ChooseInMenu(menu, {WidgetReading::Items(menu)[index]});
    } else {
        m_Input.Click(widget, WidgetReading::ItemGeometry(widget, index).center());
    }
}

void WidgetHand::Choose(QWidget* widget, const QString& text) const
{
    const QStringList items = WidgetReading::Items(widget);
    const int index = items.indexOf(text);
    if (index < 0) {
        throw ScriptError(QStringLiteral("%1 has no item \"%2\"; there are: %3.")
                              .arg(Named(widget), text, items.join(QStringLiteral(", "))));
    }
    Choose(widget, index);
}

void WidgetHand::ChooseInCombo(QComboBox* combo, int index) const
{
    m_Input.Click(combo);
    QAbstractItemView* list = combo->view();
    list->scrollTo(combo->model()->index(index, 0));
    const QPoint place = WidgetReading::ItemGeometry(list, index).center();
    // Else the list takes the click for the end of the one that has opened it.
    m_Input.Move(list->viewport(), place + QPoint(FarFromClick, 0));
    m_Input.Click(list->viewport(), place);
}

void WidgetHand::ChooseInMenu(QMenu* menu, const QStringList& texts) const
{
    for (int i = 0; i < texts.size(); ++i) {
        QAction* found = nullptr;
        for (QAction* action : menu->actions()) {
            const bool isIt = WidgetReading::WithoutMnemonic(action->text()) == texts[i];
            if (isIt && action->isVisible() && !action->isSeparator()) found = action;
        }
        if (!found) {
            throw ScriptError(QStringLiteral("The menu has no entry \"%1\"; there are: %2.")
                                  .arg(texts[i], WidgetReading::Items(menu).join(QStringLiteral(", "))));
        }
        if (!found->isEnabled()) {
            throw ScriptError(QStringLiteral("The entry \"%1\" is disabled.").arg(texts[i]));
        }
        ClickAction(menu, found);
        const bool isLast = i + 1 == texts.size();
        if (isLast) return;
        menu = found->menu();
        if (!menu) throw ScriptError(QStringLiteral("\"%1\" has no menu of its own.").arg(texts[i]));
        // A submenu opens after a moment; nobody has to wait for it here.
        if (!menu->isVisible()) menu->popup(QCursor::pos());
    }
}

void WidgetHand::ClickAction(QMenu* menu, QAction* action) const
{
    const QPoint place = menu->actionGeometry(action).center();
    m_Input.Move(menu, place + QPoint(1, 0));
    m_Input.Click(menu, place);
}
