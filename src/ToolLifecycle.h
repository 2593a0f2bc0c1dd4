#pragma once

#include <QList>

class QObject;

/// The common part of the start and the end of all tools. Objects that aren't an ITool are skipped.
/// Main thread only.

/// Hands the parts of the editor to each tool in turn; when all have them, lets each restore its settings,
/// so that a tool that becomes active finds all others in place.
void StartTools(const QList<QObject*>& objects);

/// Lets each tool keep its settings.
void SaveTools(const QList<QObject*>& objects);
