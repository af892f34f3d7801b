#include <cstdint>
#include <cstdlib>
#include <filesystem>
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

bool answersX() {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) return false;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool hasWayland() {
    const QByteArray name = qgetenv("WAYLAND_DISPLAY");
    if (name.isEmpty()) return false;
    // Joined to a name that is a whole path, the folder falls away.
    const auto socket = std::filesystem::path(qgetenv("XDG_RUNTIME_DIR").toStdString()) / name.toStdString();
    std::error_code ignored;
    return std::filesystem::exists(socket, ignored);
}

} // namespace

// Qt ends the process where its display does not answer, so that is tried before.
bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || hasWayland() || answersX();
}

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
