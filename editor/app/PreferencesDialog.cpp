#include "app/PreferencesDialog.h"

#include "ui_PreferencesDialog.h"

#include "app/ScreenProfile.h"
#include "core/ZKCMSManager.h"
#include "guicore/LXMessageBox.h"
#include "resource/LXResource.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QPushButton>

namespace {
constexpr int ScaleStep = 25; // percent
constexpr qint64 Megabyte = 1024 * 1024;

/// The rows of the combo box.
enum LookRow
{
    DarkRow,
    LightRow,
};

enum IntentRow
{
    RelativeRow,
    PerceptualRow,
};

/// A profile whose file is gone stays chosen until another one is.
void Choose(QComboBox* profiles, const QString& file)
{
    if (profiles->findData(file) < 0) profiles->addItem(QFileInfo(file).fileName(), file);
    profiles->setCurrentIndex(profiles->findData(file));
}
} // namespace

PreferencesDialog::PreferencesDialog(const Preferences& values, QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::PreferencesDialog>()), m_Screen(values.colors.screen)
{
    m_pUi->setupUi(this);
    SetUpScales();
    SetUpProfiles();
    NameScreen();
    AlignFields();
    Show(values);
    layout()->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &PreferencesDialog::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &PreferencesDialog::Reject);
    connect(m_pUi->m_pButtons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            [this] { Show(Preferences()); });
}

PreferencesDialog::~PreferencesDialog() = default;

void PreferencesDialog::SetUpScales()
{
    for (int percent = qRound(Preferences::LeastScale * 100); percent <= qRound(Preferences::MostScale * 100);
         percent += ScaleStep) {
        m_pUi->m_pScaleCmb->addItem(tr("%1 %").arg(percent), percent / 100.0);
    }
}

void PreferencesDialog::SetUpProfiles()
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    m_pUi->m_pScreenCmb->addItem(tr("The screen's own"), QString());
    m_pUi->m_pScreenCmb->addItem(manager->GetRGBProfileName(0), QString(ColorPreferences::PlainScreen));
    for (int index = 0; index < manager->GetRGBProfileCount(); ++index) {
        if (manager->IsRGBTarget(index)) ListProfile(index);
    }
    connect(m_pUi->m_pProfileFileBtn, &QPushButton::clicked, this, &PreferencesDialog::AskForProfile);
}

void PreferencesDialog::NameScreen()
{
    constexpr int longestName = 160; // pixels
    const QString name = ScreenProfile::NameOf(m_Screen);
    if (name.isEmpty()) return;
    const QString shown = fontMetrics().elidedText(name, Qt::ElideRight, longestName);
    m_pUi->m_pScreenLbl->setText(tr("Profile of s&creen “%1”:").arg(QString(shown).replace('&', "&&")));
    m_pUi->m_pScreenCmb->setAccessibleName(tr("Profile of the screen “%1”").arg(name));
    m_pUi->m_pScreenCmb->setToolTip(
        tr("What pictures are shown in while the window is on the screen “%1”; each screen has its own "
           "choice. The screen's own is the one that the system has set for it")
            .arg(name));
}

void PreferencesDialog::ListProfile(int index)
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    const QString file = manager->GetRGBProfileFile(index);
    if (m_pUi->m_pWorkingCmb->findData(file) < 0) {
        m_pUi->m_pWorkingCmb->addItem(manager->GetRGBProfileName(index), file);
    }
    if (m_pUi->m_pScreenCmb->findData(file) < 0) {
        m_pUi->m_pScreenCmb->addItem(manager->GetRGBProfileName(index), file);
    }
}

void PreferencesDialog::AskForProfile()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("Add a profile from a file"), QString(),
                                                      tr("Color profiles (*.icc *.icm *.ICC *.ICM)"));
    if (!file.isEmpty()) AddProfile(file);
}

void PreferencesDialog::AddProfile(const QString& file)
{
    ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QString message;
    const int index = manager->AddRGBProfile(file, &message);
    if (index >= 0 && manager->IsRGBTarget(index)) {
        ListProfile(index);
        return;
    }
    if (index >= 0) {
        message = tr("The color profile “%1” only tells what the colors of a camera or a scanner are.")
                      .arg(manager->GetRGBProfileName(index));
    }
    LXMessageBox::Warning(this, LXResource::GetData(LXResource::ProductName).toString(), message);
}

