#include <QtGlobal>

#include "HarrowlaneApp/Platform/Desktop.h"

namespace HarrowlaneApp::Desktop {

bool hasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

} // namespace HarrowlaneApp::Desktop
