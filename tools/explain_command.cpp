// qzjexxml explain: where an entry of a description comes from.
#include "command_line.h"
#include "commands.h"
#include "describing.h"
#include "description_reader.h"
#include "each_file.h"
#include "entries.h"
#include "failure.h"
#include "input_file.h"
#include "terminal_text.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tool {
namespace {

void printComposition(const Element& element, const Element& parent) {
  const char* separator = "  ";
  for (const Element* part : {&parent, &element}) {
    for (const AttributeKind& attribute : part->kind->attributes) {
      if (part->attributes.contains(attribute.name)) {
        std::cout << separator << attribute.name << '=' << shown(inQuotes((*part)[attribute.name]));
        separator = " ";
      }
    }
  }
  std::cout << '\n';
}

// Prints where the entries stand that set a file (by its source or target) or a root macro (by its name), how they are
// composed, and which of them override which.
ExitStatus explainEntry(const std::string& file, const std::string& key) {
  return forEachFile({file}, [&](const std::string&) {
    const InputFile input(file);
    const Description description = readDescription(input.path());
    if (std::ranges::any_of(description.findings, &Finding::isError)) {
      throw Failure("cannot be loaded; \"qzjexxml check\" says why");
    }
    const std::vector<Entry> entries = entriesOf(description);
    std::map<std::string, const Entry*> before;
    bool found = false;
    for (const Entry& entry : entries) {
      if (entry.key != key && !(entry.isFile && entry.value == key)) {
        continue;
      }
      std::cout << shown(placeOf(file, entry.element->place) + ": " + entry.key + (entry.isFile ? " -> " : " = ") +
                         entry.value)
                << '\n';
      printComposition(*entry.element, description.elements[entry.element->parent]);
      const Entry*& earlier = before[(entry.isFile ? "f" : "m") + entry.key];
      if (earlier != nullptr) {
        std::cout << "  overrides " << shown(placeOf(file, earlier->element->place)) << '\n';
      }
      earlier = &entry;
      found = true;
    }
    if (!found) {
      std::vector<std::string> keys;
      std::ranges::transform(entries, std::back_inserter(keys), &Entry::key);
      throw Failure("has no entry " + inQuotes(key) + suggestion(key, keys));
    }
    return allGood;
  });
}

struct Options {
  std::string file;
  std::string key;
  std::string output;
};

}  // namespace

void addExplain(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("explain", "Say where a root macro or file of a description is set",
           [options] {
             return describe(options->output, {options->file}, false,
                             [&] { return explainEntry(options->file, options->key); });
           })
      .argument("FILE", options->file, "The description")
      .argument("KEY", options->key, "The root macro's name; the file's source or target")
      .output(options->output);
}

}  // namespace tool
