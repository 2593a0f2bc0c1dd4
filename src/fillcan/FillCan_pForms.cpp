#include "fillcan/FillCan_p.h"

// The forms of the fill can: the tool-box button, the option bar with its list of patterns, and the panel.

#include "ui_FillCanToolBar.h"
#include "ui_FillCanToolWidget.h"

#include "common/BlendModeTable.h"
#include "common/JoinBothWays.h"
#include "core/ZKApplication.h"
#include "gui/LToolBoxButton.h"
#include "utils/ZKIconHelper.h"

#include <QAction>
#include <QDir>

namespace {
constexpr int PatternFillMode = 1;

// Toward minus infinity, since a truncation alone would fold -0.5 into the canvas.
int PixelAt(double coordinate)
{
    return static_cast<int>(coordinate < 0 ? coordinate - 0.999 : coordinate);
}

} // namespace

void FillCanPrivate::CreateToolBoxButton()
{
    m_pToolBoxButton = new LToolBoxButton;
    connect(m_pToolBoxButton, &LToolBoxButton::LMousePressed, this, &FillCanPrivate::ToolBoxButtonPressed);
    connect(m_pToolBoxButton, &LToolBoxButton::RMousePressed, this, &FillCanPrivate::ToolBoxButtonPressed);
    m_pToolBoxButton->SetShortcut(QKeySequence(Qt::Key_F));

    auto* action = new QAction(ZKIconHelper::DisabledIcon(QStringLiteral("theme:tool-bar-bucket.png")),
                               tr("Fill can tool"), m_pToolBoxButton);
    action->setCheckable(true);
    action->setChecked(true);
    m_pToolBoxButton->setDefaultAction(action);
    m_pToolBoxButton->setChecked(false);
}

void FillCanPrivate::CreateToolWidget()
{
    m_pToolWidget = new QWidget;
    m_ToolWidgetUi = std::make_unique<Ui::FillCanToolWidget>();
    m_ToolWidgetUi->setupUi(m_pToolWidget);
    m_ToolWidgetUi->m_pBlendCombo->addItems(BlendModeTable::Texts());
}

void FillCanPrivate::CreateToolBar()
{
    m_pToolBar = new QWidget;
    m_ToolBarUi = std::make_unique<Ui::FillCanToolBar>();
    m_ToolBarUi->setupUi(m_pToolBar);
    m_ToolBarUi->m_pBlendCombo->addItems(BlendModeTable::Texts());
    m_pToolBar->setStatusTip(tr("Click fills the area; Shift++ and Shift+- change the blending"));
    m_pToolBar->setWindowIcon(ZKIconHelper::DisabledIcon(QStringLiteral("theme:tool-bar-bucket.png")));

    JoinForms();
    FillPatterns();
    connect(m_ToolWidgetUi->m_pFillModeCmb, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &FillCanPrivate::FillModeChanged);
}

void FillCanPrivate::JoinForms()
{
    const Ui::FillCanToolBar& bar = *m_ToolBarUi;
    const Ui::FillCanToolWidget& panel = *m_ToolWidgetUi;
    JoinBothWays(panel.m_pToleranceSpn, panel.m_pToleranceSldr);
    JoinBothWays(panel.m_pToleranceSpn, bar.m_pToleranceSpn);
    JoinBothWays(panel.m_pOpacitySpn, panel.m_pOpacitySldr);
    JoinBothWays(panel.m_pOpacitySpn, bar.m_pOpacitySpn);
    JoinBothWays(panel.m_pFillModeCmb, bar.m_pFillModeCmb);
    JoinBothWays(panel.m_pBlendCombo, bar.m_pBlendCombo);
    JoinBothWays(panel.m_pIgnoreChb, bar.m_pIgnoreChb);
    JoinBothWays(panel.m_pAntialiasingChb, bar.m_pAntialiasingChb);
    JoinBothWays(panel.m_pContiguousChb, bar.m_pContiguousChb);
    JoinBothWays(panel.m_pAllLayersChb, bar.m_pAllLayersChb);
}

// ---- patterns

