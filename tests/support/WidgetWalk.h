#pragma once

#include <QList>
#include <QStringList>

class InputDriver;
class QWidget;

/// What can be told of a window without knowing it: for those who use it without a mouse, or without eyes, or
/// with weak ones. Each answer is a list of what is wrong, in words; empty when nothing is.
namespace WidgetWalk {
/// What a person may want to use: no bare frames and labels, no parts inside of a control, nothing that is
/// hidden or off.
QList<QWidget*> Controls(const QWidget* window);

/// Controls without a name for assistive tools.
QStringList WithoutName(const QWidget* window);

/// Controls that the Tab key never comes to. The window must be the active one.
QStringList OutOfReach(InputDriver& input, const QWidget* window);

/// Texts that stand out from their ground by less than 4.5 : 1, as they are drawn: the most frequent color is
/// the ground, and the ink is the one that differs most.
QStringList TooPale(QWidget* window);
} // namespace WidgetWalk
