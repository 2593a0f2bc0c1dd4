#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// What a file said of a layer or a document that the editor has no meaning for. It is carried along unread,
/// goes where the layer goes, and back into the file that is saved. A value; any thread.
struct ForeignContent
{
    struct Attribute
    {
        QString space; ///< the namespace; empty without one
        QString name;
        QString value;

        friend bool operator==(const Attribute& a, const Attribute& b)
        {
            return a.space == b.space && a.name == b.name && a.value == b.value;
        }
    };

    QVector<Attribute> attributes;
    QByteArray children;  ///< XML elements inside, one behind the other, each with its own namespaces
    QByteArray followers; ///< likewise those behind the layer; of a document, those before its first layer
};

/// The same for a whole document.
struct ForeignDocumentContent : ForeignContent
{
    /// A part of the archive that nothing known refers to.
    struct Entry
    {
        QString name;
        QByteArray bytes;
        bool isPacked = true; ///< it was compressed in the archive
    };

    QVector<Attribute> stackAttributes; ///< of the element around all layers
    QVector<Entry> entries;
};
