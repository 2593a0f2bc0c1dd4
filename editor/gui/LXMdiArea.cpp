#include "gui/LXMdiArea.h"

#include "document/LXDocumentInterface.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/SingleWidget.h"

#include <QMainWindow>

LXMdiArea::LXMdiArea(QWidget* parent) : QMdiArea(parent), m_pPrivate(std::make_unique<LXMdiAreaPrivate>(this))
{
    SingleWidget<LXMdiArea>::Register(this);
    setViewMode(QMdiArea::TabbedView);
    setDocumentMode(true);
    setTabsClosable(true);
    setTabsMovable(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Documents"));
}

LXMdiArea::~LXMdiArea()
{
    // The windows die with the base, which would still report activations.
    disconnect(this, &QMdiArea::subWindowActivated, m_pPrivate.get(), nullptr);
}

QMainWindow* LXMdiArea::MainWindow()
{
    return qobject_cast<QMainWindow*>(LXDocumentManager::GetDocumentArea()->window());
}

QString LXMdiArea::MakeDefaultCopyName(LXDocumentInterface* document)
{
    if (!document) return {};

    const QList<LXDocumentInterface*> open = LXDocumentManager::Instance()->GetDocuments();
    const auto isTaken = [&](const QString& name) {
        return std::any_of(open.begin(), open.end(), [&](const LXDocumentInterface* other) {
            return other->GetDocumentName() == name;
        });
    };
    const QString base = tr("%1 copy").arg(document->GetDocumentName());
    QString name = base;
    for (int number = 2; isTaken(name); ++number)
        name = tr("%1 %2").arg(base, QString::number(number));
    return name;
}

LXMdiSubWindow* LXMdiArea::GetActiveWindow() const
{
    return m_pPrivate->GetTold();
}

QList<LXMdiSubWindow*> LXMdiArea::GetWindows() const
{
    QList<LXMdiSubWindow*> windows;
    for (QMdiSubWindow* const window : subWindowList(QMdiArea::CreationOrder)) {
        if (auto* ours = qobject_cast<LXMdiSubWindow*>(window)) windows.append(ours);
    }
    return windows;
}

void LXMdiArea::resizeEvent(QResizeEvent* event)
{
    QMdiArea::resizeEvent(event);
    m_pPrivate->PlaceEmptyPage();
}
