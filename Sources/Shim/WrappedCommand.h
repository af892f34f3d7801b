#pragma once

#include <string>
#include <string_view>

namespace Shim {

/// A command that runs longer holds up the status line; its whole process group is ended then.
inline constexpr int wrappedCommandSeconds = 5;

/// Runs a command line by the shell with `input` on its standard input, whether or not it reads it, and with this
/// process's outputs and environment. Returns its exit status, as a shell tells it: 128 and the number of the signal
/// where one ended it; 127 where the shell could not be started. Ends with this process where a signal asks for that.
[[nodiscard]] int runWrapped(const std::string& command, std::string_view input);

} // namespace Shim
