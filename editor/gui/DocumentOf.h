#pragma once

class LXDocumentInterface;
class LXMdiSubWindow;
class ZKDocumentView;

/// The view in the window; null when it holds something else, or no window.
ZKDocumentView* ViewOf(const LXMdiSubWindow* window);

/// The document shown in the window; null likewise.
LXDocumentInterface* DocumentOf(const LXMdiSubWindow* window);

/// Whether closing the window would lose something: a reason to keep the document, or a history that isn't
/// at the saved state.
bool IsModified(const LXMdiSubWindow* window);
