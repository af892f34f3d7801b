#pragma once

/// Ends the process, as a SIGKILL would, before one of its system calls on files.
namespace KillPoints {

/// From now on the n-th call (from 1) is never made.
void killAt(long n);

} // namespace KillPoints
