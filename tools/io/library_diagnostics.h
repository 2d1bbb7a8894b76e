// What the library says.
#pragma once

#include <functional>
#include <string>

namespace tool {

// What is written to the standard error stream while `action` runs, instead of writing it there; as escapeForTerminal()
// gives it, except line ends that are written by themselves.
std::string diagnosticsOf(const std::function<void()>& action);

}  // namespace tool
