#include "app/ScreenProfile.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <qpa/qplatformnativeinterface.h>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {
template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

/// In four bytes; larger than any profile that means something.
constexpr uint32_t MostUnits = 4 * 1024 * 1024;

int IndexOf(const QString& key)
{
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto found = std::find_if(screens.begin(), screens.end(), [&key](const QScreen* screen) {
        return ScreenProfile::KeyOf(screen) == key;
    });
    return found == screens.end() ? 0 : static_cast<int>(found - screens.begin());
}

/// As color daemons agreed on: the first screen's has no number.
QByteArray PropertyOf(int screen)
{
    const QByteArray first("_ICC_PROFILE");
    return screen == 0 ? first : first + '_' + QByteArray::number(screen);
}
} // namespace

QString ScreenProfile::KeyOf(const QScreen* screen)
{
    if (!screen) return QString();
    const QString number = screen->serialNumber().isEmpty() ? screen->name() : screen->serialNumber();
    return QStringList{screen->manufacturer(), screen->model(), number}.join(' ').simplified();
}

QString ScreenProfile::NameOf(const QString& key)
{
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        if (key.isEmpty() || KeyOf(screen) != key) continue;
        const QString name = QStringList{screen->manufacturer(), screen->model()}.join(' ').simplified();
        return name.isEmpty() ? screen->name() : name;
    }
    return QString();
}

ZKCMSProfile ScreenProfile::Read(const QString& key)
{
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return ZKCMSProfile();
    auto* connection = static_cast<xcb_connection_t*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("connection"));
    if (!connection) return ZKCMSProfile();

    const QByteArray name = PropertyOf(IndexOf(key));
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto atomAsked =
        xcb_intern_atom(connection, 1, static_cast<uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(connection, atomAsked, nullptr),
                                              &std::free);
    if (!atom || atom->atom == XCB_ATOM_NONE) return ZKCMSProfile();
    const auto asked =
        xcb_get_property(connection, 0, root, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, MostUnits);
    const Owned<xcb_get_property_reply_t> property(xcb_get_property_reply(connection, asked, nullptr),
                                                   &std::free);
    if (!property || property->format != 8) return ZKCMSProfile();
    return ZKCMSProfile(QByteArray(static_cast<const char*>(xcb_get_property_value(property.get())),
                                   xcb_get_property_value_length(property.get())));
}
