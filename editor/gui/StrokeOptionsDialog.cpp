#include "gui/StrokeOptionsDialog.h"

#include "ui_StrokeOptionsDialog.h"

#include "core/ZKApplication.h"
#include "core/ZKBrushToolManager.h"
#include "core/ZKIBrushTool.h"
#include "gui/CurvedSlider.h"

#include <QPushButton>

namespace {
const QLatin1String ToolKey("StrokeOptions/Tool");
constexpr int NoTool = -1;

void Connect(QSlider* slider, QSpinBox* spin)
{
    QObject::connect(slider, &QSlider::valueChanged, spin, &QSpinBox::setValue);
    QObject::connect(spin, qOverload<int>(&QSpinBox::valueChanged), slider, &QSlider::setValue);
}
} // namespace

class StrokeOptionsDialogPrivate
{
public:
    void SetUp(StrokeOptionsDialog* dialog);
    int ToolId() const;
    ZKBrushSettings Settings() const;

    Ui::StrokeOptionsDialog m_Ui;

private:
    void AlignNumbers();
    void FillTools();
    void ShowSettings();
};

void StrokeOptionsDialogPrivate::SetUp(StrokeOptionsDialog* dialog)
{
    m_Ui.setupUi(dialog);
    dialog->layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_Ui.m_pSizeSpn->setMaximum(ZKBrushSettings::MaxSize);
    m_Ui.m_pSpacingSpn->setMaximum(ZKBrushSettings::MaxSpacing);
    CurvedSlider::Connect(m_Ui.m_pSizeSldr, m_Ui.m_pSizeSpn);
    Connect(m_Ui.m_pHardnessSldr, m_Ui.m_pHardnessSpn);
    Connect(m_Ui.m_pOpacitySldr, m_Ui.m_pOpacitySpn);
    CurvedSlider::Connect(m_Ui.m_pSpacingSldr, m_Ui.m_pSpacingSpn);
    AlignNumbers();
    FillTools();
    ShowSettings();

    QObject::connect(m_Ui.m_pToolCmb, qOverload<int>(&QComboBox::currentIndexChanged), dialog,
                     [this] { ShowSettings(); });
    QObject::connect(m_Ui.m_pButtons, &QDialogButtonBox::accepted, dialog, &StrokeOptionsDialog::Accept);
    QObject::connect(m_Ui.m_pButtons, &QDialogButtonBox::rejected, dialog, &StrokeOptionsDialog::Reject);
}

// They stand in a column, and their sliders end where they begin.
void StrokeOptionsDialogPrivate::AlignNumbers()
{
    for (QSpinBox* spin : {m_Ui.m_pHardnessSpn, m_Ui.m_pOpacitySpn, m_Ui.m_pSpacingSpn})
        spin->setMinimumWidth(m_Ui.m_pSizeSpn->sizeHint().width());
}

void StrokeOptionsDialogPrivate::FillTools()
{
    const QList<int> ids = ZKBrushToolManager::GetToolIds();
    for (const int id : ids)
        m_Ui.m_pToolCmb->addItem(ZKBrushToolManager::GetPlugin(id)->GetName(), id);
    const int last = m_Ui.m_pToolCmb->findData(ZKApplication::GetUserValue(ToolKey, NoTool));
    if (last >= 0) m_Ui.m_pToolCmb->setCurrentIndex(last);

    if (!ids.isEmpty()) return;
    const QString reason = StrokeOptionsDialog::tr("There is no brush tool");
    m_Ui.m_pToolCmb->setEnabled(false);
    m_Ui.m_pToolCmb->setToolTip(reason);
    m_Ui.m_pButtons->button(QDialogButtonBox::Ok)->setEnabled(false);
    m_Ui.m_pButtons->button(QDialogButtonBox::Ok)->setToolTip(reason);
}

int StrokeOptionsDialogPrivate::ToolId() const
{
    const QVariant id = m_Ui.m_pToolCmb->currentData();
    return id.isValid() ? id.toInt() : NoTool;
}

void StrokeOptionsDialogPrivate::ShowSettings()
{
    const ZKIBrushTool* tool = ZKBrushToolManager::GetPlugin(ToolId());
    if (!tool) return;
    const ZKBrushSettings settings = tool->GetSettings();
    m_Ui.m_pSizeSpn->setValue(settings.size);
    m_Ui.m_pHardnessSpn->setValue(settings.hardness);
    m_Ui.m_pOpacitySpn->setValue(settings.opacity);
    m_Ui.m_pSpacingSpn->setValue(settings.spacing);
}

ZKBrushSettings StrokeOptionsDialogPrivate::Settings() const
{
    ZKBrushSettings settings;
    settings.size = m_Ui.m_pSizeSpn->value();
    settings.hardness = m_Ui.m_pHardnessSpn->value();
    settings.opacity = m_Ui.m_pOpacitySpn->value();
    settings.spacing = m_Ui.m_pSpacingSpn->value();
    return settings;
}

StrokeOptionsDialog::StrokeOptionsDialog(QWidget* parent)
    : LXDialog(parent), m_pPrivate(std::make_unique<StrokeOptionsDialogPrivate>())
{
    m_pPrivate->SetUp(this);
}

StrokeOptionsDialog::~StrokeOptionsDialog() = default;

int StrokeOptionsDialog::GetCurrentToolID() const
{
    return m_pPrivate->ToolId();
}

void StrokeOptionsDialog::Accept()
{
    ZKIBrushTool* tool = ZKBrushToolManager::GetPlugin(GetCurrentToolID());
    if (!tool) return;
    tool->SetSettings(m_pPrivate->Settings());
    ZKApplication::SetUserValue(ToolKey, GetCurrentToolID());
    LXDialog::Accept();
}
