#pragma once

#include <QObject>

/// Tells changes of the current view's state bits to whoever follows them: the tool container for all
/// tools with IDocumentViewState, and the tools that only offer menu commands. Main thread only.
class DocumentViewNotifier : public QObject
{
    Q_OBJECT

signals:
    /// After the change; bit 0 is the view lock.
    void StateChanged(quint64 oldState, quint64 newState);
};
