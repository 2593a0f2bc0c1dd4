#pragma once

#include "EditorExport.h"

#include "app/Preferences.h"
#include "guicore/LXDialog.h"

#include <memory>

namespace Ui {
class PreferencesDialog;
}

/// Asks for what holds for the whole program. Main thread only.
class ZK_EDITOR_EXPORT PreferencesDialog : public LXDialog
{
    Q_OBJECT

public:
    PreferencesDialog(const Preferences& values, QWidget* parent);
    ~PreferencesDialog() override;

    /// What the controls say at the moment.
    Preferences GetValues() const;

    /// Offers the profile of a file in both lists; tells in a message why it can't.
    void AddProfile(const QString& file);

private:
    void SetUpScales();
    void SetUpProfiles();
    void NameScreen();
    void ListProfile(int index);
    void AskForProfile();
    void AlignFields();
    void Show(const Preferences& values);

    std::unique_ptr<Ui::PreferencesDialog> m_pUi;
    QString m_Screen; ///< that the profile is chosen for, as ScreenProfile::KeyOf()
};
