#pragma once

#include "ZKHostExport.h"

#include <QObject>
#include <QString>

/// One unit that a plug-in object registers with the editor, such as one tool.
///
/// The editor reaches the tool behind a unit through the dynamic property "tool", a `QObject*`; a unit
/// without that property offers nothing but its names. Main thread only.
class ZK_HOST_EXPORT ZKPlugin : public QObject
{
    Q_OBJECT

public:
    explicit ZKPlugin(QObject* parent = nullptr);
    ~ZKPlugin() override;

    /// The kind of unit; 1 is a tool.
    virtual int GetType() = 0;

    /// The registry name, never translated.
    virtual QString GetName() = 0;

    /// The object that the unit hangs under in the editor; null for none.
    virtual QObject* GetParent() = 0;

    /// The unit's identifier in braces, unique in the program.
    virtual QString GetId() = 0;
};
