#include "selectionmenu/SelectColorRangeDlg.h"

#include "selectionmenu/ColorSwatch.h"
#include "ui_SelectColorRangeDlg.h"

#include "common/JoinBothWays.h"

namespace {
constexpr int DefaultTolerance = 32;
constexpr QSize PreviewBounds(320, 200);

/// The operations in the order of the combo box.
constexpr SelectionCommandData::LogicalOp Operations[] = {
    SelectionCommandData::Replace, SelectionCommandData::Unite, SelectionCommandData::Subtract,
    SelectionCommandData::Intersect};
} // namespace

SelectColorRangeDlg::SelectColorRangeDlg(QWidget* parent)
    : LXDialog(parent), m_pUi(std::make_unique<Ui::SelectColorRangeDlg>())
{
    m_pUi->setupUi(this);
    m_pUi->m_pPreviewLbl->setFixedSize(PreviewBounds);
    m_pUi->m_pToleranceSpn->setValue(DefaultTolerance);
    m_pUi->m_pToleranceSldr->setValue(DefaultTolerance);
    m_pUi->m_pSwatchesLayout->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    JoinBothWays(m_pUi->m_pToleranceSpn, m_pUi->m_pToleranceSldr);
    layout()->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_pUi->m_pToleranceSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &SelectColorRangeDlg::ToleranceChanged);
    connect(m_pUi->m_pChooseBtn, &QAbstractButton::clicked, this, &SelectColorRangeDlg::ChooseColorClicked);
    connect(m_pUi->m_pRemoveBtn, &QAbstractButton::clicked, this, &SelectColorRangeDlg::RemoveClicked);
    connect(m_pUi->m_pRemoveAllBtn, &QAbstractButton::clicked, this, &SelectColorRangeDlg::RemoveAllClicked);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::accepted, this, &SelectColorRangeDlg::Accept);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &SelectColorRangeDlg::Reject);
    UpdateButtons();
}

SelectColorRangeDlg::~SelectColorRangeDlg() = default;

void SelectColorRangeDlg::AddSwatch(const QColor& color)
{
    auto* swatch = new ColorSwatch(color, m_pUi->m_pSwatches);
    connect(swatch, &ColorSwatch::Chosen, this,
            [this, swatch] { emit SwatchClicked(m_Swatches.indexOf(swatch)); });
    m_pUi->m_pSwatchesLayout->addWidget(swatch, 0, m_NextColumn++);
    m_Swatches.append(swatch);
    swatch->show();
    UpdateButtons();
}

void SelectColorRangeDlg::RemoveSwatch(int index)
{
    if (index < 0 || index >= m_Swatches.size()) return;
    delete m_Swatches.takeAt(index);
    UpdateButtons();
}

void SelectColorRangeDlg::RemoveSwatches()
{
    qDeleteAll(m_Swatches);
    m_Swatches.clear();
    m_NextColumn = 0;
    UpdateButtons();
}

void SelectColorRangeDlg::SetCurrentSwatch(int index)
{
    for (int i = 0; i < m_Swatches.size(); ++i) {
        m_Swatches[i]->SetCurrent(i == index);
    }
}

int SelectColorRangeDlg::GetTolerance() const
{
    return m_pUi->m_pToleranceSpn->value();
}

SelectionCommandData::LogicalOp SelectColorRangeDlg::GetOperation() const
{
    return Operations[qBound(0, m_pUi->m_pModeCmb->currentIndex(), 3)];
}

QSize SelectColorRangeDlg::GetPreviewBounds() const
{
    return PreviewBounds * devicePixelRatioF();
}

void SelectColorRangeDlg::SetPreview(const QImage& preview)
{
    QPixmap picture = QPixmap::fromImage(preview);
    picture.setDevicePixelRatio(devicePixelRatioF());
    m_pUi->m_pPreviewLbl->setPixmap(picture);
}

void SelectColorRangeDlg::UpdateButtons()
{
    m_pUi->m_pRemoveBtn->setEnabled(!m_Swatches.isEmpty());
    m_pUi->m_pRemoveAllBtn->setEnabled(!m_Swatches.isEmpty());
}
