#pragma once

#include "gui/LXOperationProgressDlg.h"

/// The dialog that stands while a fill takes long: a bar that runs through once in a minute and starts
/// anew, since a fill can't tell how far it is. Main thread only.
class FillCanProgress : public LXOperationProgressDlg
{
    Q_OBJECT

public:
    explicit FillCanProgress(QWidget* parent);

    /// One step of the bar; from the end back to the beginning.
    void Step();
};
