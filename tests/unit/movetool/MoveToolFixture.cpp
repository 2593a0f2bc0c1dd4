#include "MoveToolFixture.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolBarManager.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentLayerLockerForWrite.h"
#include "document/LayerKind.h"
#include "gui/LToolBoxWidget.h"
#include "gui/LexoAppKeyHook.h"
#include "resource/ResourceFolder.h"
#include "resource/Theme.h"
#include "support/DocumentFixture.h"

void MoveToolFixture::MakeTool()
{
    Theme::Apply(Theme::Look::Dark, ResourceFolder::Path());
    m_pFixture = std::make_unique<ViewFixture>(16, 12, Qt::black);
    {
        const LXDocumentLayerLockerForWrite locker(Document(), 1);
        for (int y = 0; y < 12; ++y) {
            for (int x = 0; x < 16; ++x) {
                Document()->GetLayerImage(1)->SetColor(x, y, LXRGBA32i(Source(x, y)));
            }
        }
    }
    Document()->UpdateDocumentRect({});
    m_pTool = std::make_unique<MoveTool>();
    m_pTool->SetToolBarManager(ZKToolBarManager::GetInstance());
    m_pTool->SetToolBox(LToolBoxWidget::GetInstance());
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
    ZKToolGroupManager::Activate(m_pTool->GetActivateAction());
}

void MoveToolFixture::DropTool()
{
    m_pTool.reset();
    m_pFixture.reset();
}

void MoveToolFixture::Press(const QPointF& scenePos, Qt::KeyboardModifiers modifiers)
{
    m_pFixture->Input().PressInScene(m_pFixture->View(), scenePos, Qt::LeftButton, modifiers);
}

void MoveToolFixture::Move(const QPointF& scenePos)
{
    m_pFixture->Input().MoveInScene(m_pFixture->View(), scenePos);
}

void MoveToolFixture::Release(const QPointF& scenePos)
{
    m_pFixture->Input().ReleaseInScene(m_pFixture->View(), scenePos);
}

void MoveToolFixture::Drag(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers)
{
    Press(from, modifiers);
    Move(to);
    Release(to);
}

void MoveToolFixture::Select(const QRect& rect)
{
    LXImage32 mask(rect.width(), rect.height());
    mask.Fill(LXRGBA32i(0xFF000000));
    Document()->SetSelectionMask(mask, rect.topLeft());
}

void MoveToolFixture::AddMask(const QRect& hidden)
{
    Document()->AddMask(1, true);
    {
        const LXDocumentLayerLockerForWrite locker(Document(), 1);
        LXImage32* mask = Document()->GetMaskImage(1);
        for (int y = hidden.top(); y <= hidden.bottom(); ++y) {
            for (int x = hidden.left(); x <= hidden.right(); ++x) {
                mask->SetColor(x, y, LXRGBA32i(0));
            }
        }
    }
    Document()->UpdateDocumentRect({});
}

unsigned int MoveToolFixture::AddLayer(const QRect& rect, const QColor& color)
{
    LXImage32 image(rect.width(), rect.height());
    image.Fill(LXRGBA32i(color.rgba()));
    return Document()->AddLayer(QStringLiteral("Above"), image, rect.topLeft());
}

unsigned int MoveToolFixture::AddLayerOfKind(int kind)
{
    const bool isText = kind == LayerKind::Text;
    const unsigned int id = isText ? Document()->AddTextLayer(QStringLiteral("Text"), {2, 8})
                                   : Document()->AddAdjustmentLayer(QStringLiteral("Darker"), LXAdjustment());
    if (isText) Document()->SetText(id, QStringLiteral("A"));
    m_pFixture->SelectLayers({0});
    return id;
}

QRgb MoveToolFixture::Merged(int x, int y) const
{
    QColor color;
    return Document()->GetPixel(0, {x, y}, &color) ? color.rgba() : 0;
}

QStringList MoveToolFixture::Whole() const
{
    return DocumentFixture::DescribeWhole(Document());
}

QStringList MoveToolFixture::Texts() const
{
    QStringList texts;
    const LexoUndoStack& history = m_pFixture->History();
    for (int i = 0; i < history.count(); ++i) {
        texts.append(history.text(i));
    }
    return texts;
}

QStringList MoveToolFixture::BoxesDuring(const std::function<void()>& gesture, int count)
{
    // Those that don't come wait on, so they must not know of this call.
    auto boxes = std::make_shared<QStringList>();
    for (int i = 0; i < count; ++i) {
        m_pFixture->Input().WhenModalShows<LXMessageBox>([boxes](LXMessageBox* box) {
            boxes->append(box->windowTitle() + ": " + box->GetText());
            box->close();
        });
    }
    gesture();
    return *boxes;
}

void MoveToolFixture::SendKey(int key, bool down)
{
    LexoAppKeyHook* hook = LexoAppKeyHook::instance();
    if (down) {
        emit hook->KeyPressed(key);
    } else {
        emit hook->KeyReleased(key);
    }
}
