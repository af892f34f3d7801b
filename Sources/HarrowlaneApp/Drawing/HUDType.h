#pragma once

#include <string_view>

#include "HarrowlaneApp/Drawing/HUDFont.h"

/// The type of the program: Chakra Petch for numbers and running text, Michroma for the wordmark and small spaced-out
/// labels, Share Tech Mono for ticks. All three are carried within the program. Sizes are fixed and do not grow with
/// the system's text size. Needs a QGuiApplication.
namespace HarrowlaneApp::HUDType {

enum class Weight { ultraLight, thin, light, regular, medium, semibold, bold, heavy, black };

/// True when every face was loaded. They are, on the first call of any function here; otherwise the system's font of
/// the same size and weight takes their place.
[[nodiscard]] bool registered();

/// The face of running text for a weight, such as "ChakraPetch-SemiBold".
[[nodiscard]] std::string_view faceName(Weight weight);

/// Running text and numbers.
[[nodiscard]] HUDFont text(double size, Weight weight = Weight::regular);
/// The display face.
[[nodiscard]] HUDFont display(double size, double tracking = 0.0);
/// The face of even width.
[[nodiscard]] HUDFont mono(double size);
/// The system's interface font in bold.
[[nodiscard]] HUDFont systemBold(double size);

} // namespace HarrowlaneApp::HUDType
