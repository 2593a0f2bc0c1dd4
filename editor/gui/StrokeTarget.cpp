#include "gui/StrokeTarget.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/ZKDocumentView.h"

#include <QItemSelectionModel>

int StrokeTarget::RowOf(const ZKDocumentView* view)
{
    const QModelIndexList rows = view->GetLayerSelection()->selectedRows();
    return rows.size() == 1 ? rows.first().row() : -1;
}

StrokeTarget::Obstacle StrokeTarget::ObstacleOf(const ZKDocumentView* view)
{
    const int row = RowOf(view);
    if (row < 0) return Obstacle::NotOneLayer;
    const LXDocumentModel* model = view->GetModel();
    const bool isMask = model->GetMaskSelected(row);
    const unsigned int against = isMask ? LayerLocks::AgainstMaskPaint : LayerLocks::AgainstPaint;
    if ((model->GetLockFlags(row) & against) != 0) return Obstacle::Locked;
    if (isMask) return Obstacle::None;
    const unsigned int id = static_cast<unsigned int>(row) + 1;
    return model->GetDocument()->GetLayerKind(id) == LayerKind::Raster ? Obstacle::None : Obstacle::NoPixels;
}
