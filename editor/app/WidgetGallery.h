#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QVector>

#include <memory>

class LXDocumentInterface;
class QGraphicsScene;
class QWidget;

/// What tools are offered to build with: the widgets, dialogs and scene items of the contract, each in a
/// state that shows what it can. Screenshots takes all of them; a new one gets its function and its line in
/// the table. Main thread only.
class ZK_EDITOR_EXPORT WidgetGallery
{
    Q_DECLARE_TR_FUNCTIONS(WidgetGallery)

public:
    /// What the samples may show.
    struct Ground
    {
        QWidget* window;               ///< the parent of dialogs
        LXDocumentInterface* document; ///< an opened photo
    };

    struct Sample
    {
        const char* name; ///< of the file: "widget-NAME.png"
        /// Made in the look of the moment, not yet shown. Work on the global pool may be under way: it is
        /// waited for before the picture is taken.
        std::unique_ptr<QWidget> (*make)(const Ground& ground);
    };

    WidgetGallery() = delete;

    static const QVector<Sample>& Samples();

    /// A view of a scene of four squares side by side, white, black, mid gray and a photo, each GroundSize
    /// wide and high from (0, 0) on, for items that must be seen on everything.
    /// @param add  puts the items into the scene, which owns them
    static std::unique_ptr<QWidget> OnGrounds(void (*add)(QGraphicsScene& scene));
    static constexpr int GroundCount = 4;
    static constexpr int GroundSize = 120;
};
