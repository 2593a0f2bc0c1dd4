#include "app/ProfileDialog.h"

#include "ui_ProfileDialog.h"

#include "core/ZKCMSManager.h"
#include "guicore/LXMessageBox.h"
#include "resource/LXResource.h"

#include <QFileDialog>

namespace {
/// In the combo box, the index of the manager's list.
constexpr int NoProfile = -1;

/// The rows of the combo box.
enum IntentRow
{
    RelativeRow,
    PerceptualRow,
};
} // namespace

ProfileDialog::ProfileDialog(Purpose purpose, const ZKCMSProfile& present, QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::ProfileDialog>()), m_Purpose(purpose)
{
    m_pUi->setupUi(this);
    const bool isConversion = purpose == Purpose::Convert;
    setWindowTitle(isConversion ? tr("Convert to profile") : tr("Assign profile"));
    m_pUi->m_pPresentNameLbl->setText(NameOf(present));
    m_pUi->m_pIntentLbl->setVisible(isConversion);
    m_pUi->m_pIntentCmb->setVisible(isConversion);
    m_pUi->m_pBlackPointChb->setVisible(isConversion);
    m_pUi->m_pNoteLbl->setText(
        isConversion ? tr("The picture goes on looking as it does; the values of its pixels change.")
                     : tr("The values of the pixels stay as they are; the picture looks different."));
    ListProfiles();
    const int working = m_pUi->m_pProfileCmb->findData(ZKCMSManager::GetInstance()->GetWorkingRGBIndex());
    m_pUi->m_pProfileCmb->setCurrentIndex(qMax(0, working));
    layout()->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_pUi->m_pFileBtn, &QPushButton::clicked, this, &ProfileDialog::AskForFile);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &ProfileDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &ProfileDialog::Reject);
}

ProfileDialog::~ProfileDialog() = default;

ZKCMSProfile ProfileDialog::GetProfile() const
{
    const int index = m_pUi->m_pProfileCmb->currentData().toInt();
    return index == NoProfile ? ZKCMSProfile() : ZKCMSManager::GetInstance()->GetRGBProfile(index);
}

ZKCMSRendering ProfileDialog::GetRendering() const
{
    const bool isPerceptual = m_pUi->m_pIntentCmb->currentIndex() == PerceptualRow;
    return {isPerceptual ? ZKCMSRendering::Intent::Perceptual : ZKCMSRendering::Intent::Relative,
            m_pUi->m_pBlackPointChb->isChecked()};
}

QString ProfileDialog::NameOf(const ZKCMSProfile& profile)
{
    if (profile.IsNull()) return tr("None (counts as sRGB)");
    const QString name = profile.GetDescription();
    return name.isEmpty() ? tr("Without a name") : name;
}

void ProfileDialog::ListProfiles()
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    // What was chosen stays so; the list only grows.
    const QVariant chosen = m_pUi->m_pProfileCmb->currentData();
    m_pUi->m_pProfileCmb->clear();
    if (m_Purpose == Purpose::Assign) m_pUi->m_pProfileCmb->addItem(NameOf(ZKCMSProfile()), NoProfile);
    for (int index = 0; index < manager->GetRGBProfileCount(); ++index) {
        if (m_Purpose == Purpose::Convert && !manager->IsRGBTarget(index)) continue;
        m_pUi->m_pProfileCmb->addItem(manager->GetRGBProfileName(index), index);
    }
    if (chosen.isValid()) m_pUi->m_pProfileCmb->setCurrentIndex(m_pUi->m_pProfileCmb->findData(chosen));
}

void ProfileDialog::AskForFile()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("Take the profile from a file"), QString(),
                                                      tr("Color profiles (*.icc *.icm *.ICC *.ICM)"));
    if (!file.isEmpty()) ChooseFile(file);
}

void ProfileDialog::ChooseFile(const QString& file)
{
    QString message;
    const int index = ZKCMSManager::GetInstance()->AddRGBProfile(file, &message);
    if (index >= 0) ListProfiles();
    const int row = index < 0 ? -1 : m_pUi->m_pProfileCmb->findData(index);
    if (row >= 0) {
        m_pUi->m_pProfileCmb->setCurrentIndex(row);
        return;
    }
    if (message.isEmpty()) {
        message = tr("The color profile “%1” only tells what the colors of a camera or a scanner are. A "
                     "picture can't be converted to it.")
                      .arg(ZKCMSManager::GetInstance()->GetRGBProfileName(index));
    }
    LXMessageBox::Warning(this, LXResource::GetData(LXResource::ProductName).toString(), message);
}
