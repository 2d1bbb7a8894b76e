// qzjexxml explain: prints where an entry of a description is set.
#include "commands/command_line.h"
#include "commands/running.h"
#include "description/description.h"
#include "description/entries.h"
#include "io/quoting.h"
#include "io/terminal_text.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace tool {

static void print(const Entry& entry, Description& description) {
  const Element& parent = description.elements[entry.element->parent];
  const char* separator = entry.isFile() ? " -> " : entry.kind == Entry::Kind::rootMacro ? " = " : "";
  std::cout << escapeForTerminal(description.placeOf(entry.element->tag()) + ": " + entry.key + separator + entry.value)
            << "\n "
            << escapeForTerminal(parent.attributesText(Element::Which::all) +
                                 entry.element->attributesText(Element::Which::all))
            << '\n';
  for (const auto& [relation, other] :
       {std::pair("overrides", entry.overrides), {"overridden by", entry.overriddenBy}}) {
    if (other != nullptr) {
      std::cout << "  " << relation << ' ' << escapeForTerminal(description.placeOf(other->element->tag())) << '\n';
    }
  }
}

// Prints the entries with this key, or files with this target: positions, attributes, and which entries override them.
static ExitStatus explain(const Options& options) {
  return forEachFile(options.files, [&](const std::string& file) {
    Description description(file);
    const std::vector<Entry> entries = entriesOf(description);
    if (description.hasErrors()) {
      return description.reportUnloadable();
    }
    bool found = false;
    for (const Entry& entry : entries) {
      if (entry.key == options.key || (entry.isFile() && entry.value == options.key)) {
        print(entry, description);
        found = true;
      }
    }
    if (!found) {
      std::vector<std::string_view> keys;
      std::ranges::transform(entries, std::back_inserter(keys), &Entry::key);
      throw Failure("has no entry " + inQuotes(options.key) + suggestion(options.key, keys));
    }
    return allGood;
  });
}

void addExplain(CommandLine& line) {
  line.add("explain", "Show where an entry of a description is set", "explain manifest.xml TABULA_HOME",
           withParser<explain>)
      .file("FILE", "The description")
      .argument("KEY", &Options::key, "The name of a root macro, the source or target of a file, or a search path")
      .output();
}

}  // namespace tool
