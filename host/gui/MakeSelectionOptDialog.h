#pragma once

#include "ZKHostExport.h"

#include "guicore/LXDialog.h"

#include <memory>

class MakeSelectionOptDialogPrivate;

/// Asks how a new selection meets the one that is there. Main thread only.
class ZK_HOST_EXPORT MakeSelectionOptDialog : public LXDialog
{
    Q_OBJECT

public:
    /// What GetSelectionOption() answers.
    enum Option
    {
        New = 0,
        Add = 1,
        Subtract = 2,
        Intersect = 3,
    };

    /// @param parent  a view, or something in it: without a selection in its document only New is open. For
    ///                another parent the document in front counts.
    explicit MakeSelectionOptDialog(QWidget* parent);
    ~MakeSelectionOptDialog() override;

    /// An Option; New until something else is chosen.
    int GetSelectionOption() const;

private:
    std::unique_ptr<MakeSelectionOptDialogPrivate> m_pPrivate;
};
