#include "support/WidgetWalk.h"

#include "core/ToolBarArea.h"
#include "gui/ZKDocumentView.h"
#include "scripting/InputDriver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSet>
#include <QTabBar>
#include <QToolButton>

#include <cmath>

namespace {
constexpr double LeastContrast = 4.5;

QString Describe(const QWidget* widget)
{
    const QObject* parent = widget->parent();
    return QStringLiteral("%1 \"%2\" in %3")
        .arg(widget->metaObject()->className(), widget->objectName(),
             parent ? parent->metaObject()->className() : "nothing");
}

bool IsControl(const QWidget* widget)
{
    if (!widget->isVisible() || !widget->isEnabled()) return false;
    if (qobject_cast<const QScrollBar*>(widget)) return false;
    if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) return tabs->count() > 0;
    const QWidget* parent = widget->parentWidget();
    // The cross of a tab is for the mouse alone; Ctrl+W does the same.
    if (qobject_cast<const QTabBar*>(parent)) return false;
    // So is what scrolls the option bar; Tab scrolls to the controls beyond.
    if (qobject_cast<const ToolBarArea*>(parent) && qobject_cast<const QToolButton*>(widget)) return false;
    if (qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent)) return false;
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget) ||
           qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractSlider*>(widget) ||
           qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractItemView*>(widget) ||
           qobject_cast<const ZKDocumentView*>(widget);
}

double Linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(QRgb color)
{
    return 0.2126 * Linear(qRed(color) / 255.0) + 0.7152 * Linear(qGreen(color) / 255.0) +
           0.0722 * Linear(qBlue(color) / 255.0);
}

/// The contrast ratio of the Web Content Accessibility Guidelines, 1 to 21.
double Contrast(QRgb one, QRgb other)
{
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

/// How far what is drawn in the part stands out from the part's ground.
double DrawnContrast(const QImage& picture, const QRect& part)
{
    QHash<QRgb, int> counts;
    const QRect inside = part & picture.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    QRgb ground = 0;
    int most = 0;
    for (auto color = counts.constBegin(); color != counts.constEnd(); ++color) {
        if (color.value() <= most) continue;
        most = color.value();
        ground = color.key();
    }
    double best = 1;
    for (auto color = counts.constBegin(); color != counts.constEnd(); ++color)
        best = qMax(best, Contrast(ground, color.key()));
    return best;
}

struct Text
{
    QRect place; ///< in the window
    QString words;
};

/// The texts that the widget itself draws; none when it is off, since that is how being off looks.
QList<Text> TextsOf(const QWidget* widget, const QWidget* window)
{
    if (!widget->isVisible() || !widget->isEnabled()) return {};
    // What is scrolled away, if only in part, is read once it is scrolled to.
    if (widget->visibleRegion().boundingRect() != widget->rect()) return {};

    const QPoint corner = widget->mapTo(window, QPoint(0, 0));
    const QRect whole(corner, widget->size());
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        if (!label->text().isEmpty()) return {{whole, label->text()}};
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        if (!button->text().isEmpty()) return {{whole, button->text()}};
    } else if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
        return {{whole, box->currentText()}};
    } else if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(widget)) {
        return {{whole, spin->text()}};
    } else if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
        return {{QRect(corner, QSize(widget->width(), widget->fontMetrics().height())), group->title()}};
    } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
        QList<Text> texts;
        for (int tab = 0; tab < tabs->count(); ++tab)
            texts.append({tabs->tabRect(tab).translated(corner), tabs->tabText(tab)});
        return texts;
    } else if (const auto* list = qobject_cast<const QAbstractItemView*>(widget)) {
        QList<Text> texts;
        const QAbstractItemModel* model = list->model();
        const QPoint inside = list->viewport()->mapTo(window, QPoint(0, 0));
        for (int row = 0; model && row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 0);
            texts.append({list->visualRect(index).translated(inside), index.data().toString()});
        }
        return texts;
    } else if (const auto* menu = qobject_cast<const QMenu*>(widget)) {
        QList<Text> texts;
        for (QAction* action : menu->actions()) {
            if (action->isEnabled() && !action->isSeparator())
                texts.append({menu->actionGeometry(action), action->text()});
        }
        return texts;
    }
    return {};
}
} // namespace

QList<QWidget*> WidgetWalk::Controls(const QWidget* window)
{
    QList<QWidget*> controls;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (widget->window() == window && IsControl(widget)) controls.append(widget);
    }
    return controls;
}

QStringList WidgetWalk::WithoutName(const QWidget* window)
{
    QStringList missing;
    for (QWidget* control : Controls(window)) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
        if (!accessible || accessible->text(QAccessible::Name).isEmpty()) missing.append(Describe(control));
    }
    return missing;
}

QStringList WidgetWalk::OutOfReach(InputDriver& input, const QWidget* window)
{
    QSet<QWidget*> missing;
    for (QWidget* control : Controls(window)) {
        // Of buttons that exclude each other the arrows choose one, and Tab comes to that one alone.
        const auto* button = qobject_cast<QAbstractButton*>(control);
        if (!button || !button->autoExclusive() || button->isChecked()) missing.insert(control);
    }
    const int limit = missing.size() * 3 + 20;
    for (int step = 0; step < limit && !missing.isEmpty(); ++step) {
        input.Key(Qt::Key_Tab);
        missing.remove(QApplication::focusWidget());
    }
    QStringList names;
    for (const QWidget* control : missing)
        names.append(Describe(control));
    return names;
}

QStringList WidgetWalk::TooPale(QWidget* window)
{
    const QImage picture = window->grab().toImage();
    QList<QWidget*> widgets = window->findChildren<QWidget*>();
    widgets.append(window);
    QStringList pale;
    for (const QWidget* widget : widgets) {
        if (widget->window() != window) continue;
        for (const Text& text : TextsOf(widget, window)) {
            if (text.words.trimmed().isEmpty()) continue;
            const double contrast = DrawnContrast(picture, text.place);
            if (contrast < LeastContrast) {
                pale.append(
                    QStringLiteral("%1: \"%2\" with %3").arg(Describe(widget), text.words).arg(contrast));
            }
        }
    }
    return pale;
}
