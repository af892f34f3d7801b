#pragma once

#include "HarrowlaneApp/Views/HUDLabel.h"

/// The styles that texts share across the views.
namespace HarrowlaneApp::Headings {

/// A view's first line.
[[nodiscard]] inline TextStyle headline() {
    return {.font = HUDType::text(21, HUDType::Weight::semibold), .lineHeight = 26};
}

/// What stands below it.
[[nodiscard]] inline TextStyle detail() {
    return {.font = HUDType::text(12.5), .color = &Palette::dim, .lineHeight = 18};
}

/// The label of a card.
[[nodiscard]] inline TextStyle card() {
    return {.font = HUDType::display(9.5, 1.6), .color = &Palette::dim, .lineHeight = 12};
}

} // namespace HarrowlaneApp::Headings
