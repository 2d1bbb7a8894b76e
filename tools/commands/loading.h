// Loading descriptions as the library does, for the commands that print what a load gives.
#pragma once

#include "commands/command_line.h"
#include "description/description.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// What such a command is: it runs `print` for each description, with the file's name and the heading of what it prints,
// which is the name where there are several files. `print` returns false when a load refuses the description. With
// --json, what keeps a file from loading is printed in an object of its own.
using Print = bool(const Options& options, const std::string& file, Description& description,
                   const std::string& heading);
ExitStatus printEach(const Options& options, Print* print);

// Adds the options of such a command.
void addLoadOptions(Command command);

// Reports why the file at `path` does not load, in the words of a load.
ExitStatus reportUnloadable(const std::string& file, const char* path);

// Prints what a function of the library dumps: it begins with a line end and does not end its last line.
void printTree(const std::string& heading, const std::function<void()>& dump);

// Reports that a description is of the other kind, or of none: it loads, without an entry.
void warnOfOtherKind(const std::string& file, const Description& description, bool asManifest);

}  // namespace tool
