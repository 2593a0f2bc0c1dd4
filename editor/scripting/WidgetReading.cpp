#include "scripting/WidgetReading.h"

#include "gui/CameraView.h"
#include "gui/HistogramWidget.h"
#include "gui/LXAnchorSelection.h"
#include "gui/LXColorButton.h"
#include "gui/LXColorDlg.h"
#include "gui/NavigatorWidget.h"
#include "gui/NineCells.h"
#include "gui/TransformationCenterPointControl.h"
#include "guicore/LXMessageBox.h"
#include "scripting/ScriptArguments.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>

#include <optional>

namespace {
template <typename Bar>
QStringList TabTexts(const Bar* bar)
{
    QStringList texts;
    for (int i = 0; i < bar->count(); ++i)
        texts.append(WidgetReading::WithoutMnemonic(bar->tabText(i)));
    return texts;
}

QList<QAction*> Entries(const QMenu* menu)
{
    QList<QAction*> entries;
    for (QAction* action : menu->actions()) {
        if (!action->isSeparator() && action->isVisible()) entries.append(action);
    }
    return entries;
}

/// The cell that is chosen of a control of nine cells, -1 for none; nothing for another widget.
std::optional<int> ChosenCell(const QWidget* widget)
{
    if (const auto* anchor = qobject_cast<const LXAnchorSelection*>(widget)) return anchor->GetState();
    const auto* center = qobject_cast<const TransformationCenterPointControl*>(widget);
    if (!center) return std::nullopt;
    return center->GetState() - TransformationCenterPointControl::TopLeft;
}

QStringList CellNames()
{
    QStringList names;
    for (int cell = 0; cell < NineCells::Count; ++cell)
        names.append(NineCells::NameOf(cell));
    return names;
}

QString GridWord(int gridType)
{
    switch (gridType) {
    case CameraView::StandardGrid: return QStringLiteral("standard");
    case CameraView::LightenGrid: return QStringLiteral("lighten");
    case CameraView::DarkenGrid: return QStringLiteral("darken");
    default: return QStringLiteral("none");
    }
}

QStringList ActionTexts(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* action : Entries(menu))
        texts.append(WidgetReading::WithoutMnemonic(action->text()));
    return texts;
}

/// What the first column says, or, where it only has a picture, the others, parted by tabs.
QString RowText(const QAbstractItemModel* model, int row)
{
    QString first = model->index(row, 0).data(Qt::DisplayRole).toString();
    if (!first.isEmpty()) return first;

    QStringList others;
    for (int column = 1; column < model->columnCount(); ++column)
        others.append(model->index(row, column).data(Qt::DisplayRole).toString());
    return others.join('\t');
}

QStringList RowTexts(const QAbstractItemModel* model)
{
    QStringList texts;
    for (int row = 0; model && row < model->rowCount(); ++row)
        texts.append(RowText(model, row));
    return texts;
}
} // namespace

QString WidgetReading::WithoutMnemonic(const QString& text)
{
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size()) ++i;
        result.append(text[i]);
    }
    return result;
}

QString WidgetReading::Text(const QWidget* widget)
{
    if (const auto* box = qobject_cast<const LXMessageBox*>(widget)) return box->GetText();
    if (const auto* box = qobject_cast<const QMessageBox*>(widget)) return box->text();
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        return label->buddy() ? WithoutMnemonic(label->text()) : label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        return WithoutMnemonic(button->text());
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(widget)) return WithoutMnemonic(group->title());
    if (const auto* combo = qobject_cast<const QComboBox*>(widget)) return combo->currentText();
    if (const auto* edit = qobject_cast<const QTextEdit*>(widget)) return edit->toPlainText();
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(widget)) return edit->toPlainText();
    if (qobject_cast<const QTabBar*>(widget) || qobject_cast<const QTabWidget*>(widget)) {
        return Items(widget).value(Index(widget));
    }
    // Line edits, spin boxes and progress bars.
    return widget->property("text").toString();
}

