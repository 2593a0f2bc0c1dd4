#include "core/ZKApplication.h"

#include "core/ZKApplication_p.h"
#include "resource/LXResource.h"

#include <QDir>

#include <algorithm>

namespace {
QStringList FindPatterns(const QString& folder)
{
    QStringList files;
    const QFileInfoList found = QDir(folder).entryInfoList({"*.png"}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : found) {
        files.append(QDir::toNativeSeparators(file.absoluteFilePath()));
    }
    return files;
}

/// The gray that paints a mask as this color would: blending into masks takes the same lightness.
QColor LightnessOf(const QColor& color)
{
    const auto [low, high] = std::minmax({color.red(), color.green(), color.blue()});
    const int lightness = (low + high) / 2;
    return QColor(lightness, lightness, lightness);
}
} // namespace

ZKApplicationPrivate& ZKApplicationPrivate::Get()
{
    return *ZKApplication::GetInstance()->m_pPrivate;
}

void ZKApplicationPrivate::SetFolders(const ApplicationFolders& folders)
{
    m_Folders = folders;
    QDir().mkpath(folders.config);
    QDir().mkpath(folders.data);
    const QString name = LXResource::GetData(LXResource::ApplicationName).toString();
    m_pSettings = std::make_unique<QSettings>(folders.config + '/' + name + ".ini", QSettings::IniFormat);
    m_pSettings->setIniCodec("UTF-8");
    m_Patterns = FindPatterns(folders.resources + "/patterns");
}

void ZKApplicationPrivate::UseDefaultFolders()
{
    if (m_pSettings == nullptr) SetFolders(ApplicationFolders::Default());
}

const ApplicationFolders& ZKApplicationPrivate::Folders()
{
    UseDefaultFolders();
    return m_Folders;
}

QSettings& ZKApplicationPrivate::Settings()
{
    UseDefaultFolders();
    return *m_pSettings;
}

const QStringList& ZKApplicationPrivate::Patterns()
{
    UseDefaultFolders();
    return m_Patterns;
}

ZKApplication::ZKApplication() : m_pPrivate(std::make_unique<ZKApplicationPrivate>()) {}

ZKApplication::~ZKApplication() = default;

ZKApplication* ZKApplication::GetInstance()
{
    static ZKApplication instance;
    return &instance;
}

QVariant ZKApplication::GetUserValue(const QString& key, const QVariant& def)
{
    QVariant value = ZKApplicationPrivate::Get().Settings().value(key, def);
    // The file holds text; callers get what they wrote.
    if (def.isValid() && !value.convert(def.userType())) return def;
    return value;
}

void ZKApplication::SetUserValue(const QString& key, const QVariant& value)
{
    ZKApplicationPrivate::Get().Settings().setValue(key, value);
}

QColor ZKApplication::GetForeground()
{
    return ZKApplicationPrivate::Get().m_Foreground;
}

void ZKApplication::SetForeground(const QColor& color)
{
    QColor& present = ZKApplicationPrivate::Get().m_Foreground;
    if (!color.isValid() || color == present) return;
    present = color;
    emit GetInstance()->ForegroundChanged(color);
}

QColor ZKApplication::GetBackground()
{
    return ZKApplicationPrivate::Get().m_Background;
}

void ZKApplication::SetBackground(const QColor& color)
{
    QColor& present = ZKApplicationPrivate::Get().m_Background;
    if (!color.isValid() || color == present) return;
    present = color;
    emit GetInstance()->BackgroundChanged(color);
}

QColor ZKApplication::GetMaskForeground()
{
    return LightnessOf(GetForeground());
}

QColor ZKApplication::GetMaskBackground()
{
    return LightnessOf(GetBackground());
}

QBrush ZKApplication::GetGradient()
{
    return ZKApplicationPrivate::Get().m_Gradient;
}

void ZKApplication::SetGradient(const QBrush& gradient)
{
    QBrush& present = ZKApplicationPrivate::Get().m_Gradient;
    if (gradient == present) return;
    present = gradient;
    emit GetInstance()->GradientChanged(gradient);
}

int ZKApplication::GetPatternCount()
{
    return ZKApplicationPrivate::Get().Patterns().size();
}

QString ZKApplication::GetPatternFile(int index)
{
    return ZKApplicationPrivate::Get().Patterns().value(index);
}

int ZKApplication::GetTexturePatternIndex()
{
    return ZKApplicationPrivate::Get().m_TexturePatternIndex;
}

void ZKApplication::SetTexturePatternIndex(int index)
{
    int& present = ZKApplicationPrivate::Get().m_TexturePatternIndex;
    if (index < 0 || index >= GetPatternCount() || index == present) return;
    present = index;
    emit GetInstance()->TexturePatternIndexChanged(index);
}

QString ZKApplication::GetUserDataFolder()
{
    return ZKApplicationPrivate::Get().Folders().data;
}

QString ZKApplication::GetResourcePath()
{
    return ZKApplicationPrivate::Get().Folders().resources;
}

QAction* ZKApplication::GetRefineSelection() const
{
    return m_pPrivate->m_pRefineSelection;
}

void ZKApplication::RegisterRefineSelection(QAction* action)
{
    if (m_pPrivate->m_pRefineSelection == action) return;
    m_pPrivate->m_pRefineSelection = action;
    emit RefineSelectionRegistered(action);
}
