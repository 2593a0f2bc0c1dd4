#include "history/ProfileCommands.h"

#include "document/LXDocumentInterface.h"
#include "history/ColorsCommand.h"
#include "history/ProfileCommand.h"

#include <QCoreApplication>

namespace {
LexoCommand* Named(LexoCommand* command, const char* text)
{
    command->setText(QCoreApplication::translate("ProfileCommands", text));
    return command;
}
} // namespace

LexoCommand* ProfileCommands::Assign(LXDocumentInterface* document, const ZKCMSProfile& profile)
{
    if (document->GetICCProfile() == profile) return nullptr;
    return Named(new ProfileCommand(document, profile),
                 QT_TRANSLATE_NOOP("ProfileCommands", "Assign profile"));
}

LexoCommand* ProfileCommands::Convert(LXDocumentInterface* document, const LayerColors& before,
                                      const LayerColors& after)
{
    return Named(new ColorsCommand(document, before, after),
                 QT_TRANSLATE_NOOP("ProfileCommands", "Convert to profile"));
}
