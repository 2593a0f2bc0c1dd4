#include "gui/LXFillOptionsDialog.h"

#include "ui_LXFillOptionsDialog.h"

#include "core/ZKApplication.h"
#include "gui/BlendModeNames.h"
#include "gui/LXColorDlg.h"

#include <QFileInfo>

namespace {
const QLatin1String ContentsKey("FillOptions/Contents");
const QLatin1String ColorKey("FillOptions/Color");
const QLatin1String PatternKey("FillOptions/Pattern");
const QLatin1String ModeKey("FillOptions/Mode");
const QLatin1String OpacityKey("FillOptions/Opacity");
const QLatin1String AntialiasingKey("FillOptions/Antialiasing");
constexpr int FullOpacity = 100;

/// The rows of the combo box.
enum Contents
{
    Foreground,
    Background,
    Color,
    Pattern,
    Black,
    Grey,
    White,
};

void SelectRow(QComboBox* combo, int row)
{
    if (row >= 0 && row < combo->count()) combo->setCurrentIndex(row);
}
} // namespace

class LXFillOptionsDialogPrivate
{
public:
    void SetUp(LXFillOptionsDialog* dialog);
    void Restore();
    void Store() const;
    void ShowContents();
    QBrush Brush(const QColor& foreground, const QColor& background) const;

    Ui::LXFillOptionsDialog m_Ui;
    bool m_bRenderOptions = true;

private:
    void FillCombos();
};

void LXFillOptionsDialogPrivate::SetUp(LXFillOptionsDialog* dialog)
{
    m_Ui.setupUi(dialog);
    dialog->layout()->setSizeConstraint(QLayout::SetFixedSize);
    FillCombos();
    Restore();
    ShowContents();

    QObject::connect(m_Ui.m_pContentsCmb, qOverload<int>(&QComboBox::currentIndexChanged), dialog,
                     [this] { ShowContents(); });
    QObject::connect(m_Ui.m_pColorBtn, &QAbstractButton::clicked, dialog, [this, dialog] {
        const QColor chosen =
            LXColorDlg::Choose(dialog, LXFillOptionsDialog::tr("Color"), m_Ui.m_pColorBtn->GetColor());
        if (chosen.isValid()) m_Ui.m_pColorBtn->SetColor(chosen);
    });
    QObject::connect(m_Ui.m_pOpacitySldr, &QSlider::valueChanged, m_Ui.m_pOpacitySpn, &QSpinBox::setValue);
    QObject::connect(m_Ui.m_pOpacitySpn, qOverload<int>(&QSpinBox::valueChanged), m_Ui.m_pOpacitySldr,
                     &QSlider::setValue);
    QObject::connect(m_Ui.m_pButtons, &QDialogButtonBox::accepted, dialog, &LXFillOptionsDialog::Accept);
    QObject::connect(m_Ui.m_pButtons, &QDialogButtonBox::rejected, dialog, &LXFillOptionsDialog::Reject);
}

void LXFillOptionsDialogPrivate::FillCombos()
{
    const auto modes = BlendModeNames();
    for (const auto& [text, mode] : modes)
        m_Ui.m_pModeCmb->addItem(text, mode);
    for (int i = 0; i < ZKApplication::GetPatternCount(); ++i) {
        const QString file = ZKApplication::GetPatternFile(i);
        m_Ui.m_pPatternCmb->addItem(QIcon(file), QFileInfo(file).completeBaseName(), file);
    }
}

void LXFillOptionsDialogPrivate::Restore()
{
    SelectRow(m_Ui.m_pContentsCmb, ZKApplication::GetUserValue(ContentsKey, Foreground).toInt());
    m_Ui.m_pColorBtn->SetColor(ZKApplication::GetUserValue(ColorKey, QColor(Qt::black)).value<QColor>());
    SelectRow(m_Ui.m_pPatternCmb, ZKApplication::GetUserValue(PatternKey, 0).toInt());
    SelectRow(m_Ui.m_pModeCmb, ZKApplication::GetUserValue(ModeKey, 0).toInt());
    const int opacity = ZKApplication::GetUserValue(OpacityKey, FullOpacity).toInt();
    m_Ui.m_pOpacitySpn->setValue(opacity);
    m_Ui.m_pOpacitySldr->setValue(opacity);
    m_Ui.m_pAntialiasingChb->setChecked(ZKApplication::GetUserValue(AntialiasingKey, true).toBool());
}

void LXFillOptionsDialogPrivate::Store() const
{
    ZKApplication::SetUserValue(ContentsKey, m_Ui.m_pContentsCmb->currentIndex());
    ZKApplication::SetUserValue(ColorKey, m_Ui.m_pColorBtn->GetColor());
    ZKApplication::SetUserValue(PatternKey, m_Ui.m_pPatternCmb->currentIndex());
    ZKApplication::SetUserValue(ModeKey, m_Ui.m_pModeCmb->currentIndex());
    ZKApplication::SetUserValue(OpacityKey, m_Ui.m_pOpacitySpn->value());
    if (m_bRenderOptions) ZKApplication::SetUserValue(AntialiasingKey, m_Ui.m_pAntialiasingChb->isChecked());
}

void LXFillOptionsDialogPrivate::ShowContents()
{
    const int contents = m_Ui.m_pContentsCmb->currentIndex();
    m_Ui.m_pColorBtn->setVisible(contents == Color);
    m_Ui.m_pPatternCmb->setVisible(contents == Pattern);
}

QBrush LXFillOptionsDialogPrivate::Brush(const QColor& foreground, const QColor& background) const
{
    switch (m_Ui.m_pContentsCmb->currentIndex()) {
    case Foreground: return QBrush(foreground);
    case Background: return QBrush(background);
    case Color: return QBrush(m_Ui.m_pColorBtn->GetColor());
    case Pattern: return QBrush(QImage(m_Ui.m_pPatternCmb->currentData().toString()));
    case Grey: return QBrush(Qt::gray);
    case White: return QBrush(Qt::white);
    default: return QBrush(Qt::black);
    }
}

LXFillOptionsDialog::LXFillOptionsDialog(QWidget* parent)
    : LXDialog(parent), m_pPrivate(std::make_unique<LXFillOptionsDialogPrivate>())
{
    m_pPrivate->SetUp(this);
}

LXFillOptionsDialog::~LXFillOptionsDialog() = default;

void LXFillOptionsDialog::SetRenderOptionsVisible(bool visible)
{
    m_pPrivate->m_bRenderOptions = visible;
    m_pPrivate->m_Ui.m_pAntialiasingChb->setVisible(visible);
}

int LXFillOptionsDialog::GetOpacity() const
{
    return m_pPrivate->m_Ui.m_pOpacitySpn->value();
}

int LXFillOptionsDialog::GetCompositionMode() const
{
    return m_pPrivate->m_Ui.m_pModeCmb->currentData().toInt();
}

bool LXFillOptionsDialog::IsAntialiased() const
{
    return !m_pPrivate->m_bRenderOptions || m_pPrivate->m_Ui.m_pAntialiasingChb->isChecked();
}

QBrush LXFillOptionsDialog::GetContentsBrush() const
{
    return m_pPrivate->Brush(ZKApplication::GetForeground(), ZKApplication::GetBackground());
}

QBrush LXFillOptionsDialog::GetContentsMaskBrush() const
{
    return m_pPrivate->Brush(ZKApplication::GetMaskForeground(), ZKApplication::GetMaskBackground());
}

void LXFillOptionsDialog::Accept()
{
    m_pPrivate->Store();
    LXDialog::Accept();
}
