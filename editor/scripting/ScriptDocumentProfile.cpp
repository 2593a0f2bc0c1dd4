// The color profile of a document, as a script has it.

#include "core/ZKCMSManager.h"
#include "gui/DocumentOf.h"
#include "gui/ZKDocumentView.h"
#include "history/LayerColors.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/ProfileCommands.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptDocument.h"

namespace {
ZKCMSProfile ToProfile(const QString& nameOrFile)
{
    ZKCMSManager* manager = ZKCMSManager::GetInstance();
    int index = manager->FindRGBProfile(nameOrFile);
    if (index < 0) {
        QString message = QStringLiteral("A profile needs a name or a file.");
        if (!nameOrFile.isEmpty()) index = manager->AddRGBProfile(nameOrFile, &message);
        if (index < 0) throw ScriptError(message);
    }
    return manager->GetRGBProfile(index);
}

ZKCMSRendering ToRendering(const QJSValue& options)
{
    constexpr const char* intentName = "intent";
    constexpr const char* blackPointName = "blackPoint";
    ScriptArguments::CheckOptions(options, {intentName, blackPointName});
    ZKCMSRendering rendering;
    const QJSValue intent = ScriptArguments::Option(options, intentName);
    if (intent.toString() == QLatin1String("perceptual")) {
        rendering.intent = ZKCMSRendering::Intent::Perceptual;
    } else if (!intent.isUndefined() && intent.toString() != QLatin1String("relative")) {
        throw ScriptError(QStringLiteral("An intent is \"relative\" or \"perceptual\", not \"%1\".")
                              .arg(intent.toString()));
    }
    const QJSValue blackPoint = ScriptArguments::Option(options, blackPointName);
    if (!blackPoint.isUndefined()) rendering.blackPoint = blackPoint.toBool();
    return rendering;
}
} // namespace

QString ScriptDocument::GetProfile() const
{
    return Call([this] {
        const ZKCMSProfile profile = Require()->GetICCProfile();
        const ZKCMSManager* manager = ZKCMSManager::GetInstance();
        for (int index = 0; index < manager->GetRGBProfileCount(); ++index) {
            if (manager->GetRGBProfile(index) == profile) return manager->GetRGBProfileName(index);
        }
        return profile.GetDescription();
    });
}

void ScriptDocument::assignProfile(const QString& nameOrFile)
{
    Call([&] {
        LXDocumentInterface* document = RequireFree();
        const ZKCMSProfile profile = nameOrFile.isEmpty() ? ZKCMSProfile() : ToProfile(nameOrFile);
        if (LexoCommand* command = ProfileCommands::Assign(document, profile)) {
            RequireHistory()->push(command);
        }
    });
}

void ScriptDocument::convertToProfile(const QString& nameOrFile, const QJSValue& options)
{
    Call([&] {
        LXDocumentInterface* document = RequireFree();
        const ZKCMSProfile profile = ToProfile(nameOrFile);
        const ZKCMSRendering rendering = ToRendering(options);
        if (!profile.IsTarget()) {
            throw ScriptError(QStringLiteral("No color can be brought into \"%1\".").arg(nameOrFile));
        }
        if (document->GetICCProfile() == profile) return;
        RequireHistory()->commit();
        const LayerColors before = LayerColors::Of(document);
        RequireHistory()->push(
            ProfileCommands::Convert(document, before, before.Converted(profile, rendering)));
    });
}
