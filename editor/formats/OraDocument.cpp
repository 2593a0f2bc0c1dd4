// From the value that a file holds to a document, and back.

#include "document/LXColorSampleModel_p.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXPathsListModel_p.h"
#include "document/SelectionChannels.h"
#include "formats/OraFile.h"

#include <exception>

namespace {
void Fill(LXDocumentInterface* document, const OraContent& content)
{
    LXDocumentInterfacePrivate* d = LXDocumentInterfacePrivate::Get(document);
    document->SetDocumentSize(content.size);
    document->SetICCProfile(ZKCMSProfile(content.iccProfile));
    document->SetDPI(content.dpi);
    document->SetUnit(content.unit);
    document->SetGuides(content.guides);
    LXPathsListModelPrivate::Get(d->paths)->Fill(content.paths);
    LXColorSampleModelPrivate::Get(d->samples)->Fill(content.samples);
    int row = 0;
    for (LayerState layer : content.layers) {
        layer.image.m_Profile = document->GetICCProfile();
        layer.image.m_DpiX = layer.image.m_DpiY = qRound(document->GetDPI());
        d->InsertLayer(row++, layer);
    }
    document->SetSelectionMask(content.selection, content.selectionOffset);
    d->channels->Set(content.channels);
    d->ChangeProperties([&content](DocumentProperties& properties) { properties.foreign = content.foreign; });
}

OraContent Take(const LXDocumentInterface* document)
{
    const LXDocumentInterfacePrivate* d = LXDocumentInterfacePrivate::Get(document);
    OraContent content;
    content.size = document->GetDocumentSize();
    content.dpi = document->GetDPI();
    content.iccProfile = document->GetICCProfile().GetData();
    content.unit = document->GetUnit();
    content.guides = document->GetGuides();
    content.paths = LXPathsListModelPrivate::Get(d->paths)->Snapshot();
    content.samples = LXColorSampleModelPrivate::Get(d->samples)->Snapshot();
    for (const std::shared_ptr<Layer>& layer : d->layers.All()) {
        content.layers.push_back(d->LandedState(*layer));
    }
    content.selection = d->selection.Snapshot(&content.selectionOffset);
    content.channels = d->channels->All();
    content.foreign = d->Properties().foreign;
    const LXDocumentLayerLockerForRead locker(document, 0);
    content.merged = *document->GetLayerImage(0);
    return content;
}
} // namespace

LXDocumentInterface* OraFile::MakeDocument(const OraContent& content, const QString& name)
{
    LXDocumentInterface* document = LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32);
    try {
        document->SetDocumentName(name);
        Fill(document, content);
        return document;
    } catch (const std::exception&) {
        LXDocumentFactory::Instance()->Release(document);
        return nullptr;
    }
}

OraContent OraFile::TakeContent(const LXDocumentInterface* document, const QSet<int>& selectedRows)
{
    try {
        OraContent content = Take(document);
        content.selectedRows = selectedRows;
        return content;
    } catch (const std::exception&) {
        return {};
    }
}
