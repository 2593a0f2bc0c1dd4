#pragma once

class QCursor;
class ZKDocumentView;

/// Gives a view that is being panned this cursor when panning ends, in place of the one from before, which is
/// that of a tool that has left the view. Until then the hand stays. A tool that takes the view in the
/// meantime sets its own cursor after this one. Main thread only.
void SetCursorAfterPanning(ZKDocumentView* view, const QCursor& cursor);
