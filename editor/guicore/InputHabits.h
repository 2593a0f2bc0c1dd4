#pragma once

#include "EditorExport.h"

#include <QObject>

class QAbstractSlider;

/// How the controls of the whole program take the mouse.
///
/// Lives as long as the application and watches it: the wheel changes a spin box, a combo box or a slider
/// only while it has the focus, so that scrolling a panel changes no value; elsewhere the wheel goes on to
/// what lies around. Main thread only.
class ZK_EDITOR_EXPORT InputHabits : public QObject
{
    Q_OBJECT

public:
    explicit InputHabits(QObject* parent);

    bool eventFilter(QObject* object, QEvent* event) override;

    /// A double click sets the slider back to this value.
    static void ResetOnDoubleClick(QAbstractSlider* slider, int value);
};
