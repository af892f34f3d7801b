#pragma once

/// What the program holds of memory that it does not use. A run needs a lot for a moment, and then rests for long.
namespace HarrowlaneApp::Memory {

/// From now on large blocks go back to the system as soon as they are freed. Call it before there are threads. Does
/// nothing where the library knows no such wish, as the other one.
void holdLittle();

/// Gives back what lies free between blocks in use. Takes milliseconds; on any thread.
void giveBack();

} // namespace HarrowlaneApp::Memory
