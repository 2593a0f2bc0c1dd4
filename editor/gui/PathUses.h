#pragma once

class QString;
class ZKDocumentView;

/// What the current path of a view is good for beside being looked at: strokes and selections. Main thread
/// only.
namespace PathUses {
/// Why the current path can't be stroked now, in words for the person; empty when it can. A null view is one
/// of the reasons.
QString WhyNotStroke(const ZKDocumentView* view);
/// Why no selection can be made of it; likewise.
QString WhyNotSelect(const ZKDocumentView* view);

/// Asks for the brush and strokes the current sub path with it, or without one all of them. The view may be
/// gone afterwards: its document can be closed while the dialog is up. Nothing happens while there is a
/// reason why not.
void Stroke(ZKDocumentView* view);

/// Asks how, and selects the area of the current path, as one step; the same holds.
void MakeSelection(ZKDocumentView* view);
} // namespace PathUses
