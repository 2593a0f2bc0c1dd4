#pragma once

#include <QJSValue>
#include <QList>

class ControlNode;
class QJSEngine;
class ZKDocumentView;

/// The handles that tools have put over a document, for scripts. Main thread only.
namespace SceneHandles {
/// Those that are shown, the lowest first; hidden ones don't count.
QList<ControlNode*> Of(const ZKDocumentView& view);

/// `{x, y, label, movable, selected, sunken, inView}`; x and y are document pixels, `inView` is `{x, y}` in
/// pixels of the view.
QJSValue ToValue(QJSEngine& engine, const ZKDocumentView& view, const ControlNode& handle);
} // namespace SceneHandles
