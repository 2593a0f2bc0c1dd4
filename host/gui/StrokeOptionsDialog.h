#pragma once

#include "ZKHostExport.h"

#include "guicore/LXDialog.h"

#include <memory>

class StrokeOptionsDialogPrivate;

/// Asks which brush tool strokes, and how. Accepting gives the tool its settings; both are those of the last
/// time when the dialog is built. Main thread only.
class ZK_HOST_EXPORT StrokeOptionsDialog : public LXDialog
{
    Q_OBJECT

public:
    explicit StrokeOptionsDialog(QWidget* parent);
    ~StrokeOptionsDialog() override;

    /// The number of the chosen tool, for ZKBrushToolManager::GetPlugin; -1 when there is no tool, and then
    /// the dialog can't be accepted.
    int GetCurrentToolID() const;

public slots:
    void Accept() override;

private:
    std::unique_ptr<StrokeOptionsDialogPrivate> m_pPrivate;
};
