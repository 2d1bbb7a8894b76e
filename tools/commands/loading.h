// What the commands that load descriptions and print them have in common.
#pragma once

#include "commands/command_line.h"
#include "description/description.h"

#include <functional>
#include <string>

namespace tool {

// Runs `print` for each description, with the heading of what it prints, which is the file's name where there are
// several files. `print` returns false when a load refuses the description. With --json, what keeps a file from loading
// is printed in an object of its own.
using Print = bool(const Options& options, Description& description, const std::string& heading);
ExitStatus printEach(const Options& options, Print* print);

// Adds the options of such a command.
void addLoadOptions(Command command);

// Prints what a function of the library dumps: it begins with a line end and does not end its last line.
void printTree(const std::string& heading, const std::function<void()>& dump);

// Warns of a description that is of the other kind, or of none: it loads, without an entry.
void warnOfOtherKind(const Description& description, bool asManifest);

}  // namespace tool
