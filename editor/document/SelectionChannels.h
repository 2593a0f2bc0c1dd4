#pragma once

#include "EditorExport.h"

#include "document/CompositeLayer.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <mutex>

/// A selection that is kept under a name.
struct SelectionChannel
{
    QString name;
    PlacedImage coverage; ///< like a selection's mask; empty once a canvas was cropped away from it
};

/// The selections that a document keeps under names, the oldest first. It is a list of values: whoever
/// changes it sets another one. No undo.
class ZK_EDITOR_EXPORT SelectionChannels : public QObject
{
    Q_OBJECT

public:
    using List = QVector<SelectionChannel>;

    using QObject::QObject;

    /// Any thread.
    List All() const;
    /// Before others know of the document any thread, afterwards the main thread.
    void Set(const List& channels);

    /// The row of the first one of that name; -1 for none. Any thread.
    int Find(const QString& name) const;
    /// All names in order. Any thread.
    QStringList Names() const;

signals:
    void Changed();

private:
    mutable std::mutex m_Mutex;
    List m_Channels;
};
