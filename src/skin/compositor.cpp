#include "skin/compositor.h"

#include <QByteArray>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace kestrune {

namespace {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

int ScreenNumber() {
    // The display's name ends in ".N" for another screen than the first.
    const QByteArray display = qgetenv("DISPLAY");
    const qsizetype dot = display.lastIndexOf('.');
    return dot > display.lastIndexOf(':') ? display.mid(dot + 1).toInt() : 0;
}

} // namespace

bool HasCompositor() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr) {
        return true;
    }
    xcb_connection_t* connection = x11->connection();
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(ScreenNumber());
    const std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, static_cast<uint16_t>(name.size()), name.constData()),
        nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return false;
    }
    const std::unique_ptr<xcb_get_selection_owner_reply_t, FreeReply> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace kestrune
