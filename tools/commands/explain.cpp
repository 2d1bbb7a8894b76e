// qzjexxml explain: where an entry of a description comes from.
#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/running.h"
#include "description/description.h"
#include "description/entries.h"
#include "io/failure.h"
#include "io/input_file.h"
#include "io/quoting.h"
#include "io/terminal_text.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace tool {
namespace {

void printOther(const char* relation, const Entry* other, const std::string& file, Description& description) {
  if (other != nullptr) {
    std::cout << "  " << relation << ' '
              << escapeForTerminal(positionOf(file, description.positionOf(other->element->tag()))) << '\n';
  }
}

// Prints where the entries stand that set a file (by its source or target), a root macro (by its name) or a search
// path, how they are composed, and which of them override which.
ExitStatus explainEntry(const std::string& file, const std::string& key) {
  return forEachFile({file}, [&](const std::string&) {
    const InputFile input(file);
    Description description(input.path());
    const std::vector<Entry> entries = entriesOf(description);
    if (description.hasErrors()) {
      throw Failure("cannot be loaded; \"qzjexxml check\" says why");
    }
    bool found = false;
    for (const Entry& entry : entries) {
      if (entry.key != key && !(entry.isFile() && entry.value == key)) {
        continue;
      }
      std::cout << escapeForTerminal(positionOf(file, description.positionOf(entry.element->tag())) + ": " + entry.key +
                                     (entry.isFile()                         ? " -> "
                                      : entry.kind == Entry::Kind::rootMacro ? " = "
                                                                             : "") +
                                     entry.value)
                << '\n';
      const Element& parent = description.elements[entry.element->parent];
      std::cout << ' '
                << escapeForTerminal(parent.attributesText(Element::Which::all) +
                                     entry.element->attributesText(Element::Which::all))
                << '\n';
      printOther("overrides", entry.overrides, file, description);
      printOther("overridden by", entry.overriddenBy, file, description);
      found = true;
    }
    if (!found) {
      std::vector<std::string_view> keys;
      std::ranges::transform(entries, std::back_inserter(keys), &Entry::key);
      throw Failure("has no entry " + inQuotes(key) + suggestion(key, keys));
    }
    return allGood;
  });
}

ExitStatus explain(const Options& options) {
  return runWithParser(options, {options.file}, [&] { return explainEntry(options.file, options.key); });
}

}  // namespace

void addExplain(CommandLine& line) {
  line.add("explain", "Say where an entry of a description is set", "explain manifest.xml TABULA_HOME", explain)
      .argument("FILE", &Options::file, "The description")
      .argument("KEY", &Options::key, "The name of a root macro; the source or target of a file; a search path")
      .output();
}

}  // namespace tool
