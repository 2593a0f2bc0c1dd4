#include "scripting/ScriptFaults.h"

#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentView_p.h"
#include "history/LexoUndoStack.h"
#include "scripting/ScriptContext.h"
#include "scripting/ScriptHost.h"
#include "utils/FaultSeams.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMap>
#include <QMimeData>

using FaultSeams::Seam;

namespace {
const QMap<QString, Seam>& Places()
{
    static const QMap<QString, Seam> places{{QStringLiteral("lock"), Seam::DocumentLock},
                                            {QStringLiteral("unlock"), Seam::DocumentUnlock},
                                            {QStringLiteral("tile"), Seam::TileAllocation},
                                            {QStringLiteral("write"), Seam::FileWrite},
                                            {QStringLiteral("fill"), Seam::FloodFill}};
    return places;
}
} // namespace

ScriptFaults::ScriptFaults(ScriptContext& context, QObject* parent) : QObject(parent), m_Context(context) {}

ScriptFaults::~ScriptFaults()
{
    reset();
    giveHistory();
}

void ScriptFaults::refuseLock(int n)
{
    FaultSeams::FailNth(Seam::DocumentLock, n);
}

void ScriptFaults::refuseUnlock(int n)
{
    FaultSeams::FailNth(Seam::DocumentUnlock, n);
}

void ScriptFaults::failTile(int n)
{
    FaultSeams::FailNth(Seam::TileAllocation, n);
}

void ScriptFaults::failWrite(int n)
{
    FaultSeams::FailNth(Seam::FileWrite, n);
}

void ScriptFaults::failFill(int n)
{
    FaultSeams::FailNth(Seam::FloodFill, n);
}

void ScriptFaults::slowDown(const QString& place, int milliseconds)
{
    if (!Places().contains(place)) {
        const QString known = QStringList(Places().keys()).join(QStringLiteral(", "));
        m_Context.ThrowError(tr("\"%1\" is none of %2").arg(place, known));
        return;
    }
    FaultSeams::SlowDown(Places().value(place), milliseconds);
}

void ScriptFaults::takeHistory()
{
    ZKDocumentView* view = m_Context.GetHost().GetActiveView();
    if (!view || !view->GetHistory()) {
        m_Context.ThrowError(tr("there is no view with a history"));
        return;
    }
    giveHistory();
    m_pViewWithout = view;
    m_pTaken = view->GetHistory();
    ZKDocumentViewPrivate::Get(view)->SetHistory(nullptr);
}

void ScriptFaults::giveHistory()
{
    if (m_pViewWithout && m_pTaken) ZKDocumentViewPrivate::Get(m_pViewWithout)->SetHistory(m_pTaken);
    m_pViewWithout = nullptr;
    m_pTaken = nullptr;
}

void ScriptFaults::closeDocument()
{
    LXDocumentInterface* document = m_Context.GetHost().GetActiveDocument();
    if (!document) {
        m_Context.ThrowError(tr("there is no document"));
        return;
    }
    m_Context.GetHost().CloseUnasked(document);
}

void ScriptFaults::putForeignImage(int width, int height, const QString& color)
{
    QImage image(width, height, QImage::Format_ARGB32);
    if (image.isNull() || !QColor(color).isValid()) {
        m_Context.ThrowError(tr("no picture of %1 x %2 pixels in \"%3\"").arg(width).arg(height).arg(color));
        return;
    }
    image.fill(QColor(color));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");

    auto* content = new QMimeData; // the clipboard takes it
    content->setData(QStringLiteral("image/png"), bytes);
    // What the platform makes of it, where there is one.
    content->setImageData(QImage::fromData(bytes));
    QGuiApplication::clipboard()->setMimeData(content);
}

void ScriptFaults::reset()
{
    FaultSeams::Reset();
}
