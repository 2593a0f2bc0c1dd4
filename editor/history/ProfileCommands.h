#pragma once

class LayerColors;
class LexoCommand;
class LXDocumentInterface;
class ZKCMSProfile;

/// The undoable changes of a document's profile, with their texts, ready to push. Main thread.
namespace ProfileCommands {
/// Null when the document has the profile already; without a profile it counts as sRGB.
LexoCommand* Assign(LXDocumentInterface* document, const ZKCMSProfile& profile);
/// @param before  LayerColors::Of() the document as it is
/// @param after   these, converted
LexoCommand* Convert(LXDocumentInterface* document, const LayerColors& before, const LayerColors& after);
} // namespace ProfileCommands
