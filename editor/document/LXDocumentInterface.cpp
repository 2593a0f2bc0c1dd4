#include "document/LXDocumentInterface.h"

#include "document/LXColorSampleModel_p.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentModel_p.h"
#include "document/LXPathsListModel_p.h"
#include "document/SelectionChannels.h"
#include "utils/FaultSeams.h"

const int LXDocumentInterface::MAX_DOC_DIMENSION = 300000;

LXDocumentInterface::LXDocumentInterface() : m_pPrivate(std::make_unique<LXDocumentInterfacePrivate>(this))
{
    m_pPrivate->model = LXDocumentModelPrivate::Create(this);
    m_pPrivate->paths = LXPathsListModelPrivate::Create(this);
    m_pPrivate->samples = LXColorSampleModelPrivate::Create(this);
    m_pPrivate->channels = new SelectionChannels(this);
    connect(m_pPrivate->model, &LXDocumentModel::LocksChanged, this, &LXDocumentInterface::LocksChanged);
    connect(m_pPrivate->model, &LXDocumentModel::LayerDataChanged, this,
            &LXDocumentInterface::LayerDataChanged);
    connect(m_pPrivate->model, &LXDocumentModel::LayerFontChanged, this,
            &LXDocumentInterface::LayerFontChanged);
    connect(m_pPrivate->model, &LXDocumentModel::LayerBrushChanged, this,
            &LXDocumentInterface::LayerBrushChanged);
    connect(m_pPrivate->model, &LXDocumentModel::LayerTextDeformationChanged, this,
            &LXDocumentInterface::LayerTextDeformationChanged);
}

LXDocumentInterface::~LXDocumentInterface()
{
    m_pPrivate->locks->WaitForOthers();
    // The models look into the document's insides until they are gone.
    delete m_pPrivate->samples;
    delete m_pPrivate->paths;
    delete m_pPrivate->model;
}

LXDocumentModel* LXDocumentInterface::GetModel() const
{
    return m_pPrivate->model;
}

LXPathsListModel* LXDocumentInterface::GetPathListModel() const
{
    return m_pPrivate->paths;
}

LXColorSampleModel* LXDocumentInterface::GetColorSamples() const
{
    return m_pPrivate->samples;
}

bool LXDocumentInterface::GetLockState() const
{
    return m_pPrivate->isLocked;
}

bool LXDocumentInterface::Lock()
{
    if (m_pPrivate->isLocked || FaultSeams::Pass(FaultSeams::Seam::DocumentLock)) return false;
    m_pPrivate->isLocked = true;
    emit Locked();
    return true;
}

bool LXDocumentInterface::Unlock()
{
    if (!m_pPrivate->isLocked || FaultSeams::Pass(FaultSeams::Seam::DocumentUnlock)) return false;
    m_pPrivate->isLocked = false;
    emit Unlocked();
    return true;
}

int LXDocumentInterface::GetDocumentState() const
{
    return m_pPrivate->state;
}

void LXDocumentInterface::SetDocumentState(int state)
{
    if (m_pPrivate->state == state) return;
    m_pPrivate->state = state;
    emit DocumentStateChanged(state);
}

void LXDocumentInterface::UpdateDocumentRect(const QRect& rect)
{
    m_pPrivate->Invalidate(rect.isEmpty() ? m_pPrivate->Canvas() : rect);
}

void LXDocumentInterface::StopComposition()
{
    m_pPrivate->StopComposition();
}

void LXDocumentInterface::ResumeComposition()
{
    m_pPrivate->ResumeComposition();
}

bool LXDocumentInterface::IsCompositionStopped() const
{
    return m_pPrivate->compositionStops > 0;
}

QSize LXDocumentInterface::GetDocumentSize() const
{
    return m_pPrivate->merged.Size();
}

void LXDocumentInterface::SetDocumentSize(const QSize& size)
{
    const bool isAllowed =
        !size.isEmpty() && size.width() <= MAX_DOC_DIMENSION && size.height() <= MAX_DOC_DIMENSION;
    if (!isAllowed || size == GetDocumentSize()) return;
    m_pPrivate->merged.Resize(size);
    emit DocumentSizeChanged(size);
    m_pPrivate->Invalidate(m_pPrivate->Canvas());
}
