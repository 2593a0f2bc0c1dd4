#include "scripting/ScriptApplication.h"

#include "core/ZKApplication.h"
#include "core/ZKCMSManager.h"
#include "gui/LexoAppKeyHook.h"
#include "resource/LXResource.h"
#include "scripting/CursorWords.h"
#include "scripting/ScriptArguments.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace {
/// Other programs offer the bytes of a file, ours an image.
QImage ClipboardPicture()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) return {};
    auto picture = qvariant_cast<QImage>(data->imageData());
    for (const QString& format : data->formats()) {
        if (picture.isNull() && format.startsWith(QLatin1String("image/"))) {
            picture = QImage::fromData(data->data(format));
        }
    }
    return picture;
}
} // namespace

ScriptApplication::ScriptApplication(ScriptContext& context, QObject* parent) : ScriptObject(context, parent)
{}

QString ScriptApplication::GetForeground() const
{
    return ScriptArguments::OfColor(ZKApplication::GetForeground());
}

void ScriptApplication::SetForeground(const QString& color)
{
    Call([&] { ZKApplication::SetForeground(ScriptArguments::ToColor(color)); });
}

QString ScriptApplication::GetBackground() const
{
    return ScriptArguments::OfColor(ZKApplication::GetBackground());
}

void ScriptApplication::SetBackground(const QString& color)
{
    Call([&] { ZKApplication::SetBackground(ScriptArguments::ToColor(color)); });
}

QString ScriptApplication::GetMaskForeground() const
{
    return ScriptArguments::OfColor(ZKApplication::GetMaskForeground());
}

QString ScriptApplication::GetMaskBackground() const
{
    return ScriptArguments::OfColor(ZKApplication::GetMaskBackground());
}

int ScriptApplication::GetPatternCount() const
{
    return ZKApplication::GetPatternCount();
}

int ScriptApplication::GetPattern() const
{
    return ZKApplication::GetTexturePatternIndex();
}

void ScriptApplication::SetPattern(int index)
{
    Call([&] {
        ZKApplication::SetTexturePatternIndex(
            ScriptArguments::ToInteger(index, "pattern", 0, ZKApplication::GetPatternCount() - 1));
    });
}

QStringList ScriptApplication::GetProfiles() const
{
    QStringList names;
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    for (int index = 0; index < manager->GetRGBProfileCount(); ++index) {
        names << manager->GetRGBProfileName(index);
    }
    return names;
}

QString ScriptApplication::GetWorkingProfile() const
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    return manager->GetRGBProfileName(manager->GetWorkingRGBIndex());
}

void ScriptApplication::SetWorkingProfile(const QString& name)
{
    Call([&] {
        ZKCMSManager* manager = ZKCMSManager::GetInstance();
        const int index = manager->FindRGBProfile(name);
        if (index < 0) throw ScriptError(QStringLiteral("There is no color profile \"%1\".").arg(name));
        manager->SetWorkingRGBIndex(index);
        if (manager->GetWorkingRGBIndex() != index) {
            throw ScriptError(QStringLiteral("No color can be brought into \"%1\".").arg(name));
        }
    });
}

QString ScriptApplication::GetName() const
{
    return LXResource::GetData(LXResource::ProductName).toString();
}

QString ScriptApplication::GetVersion() const
{
    return LXResource::GetData(LXResource::ProductVersion).toString();
}

QString ScriptApplication::GetDataFolder() const
{
    return ZKApplication::GetUserDataFolder();
}

QString ScriptApplication::GetResourceFolder() const
{
    return ZKApplication::GetResourcePath();
}

bool ScriptApplication::AreShortcutsEnabled() const
{
    return LexoAppKeyHook::instance()->AreShortcutsEnabled();
}

QJSValue ScriptApplication::GetOverrideCursor() const
{
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor ? CursorWords::ToValue(Context().GetEngine(), *cursor) : QJSValue(QJSValue::NullValue);
}

QString ScriptApplication::GetClipboardText() const
{
    return QGuiApplication::clipboard()->text();
}

void ScriptApplication::SetClipboardText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

QJSValue ScriptApplication::GetClipboardImage() const
{
    const QImage image = ClipboardPicture();
    if (image.isNull()) return QJSValue(QJSValue::NullValue);
    QJSValue size = Context().GetEngine().newObject();
    size.setProperty(QStringLiteral("width"), image.width());
    size.setProperty(QStringLiteral("height"), image.height());
    return size;
}

QString ScriptApplication::patternFile(const QJSValue& index) const
{
    return Call([&] {
        return ZKApplication::GetPatternFile(
            ScriptArguments::ToInteger(index, "index", 0, ZKApplication::GetPatternCount() - 1));
    });
}

QJSValue ScriptApplication::userValue(const QString& key, const QJSValue& whenMissing) const
{
    return Call([&] {
        const QVariant value = ZKApplication::GetUserValue(key, whenMissing.toVariant());
        return value.isValid() ? Context().GetEngine().toScriptValue(value) : whenMissing;
    });
}

void ScriptApplication::setUserValue(const QString& key, const QJSValue& value)
{
    Call([&] {
        if (key.isEmpty()) throw ScriptError(QStringLiteral("A value needs a key."));
        ZKApplication::SetUserValue(key, value.toVariant());
    });
}

void ScriptApplication::copyImage(const QString& path)
{
    Call([&] {
        const QImage image(path);
        if (image.isNull()) {
            throw ScriptError(QStringLiteral("\"%1\" is no picture that can be read.").arg(path));
        }
        QGuiApplication::clipboard()->setImage(image);
    });
}

void ScriptApplication::saveClipboardImage(const QString& path) const
{
    Call([&] {
        const QImage image = ClipboardPicture();
        if (image.isNull()) throw ScriptError(QStringLiteral("There is no image on the clipboard."));
        if (!image.save(path)) throw ScriptError(QStringLiteral("\"%1\" can't be written.").arg(path));
    });
}

void ScriptApplication::clearClipboard()
{
    QGuiApplication::clipboard()->clear();
}
