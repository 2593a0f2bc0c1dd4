#include "document/LXDocumentFactory.h"

#include "document/LXColorSampleModel_p.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXPathsListModel_p.h"
#include "document/SelectionChannels.h"

#include <QCoreApplication>
#include <QThread>

LXDocumentFactory* LXDocumentFactory::Instance()
{
    static LXDocumentFactory factory;
    return &factory;
}

LXDocumentInterface* LXDocumentFactory::Create(LXDocumentInterface::NativeFormat)
{
    auto* document = new LXDocumentInterface;
    // A worker's document is shown and released by the main thread.
    document->moveToThread(QCoreApplication::instance()->thread());
    return document;
}

LXDocumentInterface* LXDocumentFactory::Copy(const LXDocumentInterface* document)
{
    if (!document) return nullptr;
    const LXDocumentInterfacePrivate* from = LXDocumentInterfacePrivate::Get(document);
    std::unique_ptr<LXDocumentInterface> copy(new LXDocumentInterface);
    LXDocumentInterfacePrivate* to = LXDocumentInterfacePrivate::Get(copy.get());

    to->ChangeProperties([from](DocumentProperties& properties) { properties = from->Properties(); });
    copy->SetDocumentSize(document->GetDocumentSize());
    // The list of one moment: the main thread may add and remove layers while a worker copies.
    int row = 0;
    for (const std::shared_ptr<Layer>& layer : from->layers.All()) {
        to->InsertLayer(row++, from->LandedState(*layer));
    }
    QPoint offset;
    const LXImage32 mask = from->selection.Snapshot(&offset);
    copy->SetSelectionMask(mask, offset);
    LXPathsListModelPrivate::Get(to->paths)->Fill(LXPathsListModelPrivate::Get(from->paths)->Snapshot());
    LXColorSampleModelPrivate::Get(to->samples)
        ->Fill(LXColorSampleModelPrivate::Get(from->samples)->Snapshot());
    to->channels->Set(from->channels->All());

    copy->moveToThread(QCoreApplication::instance()->thread());
    return copy.release();
}

void LXDocumentFactory::Release(LXDocumentInterface* document)
{
    if (!document) return;
    if (document->thread() == QThread::currentThread()) {
        delete document;
    } else {
        document->deleteLater();
    }
}
