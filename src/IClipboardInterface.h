#pragma once

#include <QList>
#include <QtPlugin>

class QAbstractItemModel;
class QAction;
class QItemSelectionModel;

/// A tool that keeps a clipboard with a list of what was copied. Main thread only.
class IClipboardInterface
{
public:
    virtual ~IClipboardInterface() = default;

    /// Hands over the host's list and what is selected in it. The tool keeps both and owns neither.
    virtual void SetClipboardModel(QAbstractItemModel* model, QItemSelectionModel* selection) = 0;

    /// What can be done with the list. The actions stay the tool's.
    virtual QList<QAction*> GetClipboardActions() = 0;
};

Q_DECLARE_INTERFACE(IClipboardInterface, "IClipboardInterface/1.0")
