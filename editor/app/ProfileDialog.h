#pragma once

#include "EditorExport.h"

#include "guicore/LXDialog.h"
#include "image/ZKCMSProfile.h"
#include "image/ZKCMSTransform.h"

#include <memory>

namespace Ui {
class ProfileDialog;
}

/// Asks which color profile a picture gets. Main thread only.
class ZK_EDITOR_EXPORT ProfileDialog : public LXDialog
{
    Q_OBJECT

public:
    enum class Purpose
    {
        Assign,  ///< any profile, or none
        Convert, ///< one that colors can be brought into, and how
    };

    /// @param present  the profile that the picture has
    ProfileDialog(Purpose purpose, const ZKCMSProfile& present, QWidget* parent);
    ~ProfileDialog() override;

    /// Null for none.
    ZKCMSProfile GetProfile() const;
    ZKCMSRendering GetRendering() const;

    /// Takes the profile of a file into the list and chooses it; tells in a message why it can't.
    void ChooseFile(const QString& file);

    /// A profile in words: its name, and that there is none.
    static QString NameOf(const ZKCMSProfile& profile);

private:
    void ListProfiles();
    void AskForFile();

    std::unique_ptr<Ui::ProfileDialog> m_pUi;
    Purpose m_Purpose;
};
