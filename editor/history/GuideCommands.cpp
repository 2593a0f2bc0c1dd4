#include "history/GuideCommands.h"

#include "document/LXDocumentInterface.h"
#include "history/GuidesCommand.h"

#include <QCoreApplication>

namespace {
LexoCommand* Named(LexoCommand* command, const char* text)
{
    command->setText(QCoreApplication::translate("GuideCommands", text));
    return command;
}
} // namespace

LexoCommand* GuideCommands::Add(LXDocumentInterface* document, const LXGuide& guide)
{
    LXGuides guides = document->GetGuides();
    guides.append(guide);
    return Named(new GuidesCommand(document, guides), QT_TRANSLATE_NOOP("GuideCommands", "Add guide"));
}

LexoCommand* GuideCommands::Move(LXDocumentInterface* document, int index, double position)
{
    LXGuides guides = document->GetGuides();
    if (index < 0 || index >= guides.size()) return nullptr;
    guides[index].position = position;
    return Named(new GuidesCommand(document, guides), QT_TRANSLATE_NOOP("GuideCommands", "Move guide"));
}

LexoCommand* GuideCommands::Clear(LXDocumentInterface* document)
{
    if (document->GetGuides().isEmpty()) return nullptr;
    return Named(new GuidesCommand(document, {}), QT_TRANSLATE_NOOP("GuideCommands", "Clear guides"));
}
