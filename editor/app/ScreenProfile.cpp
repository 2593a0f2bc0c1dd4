#include "app/ScreenProfile.h"

#include <QGuiApplication>
#include <qpa/qplatformnativeinterface.h>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace {
template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

/// In four bytes; larger than any profile that means something.
constexpr uint32_t MostUnits = 4 * 1024 * 1024;
} // namespace

ZKCMSProfile ScreenProfile::Read()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return ZKCMSProfile();
    auto* connection = static_cast<xcb_connection_t*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("connection"));
    if (!connection) return ZKCMSProfile();

    constexpr char name[] = "_ICC_PROFILE";
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto atomAsked = xcb_intern_atom(connection, 1, sizeof(name) - 1, name);
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
