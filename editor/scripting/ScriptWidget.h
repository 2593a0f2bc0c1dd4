#pragma once

#include "scripting/ScriptObject.h"

#include <QPointer>
#include <QString>
#include <QStringList>

class QWidget;

/// One widget, as a script holds it. Once the widget is gone, everything but `exists` fails. What is changed
/// here is changed by input, as a person would.
class ScriptWidget : public ScriptObject
{
    Q_OBJECT
    Q_PROPERTY(bool exists READ Exists)
    Q_PROPERTY(QString name READ GetName)
    Q_PROPERTY(QString className READ GetClassName)
    /// Of the window, dock or option bar.
    Q_PROPERTY(QString title READ GetTitle)
    Q_PROPERTY(QString text READ GetText)
    /// Undefined where there is none.
    Q_PROPERTY(QJSValue value READ GetValue)
    Q_PROPERTY(bool checked READ IsChecked)
    Q_PROPERTY(bool enabled READ IsEnabled)
    Q_PROPERTY(bool visible READ IsVisible)
    Q_PROPERTY(bool focused READ IsFocused)
    Q_PROPERTY(QStringList items READ GetItems)
    /// Of the current item; -1 for none.
    Q_PROPERTY(int index READ GetIndex)
    Q_PROPERTY(QString toolTip READ GetToolTip)
    Q_PROPERTY(QString accessibleName READ GetAccessibleName)
    /// In its window.
    Q_PROPERTY(QJSValue geometry READ GetGeometry)

public:
    ScriptWidget(ScriptContext& context, QWidget* widget);

    /// Throws a ScriptError when it is gone.
    QWidget* Require() const;

    bool Exists() const;
    QString GetName() const;
    QString GetClassName() const;
    QString GetTitle() const;
    QString GetText() const;
    QJSValue GetValue() const;
    bool IsChecked() const;
    bool IsEnabled() const;
    bool IsVisible() const;
    bool IsFocused() const;
    QStringList GetItems() const;
    int GetIndex() const;
    QString GetToolTip() const;
    QString GetAccessibleName() const;
    QJSValue GetGeometry() const;

    Q_INVOKABLE QJSValue find(const QString& path) const;
    Q_INVOKABLE QString tree() const;
    /// Where an item of a list, tabs or a menu lies in it; null while it isn't seen.
    Q_INVOKABLE QJSValue itemGeometry(const QJSValue& index) const;
    Q_INVOKABLE void click();
    Q_INVOKABLE void setChecked(bool checked);
    Q_INVOKABLE void setValue(const QJSValue& value);
    Q_INVOKABLE void setText(const QString& text);
    /// A text among the items, or an index.
    Q_INVOKABLE void choose(const QJSValue& item);
    Q_INVOKABLE void focus();
    /// As its close button does.
    Q_INVOKABLE void close();

private:
    QPointer<QWidget> m_pWidget;
};