void PreferencesDialog::AlignFields()
{
    // One column of labels and one of fields through all groups.
    const QList<QFormLayout*> groups = findChildren<QFormLayout*>();
    int labelWidth = 0;
    int fieldWidth = 0;
    for (const QFormLayout* group : groups) {
        for (int row = 0; row < group->rowCount(); ++row) {
            if (!group->itemAt(row, QFormLayout::LabelRole)) continue;
            labelWidth = qMax(labelWidth, group->itemAt(row, QFormLayout::LabelRole)->sizeHint().width());
            fieldWidth = qMax(fieldWidth, group->itemAt(row, QFormLayout::FieldRole)->sizeHint().width());
        }
    }
    for (const QFormLayout* group : groups) {
        for (int row = 0; row < group->rowCount(); ++row) {
            if (!group->itemAt(row, QFormLayout::LabelRole)) continue;
            group->itemAt(row, QFormLayout::LabelRole)->widget()->setMinimumWidth(labelWidth);
            group->itemAt(row, QFormLayout::FieldRole)->widget()->setMinimumWidth(fieldWidth);
        }
    }
}

void PreferencesDialog::Show(const Preferences& values)
{
    m_pUi->m_pLookCmb->setCurrentIndex(values.look == Theme::Look::Light ? LightRow : DarkRow);
    const int scale = m_pUi->m_pScaleCmb->findData(values.scale);
    m_pUi->m_pScaleCmb->setCurrentIndex(qMax(0, scale));
    Choose(m_pUi->m_pWorkingCmb, values.colors.workingProfile);
    Choose(m_pUi->m_pScreenCmb, values.colors.screenProfile);
    const bool isPerceptual = values.colors.rendering.intent == ZKCMSRendering::Intent::Perceptual;
    m_pUi->m_pIntentCmb->setCurrentIndex(isPerceptual ? PerceptualRow : RelativeRow);
    m_pUi->m_pBlackPointChb->setChecked(values.colors.rendering.blackPoint);
    m_pUi->m_pMemorySpn->setValue(values.memoryMegabytes);
    m_pUi->m_pUndoStepsSpn->setValue(values.undoSteps);
    m_pUi->m_pUndoMemorySpn->setValue(values.undoMegabytes);
    m_pUi->m_pLargestSideSpn->setValue(values.fileLimits.maxSide);
    m_pUi->m_pLargestMemorySpn->setValue(static_cast<int>(values.fileLimits.maxDecodedBytes / Megabyte));
}

Preferences PreferencesDialog::GetValues() const
{
    Preferences values;
    values.look = m_pUi->m_pLookCmb->currentIndex() == LightRow ? Theme::Look::Light : Theme::Look::Dark;
    values.scale = m_pUi->m_pScaleCmb->currentData().toDouble();
    values.colors.workingProfile = m_pUi->m_pWorkingCmb->currentData().toString();
    values.colors.screen = m_Screen;
    values.colors.screenProfile = m_pUi->m_pScreenCmb->currentData().toString();
    const bool isPerceptual = m_pUi->m_pIntentCmb->currentIndex() == PerceptualRow;
    values.colors.rendering = {isPerceptual ? ZKCMSRendering::Intent::Perceptual
                                            : ZKCMSRendering::Intent::Relative,
                               m_pUi->m_pBlackPointChb->isChecked()};
    const int memory = m_pUi->m_pMemorySpn->value();
    values.memoryMegabytes = memory == 0 ? 0 : qMax(memory, Preferences::LeastMemoryMegabytes);
    values.undoSteps = m_pUi->m_pUndoStepsSpn->value();
    values.undoMegabytes = m_pUi->m_pUndoMemorySpn->value();
    values.fileLimits.maxSide = m_pUi->m_pLargestSideSpn->value();
    values.fileLimits.maxDecodedBytes = m_pUi->m_pLargestMemorySpn->value() * Megabyte;
    return values;
}
