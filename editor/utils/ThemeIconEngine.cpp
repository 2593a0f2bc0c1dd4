#include "utils/ThemeIconEngine.h"

#include "utils/ThemePicture.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>

#include <map>

namespace {
using FilesBySide = std::map<int, QString>; ///< true paths by their side in pixels; pictures are square

FilesBySide FindFiles(const QString& name)
{
    FilesBySide files;
    for (const char* size : ThemePicture::SizeEndings) {
        for (const char* density : {"", "@2x"}) {
            const QString file = ThemePicture::WithEnding(name, QLatin1String(size) + QLatin1String(density));
            const int side = QFileInfo::exists(file) ? QImageReader(file).size().width() : 0;
            if (side > 0) files.emplace(side, QFileInfo(file).canonicalFilePath());
        }
    }
    return files;
}

/// Lists paint their icons again and again, so what is found is kept until the look changes.
const FilesBySide& FilesOf(const QString& name)
{
    static QStringList look;
    static QHash<QString, FilesBySide> found;
    const QStringList currentLook = QDir::searchPaths(QStringLiteral("theme"));
    if (look != currentLook) {
        look = currentLook;
        found.clear();
    }
    const auto known = found.constFind(name);
    return known != found.constEnd() ? *known : *found.insert(name, FindFiles(name));
}
} // namespace

ThemeIconEngine::ThemeIconEngine(QString name) : m_Name(std::move(name)) {}

void ThemeIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal ratio = painter->device()->devicePixelRatioF();
    const QSize wanted = (QSizeF(rect.size()) * ratio).toSize();
    QPixmap picture = pixmap(wanted, mode, state);
    picture.setDevicePixelRatio(ratio);
    const QSizeF shown = QSizeF(picture.size()) / ratio;
    painter->drawPixmap(QPointF(rect.x() + (rect.width() - shown.width()) / 2,
                                rect.y() + (rect.height() - shown.height()) / 2),
                        picture);
}

QPixmap ThemeIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State)
{
    const FilesBySide& files = FilesOf(m_Name);
    if (files.empty()) return QPixmap();

    const int wanted = qMin(size.width(), size.height());
    auto best = files.lower_bound(wanted);
    if (best == files.end()) --best;
    const bool isFaint = mode == QIcon::Disabled;
    // A button paints its icon each time that it is touched, and a look at the disk takes longer than that.
    const QString key = QStringLiteral("theme icon %1 %2 %3").arg(best->second).arg(wanted).arg(int(isFaint));
    QPixmap picture;
    if (QPixmapCache::find(key, &picture)) return picture;

    picture = ThemePicture::Load(best->second, 1);
    if (best->first > wanted) {
        picture = picture.scaled(wanted, wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    if (isFaint) picture = ThemePicture::Faint(picture);
    QPixmapCache::insert(key, picture);
    return picture;
}

QSize ThemeIconEngine::actualSize(const QSize& size, QIcon::Mode, QIcon::State)
{
    const FilesBySide& files = FilesOf(m_Name);
    const int side = files.empty() ? 0 : qMin(qMin(size.width(), size.height()), files.rbegin()->first);
    return {side, side};
}

QList<QSize> ThemeIconEngine::availableSizes(QIcon::Mode, QIcon::State) const
{
    QList<QSize> sizes;
    for (const auto& [side, file] : FilesOf(m_Name))
        sizes.append({side, side});
    return sizes;
}

QIconEngine* ThemeIconEngine::clone() const
{
    return new ThemeIconEngine(*this);
}
