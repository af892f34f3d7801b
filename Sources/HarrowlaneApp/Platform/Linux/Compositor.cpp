#include <cstdlib>
#include <memory>
#include <string>

#include <QGuiApplication>
#include <xcb/xcb.h>

#include "HarrowlaneApp/Platform/Desktop.h"

namespace HarrowlaneApp::Desktop {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <typename Reply>
using Owned = std::unique_ptr<Reply, Free>;

/// The selection that a compositing manager owns while it runs.
std::string compositorSelection() {
    int screen = 0;
    char* host = nullptr;
    int display = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) != 0) std::free(host);
    return "_NET_WM_CM_S" + std::to_string(screen);
}

} // namespace

bool blendsWindows() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // Qt's platform without a display counts as one of X, but has no connection.
    xcb_connection_t* connection = x11 == nullptr ? nullptr : x11->connection();
    if (connection == nullptr) return true;
    const std::string name = compositorSelection();
    const auto asked = xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(connection, asked, nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) return false;
    const auto ownerAsked = xcb_get_selection_owner(connection, atom->atom);
    const Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(connection, ownerAsked, nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

} // namespace HarrowlaneApp::Desktop
