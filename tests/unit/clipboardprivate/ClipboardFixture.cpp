#include "ClipboardFixture.h"

#include "gui/ClipboardRole.h"

#include <QAction>
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

void ClipboardFixture::MakeTool()
{
    QGuiApplication::clipboard()->clear();
    m_pFixture = std::make_unique<ViewFixture>(40, 30);
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x)
            Document()->GetLayerImage(1)->SetColor(x, y, Begun(x, y));
    }
    m_pPanel = std::make_unique<LayersWidget>();
    m_pPanel->SetView(m_pFixture->View());
    m_pTool = std::make_unique<ClipboardTool>();
    m_pTool->SetDocumentView(&m_pFixture->ToolView());
}

void ClipboardFixture::DropTool()
{
    m_pTool.reset();
    m_pPanel.reset();
    m_pFixture.reset();
}

LXRGBA32i ClipboardFixture::Begun(int x, int y)
{
    return LXRGBA32i(qRgba(5 * x, 8 * y, 100, 255 - x));
}

void ClipboardFixture::Select(const QRect& rect, int coverage)
{
    LXImage32 mask(rect.width(), rect.height());
    mask.Fill(LXRGBA32i(quint32(coverage) << 24));
    Document()->SetSelectionMask(mask, rect.topLeft());
}

void ClipboardFixture::GiveMask(int value, bool reveals)
{
    Document()->AddMask(1, reveals);
    LXImage32 mask(40, 30);
    mask.Fill(LXRGBA32i(quint32(value) << 24));
    Document()->SetMaskImage(1, mask, {});
    Layers()->SetMaskSelected(0, true);
}

int ClipboardFixture::MaskValue(int x, int y) const
{
    return Document()->GetMaskImage(1)->GetColor(x, y).Alpha();
}

QAction* ClipboardFixture::Action(const QString& text) const
{
    const QList<QAction*> actions = m_pTool->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == text) return action;
    }
    qFatal("no action %s", qUtf8Printable(text));
}

QStringList ClipboardFixture::OpenActions() const
{
    QStringList texts;
    const QList<QAction*> actions = m_pTool->findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QAction* action : actions) {
        if (!action->isSeparator() && action->isEnabled()) texts.append(action->text());
    }
    return texts;
}

QStandardItemModel* ClipboardFixture::List() const
{
    return qobject_cast<QStandardItemModel*>(m_pPanel->GetClipboardModel());
}

int ClipboardFixture::CurrentRow() const
{
    return m_pPanel->GetClipboardSelection()->currentIndex().row();
}

QString ClipboardFixture::Cell(int row, int column) const
{
    return List()->item(row, column)->text();
}

LXImage32 ClipboardFixture::ItemImage(int row) const
{
    return List()->item(row)->data(ClipboardRole::Image).value<LXImage32>();
}

QStringList ClipboardFixture::HistoryTexts() const
{
    QStringList texts;
    for (int i = 0; i < m_pFixture->History().count(); ++i)
        texts.append(m_pFixture->History().text(i));
    return texts;
}

QStringList ClipboardFixture::BoxesDuring(const std::function<void()>& work)
{
    auto shown = std::make_shared<QStringList>();
    m_pFixture->Input().WhenModalShows<LXMessageBox>([shown](LXMessageBox* box) {
        shown->append(box->windowTitle() + ": " + box->GetText());
        box->close();
    });
    work();
    return *shown;
}

void ClipboardFixture::PutForeign(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    auto* content = new QMimeData; // the clipboard takes it
    content->setData(QStringLiteral("image/png"), bytes);
    QGuiApplication::clipboard()->setMimeData(content);
}

QImage ClipboardFixture::SystemImage()
{
    return QGuiApplication::clipboard()->image();
}
