// Functions shared by the commands that load descriptions and print them.
#pragma once

#include "commands/running.h"
#include "description/description.h"
#include "io/standard_streams.h"
#include "io/terminal_text.h"

#include <iostream>
#include <string>
#include <type_traits>

namespace tool {

// Adds the options of a command that loads descriptions.
void addLoadOptions(Command command);

// Warns if the description is of the other kind or of neither kind. Such a description loads, but has no entries.
void warnOfOtherKind(const Description& description, bool asManifest);

// Reports why the file does not load. With --json, also prints the reason as an object.
ExitStatus reportUnloadable(const Options& options, const Description& description);

// Loads and prints each description. `dump`, for --tree, writes a line end before each line, and none at the end.
template <typename Tree>
ExitStatus printEach(const Options& options, bool (*dump)(Tree& tree),
                     void (*print)(const Options& options, const Description& description, Tree& tree)) {
  return forEachFile(options.files, [&](const std::string& file) {
    Description description(file);
    Tree tree;
    if (description.hasErrors() || !description.build(tree)) {
      return reportUnloadable(options, description);
    }
    constexpr bool isManifest = std::is_same_v<Tree, jexxml::KivMaster>;
    if (options.files.size() > 1 && (options.tree || (isManifest && !options.json))) {
      std::cout << escapeForTerminal(file) << ":\n";
    }
    if (options.tree) {
      warnOfOtherKind(description, isManifest);
      std::cout << diagnosticsOf([&] { dump(tree); }).substr(1) << '\n';
    } else {
      print(options, description, tree);
    }
    return allGood;
  });
}

}  // namespace tool