void FillCanPrivate::FillPatterns()
{
    m_pSelectPatternBtn = m_ToolBarUi->m_pSelectPatternBtn;
    m_pPatternSelect = new PatternSelectWidget(m_pToolBar);
    for (int i = 0; i < ZKApplication::GetPatternCount(); ++i) {
        const QString file = ZKApplication::GetPatternFile(i);
        m_pPatternSelect->AddItem(file, file.mid(file.lastIndexOf(QDir::separator()) + 1));
    }
    m_pPatternSelect->SelectItem(ZKApplication::GetTexturePatternIndex());
    PatternChanged(m_pPatternSelect->GetCurrentItem());

    m_pPatternSelect->installEventFilter(this);
    connect(m_pPatternSelect, &PatternSelectWidget::CurrentItemChanged, this,
            &FillCanPrivate::PatternChanged);
    connect(m_pPatternSelect, &PatternSelectWidget::ItemDoubleClicked, this,
            &FillCanPrivate::PatternDoubleClicked);
    connect(m_pSelectPatternBtn, &QToolButton::toggled, this, &FillCanPrivate::ShowPatternSelectMenu);
}

void FillCanPrivate::FillModeChanged(int) {}

void FillCanPrivate::PatternChanged(int index)
{
    m_pSelectPatternBtn->setIcon(ZKIconHelper::DisabledIcon(m_pPatternSelect->GetItemImage(index)));
}

void FillCanPrivate::PatternDoubleClicked(int)
{
    m_pSelectPatternBtn->setChecked(false);
}

void FillCanPrivate::ShowPatternSelectMenu(bool show)
{
    if (!show) {
        m_pPatternSelect->hide();
        return;
    }
    m_pPatternSelect->move(m_pSelectPatternBtn->mapToGlobal(QPoint(0, m_pSelectPatternBtn->height() + 1)));
    m_pPatternSelect->show();
    m_pPatternSelect->setFocus();
}

bool FillCanPrivate::eventFilter(QObject* object, QEvent* event)
{
    // While the list dies it still gets events, but is a plain widget by then.
    if (qobject_cast<PatternSelectWidget*>(object)) FollowPatternSelect(event->type());
    return LXViewToolBase::eventFilter(object, event);
}

void FillCanPrivate::FollowPatternSelect(QEvent::Type type)
{
    // The bar deletes its button before its pop-up list, which hides then.
    if (!m_pSelectPatternBtn) return;

    if (type == QEvent::Hide) m_pSelectPatternBtn->setChecked(false);
    if (type == QEvent::WindowDeactivate && !IsPatternButtonUnderMouse()) m_pPatternSelect->hide();
}

// A press on the checked button will hide the list by itself; hidden before, it would open again.
bool FillCanPrivate::IsPatternButtonUnderMouse() const
{
    const QPoint position = m_pSelectPatternBtn->mapFromGlobal(QCursor::pos());
    return m_pSelectPatternBtn->isChecked() && m_pSelectPatternBtn->rect().contains(position);
}

// ---- what the forms say

FillJobData FillCanPrivate::MakeJobData(const QPointF& scenePos) const
{
    const Ui::FillCanToolBar& bar = *m_ToolBarUi;
    const Ui::FillCanToolWidget& panel = *m_ToolWidgetUi;
    FillJobData data;
    data.position = QPoint(PixelAt(scenePos.x()), PixelAt(scenePos.y()));
    data.opacity = bar.m_pOpacitySpn->value() / 100.0;
    data.antialiasing = bar.m_pAntialiasingChb->isChecked();
    data.contiguous = panel.m_pContiguousChb->isChecked();
    data.allLayers = bar.m_pAllLayersChb->isChecked();
    data.ignoreTransparency = panel.m_pIgnoreChb->isChecked();
    data.layerId = static_cast<unsigned int>(GetCurrentLayerId());
    data.tolerance = panel.m_pToleranceSpn->value();
    data.blendMode = panel.m_pBlendCombo->currentIndex();
    return data;
}

QBrush FillCanPrivate::MakeBrush(const QColor& color) const
{
    if (m_ToolWidgetUi->m_pFillModeCmb->currentIndex() != PatternFillMode) return color;
    // As an image: the job is on another thread, where there are no pixmaps.
    return m_pPatternSelect->GetPattern().textureImage();
}
