#pragma once

#include <memory>

#include <QSystemTrayIcon>

#include "HarrowlaneApp/Platform/ChildProcess.h"

namespace HarrowlaneApp {

/// A panel that embeds windows, and a pointer on its display.
class Panel {
public:
    Panel() { start(); }

    void start() {
        process_ = std::make_unique<ChildProcess>(
            ChildProcess::Start{.program = "trayer",
                                .arguments = {"--edge", "top", "--align", "left", "--widthtype", "request"},
                                .variables = {}});
    }
    void kill() { process_->kill(); }

    [[nodiscard]] static bool isThere() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    static void click(const QPoint& place) { pointer({"mousemove", x(place), y(place), "click", "1"}); }

private:
    static QString x(const QPoint& place) { return QString::number(place.x()); }
    static QString y(const QPoint& place) { return QString::number(place.y()); }
    static void pointer(const QStringList& arguments) { QProcess::execute("xdotool", arguments); }

    std::unique_ptr<ChildProcess> process_;
};

} // namespace HarrowlaneApp
