#pragma once

#include "history/CommandDataType.h"
#include "history/ValueCommand.h"
#include "image/ZKCMSProfile.h"

class LXDocumentInterface;

struct ProfileValues : PlainValues
{
    ZKCMSProfile before;
    ZKCMSProfile after;
};

/// Gives a document another profile; its pixels keep their numbers and so look different. Main thread.
class ProfileCommand : public ValueCommand<ProfileValues, CommandDataType::AssignProfile>
{
public:
    /// Takes the profile before from the document.
    ProfileCommand(LXDocumentInterface* document, const ZKCMSProfile& after);

protected:
    void Redo(ProfileValues& values) override;
    void Undo(ProfileValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
