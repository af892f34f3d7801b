#pragma once

namespace HarrowlaneApp {

/// Lets a screen reader see the views' own kinds of widgets as what they are, and the popover among the windows. Once
/// for the process, before a reader first asks; further calls do nothing. Wants an application object.
void installAccessibility();

} // namespace HarrowlaneApp
