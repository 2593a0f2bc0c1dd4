#pragma once

class LXDocumentInterface;

/// Runs the event loop until no tool holds the document. False when that takes longer than a minute, and when
/// the document goes meanwhile. Main thread only.
bool WaitUntilUnlocked(LXDocumentInterface* document);
