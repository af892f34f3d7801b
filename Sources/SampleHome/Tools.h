#pragma once

#include <array>
#include <string>
#include <string_view>

namespace SampleHome {

enum class Tool { Bash, Read, Edit, Write, Grep, TodoWrite, WebFetch, Task };

inline constexpr std::array<std::string_view, 8> toolNames{"Bash", "Read",      "Edit",     "Write",
                                                           "Grep", "TodoWrite", "WebFetch", "Task"};

constexpr std::string_view toolName(Tool tool) {
    return toolNames[static_cast<std::size_t>(tool)];
}

/// One use of a tool, from the line that asks for it to the line that brings its result.
struct ToolCall {
    Tool tool = Tool::Bash;
    std::string id;
    std::string_view file; ///< path below the project; for the tools that have one
};

} // namespace SampleHome
