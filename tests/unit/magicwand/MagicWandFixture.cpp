#include "MagicWandFixture.h"

#include "core/ZKActivateAction.h"
#include "core/ZKApplication.h"
#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LexoAppKeyHook.h"
#include "resource/ResourceFolder.h"
#include "resource/Theme.h"

#include <QApplication>
#include <QComboBox>
#include <QMap>

namespace {
const QMap<QChar, int>& Values()
{
    static const QMap<QChar, int> values{{'.', 0}, {'#', 255}, {'h', 128}, {'l', 127}, {'f', 100}};
    return values;
}
} // namespace

void MagicWandFixture::MakeTool()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    m_pFixture = std::make_unique<ViewFixture>(8, 6, Qt::white);
    for (int y = 0; y < 6; ++y) {
        m_pFixture->Document()->GetLayerImage(1)->SetColor(4, y, LXRGBA32i(0xFF000000));
    }
    m_pFixture->Document()->UpdateDocumentRect({});
    m_pTool = std::make_unique<MagicWandTool>();
    m_pTool->SetToolBarManager(ZKToolBarManager::GetInstance());
    m_pTool->SetToolBox(LToolBoxWidget::GetInstance());
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
}

void MagicWandFixture::DropTool()
{
    m_pTool.reset();
    m_pFixture.reset();
}

QWidget* MagicWandFixture::Bar() const
{
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->objectName() == "MWSelectionToolBar") return widget;
    }
    return nullptr;
}

QWidget* MagicWandFixture::Panel() const
{
    return LXToolWidgetManager::instance()->GetCurrentWidget();
}

void MagicWandFixture::SetMode(int row) const
{
    InPanel<QComboBox>("m_pModeCombo")->setCurrentIndex(row);
}

void MagicWandFixture::Click(const QPointF& scenePos, Qt::MouseButton button)
{
    m_pFixture->Input().ClickInScene(m_pFixture->View(), scenePos, button);
}

void MagicWandFixture::Press(const QPointF& scenePos, Qt::MouseButton button)
{
    m_pFixture->Input().PressInScene(m_pFixture->View(), scenePos, button);
}

void MagicWandFixture::Move(const QPointF& scenePos)
{
    m_pFixture->Input().MoveInScene(m_pFixture->View(), scenePos);
}

void MagicWandFixture::Release(const QPointF& scenePos, Qt::MouseButton button)
{
    m_pFixture->Input().ReleaseInScene(m_pFixture->View(), scenePos, button);
}

QStringList MagicWandFixture::BoxesDuring(const std::function<void()>& gesture)
{
    QStringList boxes;
    m_pFixture->Input().WhenModalShows<LXMessageBox>([&](LXMessageBox* box) {
        boxes.append(box->windowTitle() + ": " + box->GetText());
        box->close();
    });
    gesture();
    return boxes;
}

void MagicWandFixture::Select(const QStringList& rows, const QPoint& offset)
{
    LXImage32 mask(rows.first().size(), rows.size());
    for (int y = 0; y < mask.Height(); ++y) {
        for (int x = 0; x < mask.Width(); ++x) {
            mask.SetColor(x, y, LXRGBA32i(qRgba(0, 0, 0, Values().value(rows[y][x]))));
        }
    }
    m_pFixture->Document()->SetSelectionMask(mask, offset);
}

QStringList MagicWandFixture::Selection() const
{
    const LXDocumentInterface* document = m_pFixture->Document();
    const QRect rect = document->GetSelectionGeometry();
    QStringList rows;
    for (int y = 0; y < 6; ++y) {
        QString row;
        for (int x = 0; x < 8; ++x) {
            const bool isInside = rect.contains(x, y);
            const int value =
                isInside ? document->GetSelectionMask().GetColor(x - rect.x(), y - rect.y()).Alpha() : 0;
            row += Values().key(value, '?');
        }
        rows.append(row);
    }
    return rows;
}

void MagicWandFixture::SendKey(int key, bool down)
{
    LexoAppKeyHook* hook = LexoAppKeyHook::instance();
    if (down) {
        emit hook->KeyPressed(key);
    } else {
        emit hook->KeyReleased(key);
    }
}
