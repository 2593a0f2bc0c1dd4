#include "app/ColorPreferences.h"

#include "app/ScreenProfile.h"
#include "core/ZKApplication.h"
#include "core/ZKCMSManager.h"

#include <QCoreApplication>
#include <QStringList>
#include <QUrl>

namespace {
const QLatin1String WorkingKey("Color/WorkingProfile");
const QLatin1String ScreenKey("Color/ScreenProfile");
const QLatin1String ScreensKey("Color/ScreenProfiles/"); // and which one
const QLatin1String IntentKey("Color/Rendering");
const QLatin1String BlackPointKey("Color/BlackPoint");
const QLatin1String Perceptual("perceptual");
const QLatin1String Relative("relative");

/// Of one screen, or of all.
QString KeyOfScreen(const QString& screen)
{
    if (screen.isEmpty()) return ScreenKey;
    return ScreensKey + QString::fromLatin1(QUrl::toPercentEncoding(screen));
}

QString Tr(const char* text)
{
    return QCoreApplication::translate("ColorPreferences", text);
}

/// The index of the file's profile; 0, which is sRGB, for none and for one that can't be used, which is told.
int IndexOf(const QString& file, QStringList* messages)
{
    if (file.isEmpty() || file == QLatin1String(ColorPreferences::PlainScreen)) return 0;
    ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QString message;
    const int index = manager->AddRGBProfile(file, &message);
    if (index >= 0 && manager->IsRGBTarget(index)) return index;
    if (index >= 0) {
        message = Tr("The color profile “%1” only tells what the colors of a camera or a scanner are.")
                      .arg(manager->GetRGBProfileName(index));
    }
    *messages << message;
    return 0;
}
} // namespace

ColorPreferences ColorPreferences::Read(const QString& screen)
{
    ColorPreferences values;
    values.screen = screen;
    values.workingProfile = ZKApplication::GetUserValue(WorkingKey, QString()).toString();
    const QVariant ofAll = ZKApplication::GetUserValue(ScreenKey, QString());
    values.screenProfile = ZKApplication::GetUserValue(KeyOfScreen(screen), ofAll).toString();
    const QString intent = ZKApplication::GetUserValue(IntentKey, QString(Relative)).toString();
    if (intent == Perceptual) values.rendering.intent = ZKCMSRendering::Intent::Perceptual;
    values.rendering.blackPoint = ZKApplication::GetUserValue(BlackPointKey, true).toBool();
    return values;
}

void ColorPreferences::Write() const
{
    const bool isPerceptual = rendering.intent == ZKCMSRendering::Intent::Perceptual;
    ZKApplication::SetUserValue(WorkingKey, workingProfile);
    ZKApplication::SetUserValue(KeyOfScreen(screen), screenProfile);
    ZKApplication::SetUserValue(IntentKey, QString(isPerceptual ? Perceptual : Relative));
    ZKApplication::SetUserValue(BlackPointKey, rendering.blackPoint);
}

QString ColorPreferences::Use() const
{
    ZKCMSManager* manager = ZKCMSManager::GetInstance();
    QStringList messages;
    manager->SetWorkingRGBIndex(IndexOf(workingProfile, &messages));
    const ZKCMSProfile display = screenProfile.isEmpty()
                                     ? ScreenProfile::Read(screen)
                                     : manager->GetRGBProfile(IndexOf(screenProfile, &messages));
    manager->SetDisplay(display, rendering);
    if (messages.isEmpty()) return QString();
    messages.removeDuplicates();
    messages << Tr("sRGB is used in its place. Another profile can be chosen in the preferences.");
    return messages.join('\n');
}
