#pragma once

#include <QList>

class QObject;
class ZKActivateAction;

/// The common part of the start and the end of all tools. Objects that aren't an ITool are skipped.
/// Main thread only.

/// Hands the parts of the editor to each tool in turn, and its action to the tool group.
void ConnectTools(const QList<QObject*>& objects);

/// The action of the tool; null when the object isn't an ITool.
ZKActivateAction* ActionOf(QObject* object);

/// Lets each tool restore its settings. Comes last at the start, so that a tool that becomes active finds
/// all others in place.
void LoadTools(const QList<QObject*>& objects);

/// Lets each tool keep its settings.
void SaveTools(const QList<QObject*>& objects);
