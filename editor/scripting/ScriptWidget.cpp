#include "scripting/ScriptWidget.h"

#include "scripting/ScriptArguments.h"
#include "scripting/WidgetHand.h"
#include "scripting/WidgetReading.h"
#include "scripting/WidgetSearch.h"

#include <QWidget>

#include <limits>

namespace {
constexpr int AnyIndex = std::numeric_limits<int>::max();
} // namespace

ScriptWidget::ScriptWidget(ScriptContext& context, QWidget* widget)
    : ScriptObject(context, nullptr), m_pWidget(widget)
{}

QWidget* ScriptWidget::Require() const
{
    if (!m_pWidget) throw ScriptError(QStringLiteral("The widget is no longer there."));
    return m_pWidget;
}

bool ScriptWidget::Exists() const
{
    return !m_pWidget.isNull();
}

QString ScriptWidget::GetName() const
{
    return Call([this] { return Require()->objectName(); });
}

QString ScriptWidget::GetClassName() const
{
    return Call([this] { return QString::fromLatin1(Require()->metaObject()->className()); });
}

QString ScriptWidget::GetTitle() const
{
    return Call([this] { return Require()->windowTitle(); });
}

QString ScriptWidget::GetText() const
{
    return Call([this] { return WidgetReading::Text(Require()); });
}

QJSValue ScriptWidget::GetValue() const
{
    return Call([this] {
        const QVariant value = WidgetReading::Value(Require());
        return value.isValid() ? Context().GetEngine().toScriptValue(value) : QJSValue();
    });
}

bool ScriptWidget::IsChecked() const
{
    return Call([this] { return Require()->property("checked").toBool(); });
}

bool ScriptWidget::IsEnabled() const
{
    return Call([this] { return Require()->isEnabled(); });
}

bool ScriptWidget::IsVisible() const
{
    return Call([this] { return Require()->isVisible(); });
}

bool ScriptWidget::IsFocused() const
{
    return Call([this] { return Require()->hasFocus(); });
}

QStringList ScriptWidget::GetItems() const
{
    return Call([this] { return WidgetReading::Items(Require()); });
}

int ScriptWidget::GetIndex() const
{
    return Call([this] { return WidgetReading::Index(Require()); });
}

QString ScriptWidget::GetToolTip() const
{
    return Call([this] { return Require()->toolTip(); });
}

QString ScriptWidget::GetAccessibleName() const
{
    return Call([this] { return Require()->accessibleName(); });
}

QJSValue ScriptWidget::GetGeometry() const
{
    return Call([this] {
        const QWidget* widget = Require();
        const QRect inWindow(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size());
        return ScriptArguments::OfRect(Context().GetEngine(), inWindow);
    });
}

QJSValue ScriptWidget::find(const QString& path) const
{
    return Call([&] { return Hand(new ScriptWidget(Context(), WidgetSearch::Find(path, Require()))); });
}

QString ScriptWidget::tree() const
{
    return Call([this] { return WidgetSearch::Tree(Require()); });
}

QJSValue ScriptWidget::itemGeometry(const QJSValue& index) const
{
    return Call([&] {
        const int item = ScriptArguments::ToInteger(index, "index", 0, AnyIndex);
        return ScriptArguments::OfRect(Context().GetEngine(), WidgetReading::ItemGeometry(Require(), item));
    });
}

void ScriptWidget::click()
{
    Call([this] { WidgetHand(Context().GetInput()).Click(Require()); });
}

void ScriptWidget::setChecked(bool checked)
{
    Call([&] { WidgetHand(Context().GetInput()).SetChecked(Require(), checked); });
}

void ScriptWidget::setValue(const QJSValue& value)
{
    Call([&] {
        WidgetHand(Context().GetInput()).SetValue(Require(), ScriptArguments::ToNumber(value, "value"));
    });
}

void ScriptWidget::setText(const QString& text)
{
    Call([&] { WidgetHand(Context().GetInput()).SetText(Require(), text); });
}

void ScriptWidget::choose(const QJSValue& item)
{
    Call([&] {
        const WidgetHand hand(Context().GetInput());
        if (item.isNumber()) {
            hand.Choose(Require(), ScriptArguments::ToInteger(item, "index", 0, AnyIndex));
        } else {
            hand.Choose(Require(), item.toString());
        }
    });
}

void ScriptWidget::focus()
{
    Call([this] {
        QWidget* widget = Require();
        WidgetHand::RequireUsable(widget);
        widget->window()->activateWindow();
        widget->setFocus(Qt::OtherFocusReason);
    });
}

void ScriptWidget::close()
{
    Call([this] { Require()->window()->close(); });
}
