#include "app/LayerPictures.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LayerCommands.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PushOrRun.h"
#include "image/ZKCMSTransform.h"

#include <QItemSelectionModel>

#include <algorithm>
#include <memory>

namespace {
/// That of the topmost selected layer; 1 without one.
unsigned int IdOfSelected(const ZKDocumentView* view)
{
    int top = view->GetModel()->rowCount();
    const QModelIndexList rows = view->GetLayerSelection()->selectedIndexes();
    for (const QModelIndex& index : rows)
        top = std::min(top, index.row());
    return rows.isEmpty() ? 1 : static_cast<unsigned int>(top) + 1;
}

/// It looks the same there. As it is when one of the two has no profile, or both mean the same.
LXImage32 InColorsOf(const LXImage32& image, const ZKCMSProfile& profile)
{
    LXImage32 converted = image;
    if (image.m_Profile.IsNull() || profile.IsNull()) return converted;
    ZKCMSTransform(image.m_Profile, profile)(converted);
    converted.m_Profile = profile;
    return converted;
}

/// One step of the history, which also ends when something inside fails.
class StepGroup
{
public:
    StepGroup(LexoUndoStack* history, const QString& text) : m_pHistory(history)
    {
        if (m_pHistory) m_pHistory->beginMacro(text);
    }

    ~StepGroup()
    {
        if (m_pHistory) m_pHistory->endMacro();
    }

    Q_DISABLE_COPY(StepGroup)

private:
    LexoUndoStack* m_pHistory;
};
} // namespace

bool LayerPictures::MayAdd(const ZKDocumentView* view)
{
    return view && !view->GetModel()->GetDocument()->GetLockState() && !view->IsLayerOrderBlocked();
}

void LayerPictures::Add(ZKDocumentView* view, const QList<Place>& places, const QString& text)
{
    LexoUndoStack* history = view->GetHistory();
    const StepGroup group(places.size() > 1 ? history : nullptr, text);
    for (const Place& place : places) {
        LXDocumentInterface* document = view->GetModel()->GetDocument();
        std::unique_ptr<LexoCommand> command(
            LayerCommands::AddPicture(document, view->GetLayerSelection(), IdOfSelected(view),
                                      InColorsOf(place.image, document->GetICCProfile()), place.topLeft));
        command->setText(text);
        PushOrRun(history, std::move(command));
    }
}

QPoint LayerPictures::Centered(const LXImage32& image, const QPointF& middle)
{
    return QPointF(middle.x() - image.Width() / 2.0, middle.y() - image.Height() / 2.0).toPoint();
}
