#pragma once

#include <array>
#include <string_view>

#include "HarrowlaneApp/Drawing/Glyphs.h"

/// How the glyphs are drawn, on a grid of 16 units.
namespace HarrowlaneApp::Glyphs {

/// A step of a glyph's drawing; the steps of one stand together, in order.
struct Part {
    Glyph glyph = Glyph::power;
    /// Takes away what lies before it, and draws nothing.
    bool isCutOut = false;
    /// By the even-odd rule.
    bool isFilled = false;
    /// With round ends and joins; none at 0.
    double strokeWidth = 0.0;
    /// Eight dashes with butt ends to a circle of radius 5.8.
    bool isDashed = false;
    /// Of M, L, C and Z.
    std::string_view path;
};

// clang-format off
inline constexpr std::array<Part, 39> parts{{
    {.glyph = Glyph::power, .strokeWidth = 1.5, .path = "M8 1.7L8 7.6"},
    {.glyph = Glyph::power, .strokeWidth = 1.5, .path = "M4.68 4.15C2.86 5.57 2.14 7.98 2.89 10.16C3.64 12.34 5.69 13.81 8 13.81C10.31 13.81 12.36 12.34 13.11 10.16C13.86 7.98 13.14 5.57 11.32 4.15"},
    {.glyph = Glyph::gear, .isFilled = true, .strokeWidth = 0.8, .path = "M6.67 3.18L7.02 1.52L8.98 1.52L9.33 3.18C9.72 3.29 10.1 3.45 10.46 3.65L11.89 2.73L13.27 4.11L12.35 5.54C12.55 5.9 12.71 6.28 12.82 6.67L14.48 7.02L14.48 8.98L12.82 9.33C12.71 9.72 12.55 10.1 12.35 10.46L13.27 11.89L11.89 13.27L10.46 12.35C10.1 12.55 9.72 12.71 9.33 12.82L8.98 14.48L7.02 14.48L6.67 12.82C6.28 12.71 5.9 12.55 5.54 12.35L4.11 13.27L2.73 11.89L3.65 10.46C3.45 10.1 3.29 9.72 3.18 9.33L1.52 8.98L1.52 7.02L3.18 6.67C3.29 6.28 3.45 5.9 3.65 5.54L2.73 4.11L4.11 2.73L5.54 3.65C5.9 3.45 6.28 3.29 6.67 3.18ZM10.7 8C10.7 6.51 9.49 5.3 8 5.3C6.51 5.3 5.3 6.51 5.3 8C5.3 9.49 6.51 10.7 8 10.7C9.49 10.7 10.7 9.49 10.7 8Z"},
    {.glyph = Glyph::refresh, .strokeWidth = 1.5, .path = "M13.2 8C13.2 10.48 11.44 12.61 9.01 13.1C6.58 13.58 4.14 12.27 3.19 9.98C2.25 7.69 3.05 5.04 5.11 3.67C7.18 2.29 9.93 2.56 11.68 4.32"},
    {.glyph = Glyph::refresh, .strokeWidth = 1.5, .path = "M11.95 1.5L11.95 4.6L8.85 4.6"},
    {.glyph = Glyph::chart, .strokeWidth = 1.4, .path = "M2.2 1.9L2.2 13.8L14.1 13.8"},
    {.glyph = Glyph::chart, .strokeWidth = 1.5, .path = "M4.7 10.6L7.2 7.3L9.5 9L13.2 4.1"},
    {.glyph = Glyph::risingChart, .strokeWidth = 1.4, .path = "M2.2 1.9L2.2 13.8L14.1 13.8"},
    {.glyph = Glyph::risingChart, .strokeWidth = 1.5, .path = "M4.7 10.7L7.4 7.9L9.1 9.4L13.2 4.9"},
    {.glyph = Glyph::risingChart, .strokeWidth = 1.5, .path = "M10.3 4.5L13.6 4.5L13.6 7.8"},
    {.glyph = Glyph::calendar, .strokeWidth = 1.4, .path = "M4.2 3.2L11.8 3.2C12.9 3.2 13.8 4.1 13.8 5.2L13.8 11.8C13.8 12.9 12.9 13.8 11.8 13.8L4.2 13.8C3.1 13.8 2.2 12.9 2.2 11.8L2.2 5.2C2.2 4.1 3.1 3.2 4.2 3.2Z"},
    {.glyph = Glyph::calendar, .strokeWidth = 1.4, .path = "M2.4 6.6L13.6 6.6"},
    {.glyph = Glyph::calendar, .strokeWidth = 1.4, .path = "M5.3 1.8L5.3 4.3M10.7 1.8L10.7 4.3"},
    {.glyph = Glyph::calendar, .strokeWidth = 1.5, .path = "M5.1 9L5.12 9M8 9L8.02 9M10.9 9L10.92 9M5.1 11.4L5.12 11.4M8 11.4L8.02 11.4"},
    {.glyph = Glyph::pie, .strokeWidth = 1.4, .path = "M6.9 3.2C3.92 3.21 1.48 5.59 1.42 8.58C1.35 11.56 3.67 14.05 6.65 14.19C9.63 14.34 12.18 12.08 12.4 9.1L6.9 9.1Z"},
    {.glyph = Glyph::pie, .strokeWidth = 1.4, .path = "M9.4 1.9C11.93 2.05 13.95 4.07 14.1 6.6L9.4 6.6Z"},
    {.glyph = Glyph::lightbulb, .isFilled = true, .path = "M8 1.3C5.95 1.31 4.13 2.65 3.51 4.6C2.88 6.56 3.58 8.7 5.25 9.9C5.85 10.4 6.1 10.8 6.2 11.5L9.8 11.5C9.9 10.8 10.15 10.4 10.75 9.9C12.42 8.7 13.12 6.56 12.49 4.6C11.87 2.65 10.05 1.31 8 1.3Z"},
    {.glyph = Glyph::lightbulb, .strokeWidth = 1.2, .path = "M6.5 13L9.5 13"},
    {.glyph = Glyph::lightbulb, .strokeWidth = 1.2, .path = "M7.2 14.7L8.8 14.7"},
    {.glyph = Glyph::arrowUp, .isFilled = true, .path = "M14.5 8C14.5 4.41 11.59 1.5 8 1.5C4.41 1.5 1.5 4.41 1.5 8C1.5 11.59 4.41 14.5 8 14.5C11.59 14.5 14.5 11.59 14.5 8Z"},
    {.glyph = Glyph::arrowUp, .isCutOut = true, .strokeWidth = 1.5, .path = "M8 11.6L8 4.9M5.1 7.6L8 4.7L10.9 7.6"},
    {.glyph = Glyph::copy, .strokeWidth = 1.4, .path = "M7 5.4L12 5.4C12.88 5.4 13.6 6.12 13.6 7L13.6 12C13.6 12.88 12.88 13.6 12 13.6L7 13.6C6.12 13.6 5.4 12.88 5.4 12L5.4 7C5.4 6.12 6.12 5.4 7 5.4Z"},
    {.glyph = Glyph::copy, .strokeWidth = 1.4, .path = "M3.6 10.6C2.87 10.41 2.38 9.75 2.4 9L2.4 4C2.4 3.12 3.12 2.4 4 2.4L9 2.4C9.75 2.38 10.41 2.87 10.6 3.6"},
    {.glyph = Glyph::check, .strokeWidth = 1.7, .path = "M3 8.5L6.4 11.9L13 4.6"},
    {.glyph = Glyph::warning, .isFilled = true, .strokeWidth = 1.6, .path = "M8 2.2L14.3 13.2L1.7 13.2Z"},
    {.glyph = Glyph::warning, .isCutOut = true, .strokeWidth = 1.5, .path = "M8 6L8 9.3"},
    {.glyph = Glyph::warning, .isCutOut = true, .strokeWidth = 1.7, .path = "M8 11.5L8.02 11.5"},
    {.glyph = Glyph::dashedCircle, .strokeWidth = 1.5, .isDashed = true, .path = "M8 2.2C11.2 2.2 13.8 4.8 13.8 8C13.8 11.2 11.2 13.8 8 13.8C4.8 13.8 2.2 11.2 2.2 8C2.2 4.8 4.8 2.2 8 2.2Z"},
    {.glyph = Glyph::sealCheck, .isFilled = true, .path = "M10.2 2.69C11.08 2.43 12.03 2.67 12.68 3.32C13.33 3.97 13.57 4.92 13.31 5.8C14.12 6.24 14.62 7.08 14.62 8C14.62 8.92 14.12 9.76 13.31 10.2C13.57 11.08 13.33 12.03 12.68 12.68C12.03 13.33 11.08 13.57 10.2 13.31C9.76 14.12 8.92 14.62 8 14.62C7.08 14.62 6.24 14.12 5.8 13.31C4.92 13.57 3.97 13.33 3.32 12.68C2.67 12.03 2.43 11.08 2.69 10.2C1.88 9.76 1.38 8.92 1.38 8C1.38 7.08 1.88 6.24 2.69 5.8C2.43 4.92 2.67 3.97 3.32 3.32C3.97 2.67 4.92 2.43 5.8 2.69C6.24 1.88 7.08 1.38 8 1.38C8.92 1.38 9.76 1.88 10.2 2.69Z"},
    {.glyph = Glyph::sealCheck, .isCutOut = true, .strokeWidth = 1.5, .path = "M5.2 8.2L7.2 10.2L10.9 6.1"},
    {.glyph = Glyph::bellSlash, .isFilled = true, .strokeWidth = 0.6, .path = "M8 1.6C5.5 1.6 4 3.5 4 5.9L4 8.4L2.6 10.9L13.4 10.9L12 8.4L12 5.9C12 3.5 10.5 1.6 8 1.6Z"},
    {.glyph = Glyph::bellSlash, .isFilled = true, .path = "M6.2 12.4C6.4 13.23 7.14 13.82 8 13.82C8.86 13.82 9.6 13.23 9.8 12.4Z"},
    {.glyph = Glyph::bellSlash, .isCutOut = true, .strokeWidth = 3.4, .path = "M2.6 1.9L13.4 14.1"},
    {.glyph = Glyph::bellSlash, .strokeWidth = 1.4, .path = "M2.6 1.9L13.4 14.1"},
    {.glyph = Glyph::gauge, .strokeWidth = 1.3, .path = "M14.3 8C14.3 4.52 11.48 1.7 8 1.7C4.52 1.7 1.7 4.52 1.7 8C1.7 11.48 4.52 14.3 8 14.3C11.48 14.3 14.3 11.48 14.3 8Z"},
    {.glyph = Glyph::gauge, .strokeWidth = 1.4, .path = "M4.4 8L4.42 8M5.45 5.45L5.47 5.45M10.55 5.45L10.57 5.45M11.6 8L11.62 8"},
    {.glyph = Glyph::gauge, .strokeWidth = 1.4, .path = "M8 9.6L8 4.2"},
    {.glyph = Glyph::gauge, .isFilled = true, .path = "M9.5 10C9.5 9.17 8.83 8.5 8 8.5C7.17 8.5 6.5 9.17 6.5 10C6.5 10.83 7.17 11.5 8 11.5C8.83 11.5 9.5 10.83 9.5 10Z"},
    {.glyph = Glyph::spinner, .strokeWidth = 1.6, .path = "M8 2.4C11.09 2.4 13.6 4.91 13.6 8C13.6 11.09 11.09 13.6 8 13.6C4.91 13.6 2.4 11.09 2.4 8"},
}};
// clang-format on

} // namespace HarrowlaneApp::Glyphs
