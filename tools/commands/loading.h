// What the commands that load descriptions and print them have in common.
#pragma once

#include "commands/command_line.h"
#include "commands/running.h"
#include "description/description.h"
#include "io/standard_streams.h"

#include <iostream>
#include <string>

namespace tool {

// Adds the options of such a command.
void addLoadOptions(Command command);

// Returns the line above what is printed of a file, where there are several files.
std::string headingOf(const Options& options, const Description& description);

// Warns of a description that is of the other kind, or of none: it loads, without an entry.
void warnOfOtherKind(const Description& description, bool asManifest);

// Reports why a file does not load. With --json, prints it in an object too.
ExitStatus reportUnloadable(const Options& options, const Description& description);

// Loads each description, and prints it: with --tree by a function of the library, which begins with a line end and
// does not end its last line.
template <typename Tree>
ExitStatus printEach(const Options& options, bool (*dump)(Tree& tree),
                     void (*print)(const Options& options, const Description& description, Tree& tree)) {
  return forEachFile(options.files, [&](const std::string& file) {
    Description description(file);
    Tree tree;
    if (description.hasErrors() || !description.build(tree)) {
      return reportUnloadable(options, description);
    }
    if (options.tree) {
      std::cout << headingOf(options, description) << diagnosticsOf([&] { dump(tree); }).substr(1) << '\n';
    } else {
      print(options, description, tree);
    }
    return allGood;
  });
}

}  // namespace tool
