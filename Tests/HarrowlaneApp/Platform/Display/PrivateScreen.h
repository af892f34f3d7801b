#pragma once

#include <stdexcept>

#include "HarrowlaneApp/Platform/ChildProcess.h"

namespace HarrowlaneApp {

/// A screen that nobody else uses. Throws `std::runtime_error` where there cannot be one.
class PrivateScreen {
public:
    PrivateScreen()
        : server_({.program = "Xvfb",
                   .arguments = {"-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"},
                   .variables = {}}),
          display_(':' + server_.firstLine()) {
        if (display_.size() < 2) throw std::runtime_error("Xvfb does not start; is it installed?");
    }

    /// As the variable DISPLAY names it.
    [[nodiscard]] const QString& display() const { return display_; }

private:
    ChildProcess server_;
    QString display_;
};

} // namespace HarrowlaneApp
