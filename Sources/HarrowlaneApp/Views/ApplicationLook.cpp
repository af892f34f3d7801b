#include "HarrowlaneApp/Views/ApplicationLook.h"

namespace HarrowlaneApp {

ApplicationLook::ApplicationLook(const Look& look, QObject* parent) : QObject(parent), given_(look), look_(look) {}

ApplicationLook::ApplicationLook(const DesktopAppearance& desktop, const DisplayOptions& options, QObject* parent)
    : QObject(parent),
      desktop_(&desktop),
      options_(&options) {
    read();
    connect(desktop_, &DesktopAppearance::changed, this, &ApplicationLook::read);
    connect(options_, &DisplayOptions::changed, this, &ApplicationLook::read);
}

void ApplicationLook::force(std::optional<Appearance> appearance) {
    forced_ = appearance;
    read();
}

void ApplicationLook::read() {
    Look look = desktop_ == nullptr ? given_ : options_->look(desktop_->appearance());
    look.appearance = forced_.value_or(look.appearance);
    if (look == look_) return;
    look_ = look;
    Q_EMIT changed();
}

} // namespace HarrowlaneApp