QVariant WidgetReading::Value(const QWidget* widget)
{
    if (const auto* button = qobject_cast<const LXColorButton*>(widget)) {
        return ScriptArguments::OfColor(button->GetColor());
    }
    if (const auto* dialog = qobject_cast<const LXColorDlg*>(widget)) {
        return ScriptArguments::OfColor(dialog->GetColor());
    }
    if (const auto* histogram = qobject_cast<const HistogramWidget*>(widget)) {
        return QVariantMap{{QStringLiteral("first"), histogram->GetFirstLevel()},
                           {QStringLiteral("last"), histogram->GetLastLevel()}};
    }
    if (const auto* navigator = qobject_cast<const NavigatorWidget*>(widget)) {
        const QRectF part = navigator->GetViewRect();
        return QVariantMap{{QStringLiteral("x"), part.x()},
                           {QStringLiteral("y"), part.y()},
                           {QStringLiteral("width"), part.width()},
                           {QStringLiteral("height"), part.height()}};
    }
    if (const auto* camera = qobject_cast<const CameraView*>(widget)) {
        return QVariantMap{{QStringLiteral("x"), camera->GetLookPoint().x()},
                           {QStringLiteral("y"), camera->GetLookPoint().y()},
                           {QStringLiteral("scale"), camera->GetScaleFactor()},
                           {QStringLiteral("grid"), GridWord(camera->GetGridType())}};
    }
    return widget->property("value");
}

QStringList WidgetReading::Items(const QWidget* widget)
{
    if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i)
            texts.append(combo->itemText(i));
        return texts;
    }
    if (const auto* view = qobject_cast<const QAbstractItemView*>(widget)) return RowTexts(view->model());
    if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) return TabTexts(tabs);
    if (const auto* tabs = qobject_cast<const QTabWidget*>(widget)) return TabTexts(tabs);
    if (const auto* menu = qobject_cast<const QMenu*>(widget)) return ActionTexts(menu);
    if (ChosenCell(widget)) return CellNames();
    return {};
}

int WidgetReading::Index(const QWidget* widget)
{
    if (const auto* view = qobject_cast<const QAbstractItemView*>(widget)) return view->currentIndex().row();
    if (const std::optional<int> cell = ChosenCell(widget)) return *cell;
    const QVariant index = widget->property("currentIndex");
    return index.isValid() ? index.toInt() : -1;
}

QRect WidgetReading::ItemGeometry(const QWidget* widget, int index)
{
    if (const auto* view = qobject_cast<const QAbstractItemView*>(widget)) {
        if (!view->model()) return {};
        // Items of a narrow list are wider than what is seen of them.
        return view->visualRect(view->model()->index(index, 0)) & view->viewport()->rect();
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) return tabs->tabRect(index);
    if (const auto* menu = qobject_cast<const QMenu*>(widget)) {
        QAction* entry = Entries(menu).value(index);
        return entry ? menu->actionGeometry(entry) : QRect();
    }
    if (ChosenCell(widget) && index < NineCells::Count) return NineCells::RectOf(index, widget->rect());
    return {};
}

QString WidgetReading::Line(const QWidget* widget)
{
    QString line = QString::fromLatin1(widget->metaObject()->className());
    if (!widget->objectName().isEmpty()) line += QStringLiteral(" ") + widget->objectName();
    QString text = Text(widget);
    if (text.isEmpty() && widget->isWindow()) text = widget->windowTitle();
    if (!text.isEmpty()) line += QStringLiteral(" \"%1\"").arg(text.replace('\n', QStringLiteral("\\n")));
    const QVariant checked =
        widget->property("checkable").toBool() ? widget->property("checked") : QVariant();
    if (checked.toBool()) line += QStringLiteral(" checked");
    if (!widget->isEnabled()) line += QStringLiteral(" disabled");
    if (!widget->isVisible()) line += QStringLiteral(" hidden");
    return line;
}

QString WidgetReading::Path(const QWidget* widget)
{
    const QString className = QString::fromLatin1(widget->metaObject()->className());
    QStringList names;
    for (const QWidget* part = widget; part; part = part->parentWidget()) {
        // What Qt made for itself says nothing.
        if (!part->objectName().isEmpty() && !part->objectName().startsWith(QLatin1String("qt_"))) {
            names.prepend(part->objectName());
        }
    }
    return names.isEmpty() ? className : names.join('/');
}
