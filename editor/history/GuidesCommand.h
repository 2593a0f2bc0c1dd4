#pragma once

#include "document/LXGuide.h"
#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

struct GuidesValues : PlainValues
{
    LXGuides before;
    LXGuides after;
};

/// Puts other guides in the place of those that are there. Main thread.
class GuidesCommand : public ValueCommand<GuidesValues, CommandDataType::Guides>
{
public:
    /// Takes the guides before from the document.
    GuidesCommand(LXDocumentInterface* document, const LXGuides& after);

protected:
    void Redo(GuidesValues& values) override;
    void Undo(GuidesValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
