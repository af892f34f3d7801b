#pragma once

namespace HarrowlaneApp {

/// Lets a screen reader see the views' own kinds of widgets as what they are. Once for the process; further calls do
/// nothing. Wants an application object.
void installAccessibility();

} // namespace HarrowlaneApp
