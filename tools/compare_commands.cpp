#include "compare_commands.h"

#include "description_commands.h"
#include "description_reader.h"
#include "input_file.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>

namespace tool {
namespace {

using Values = std::map<std::string, std::string>;  // of the entries, by their names

Values valuesOf(const KIVData& record) {
  Values values;
  for (const auto& [name, path] : record.rootMacros) {
    values["root macro " + name] = " = " + path;
  }
  for (const auto& [source, entry] : record.fileMap) {
    values["file " + source] = " -> " + entry.target;
  }
  std::map<std::string, int> times;
  for (const std::string& path : record.varnixPath) {
    const int time = ++times[path];
    values["search path " + path + (time == 1 ? "" : ", time " + std::to_string(time))];
  }
  return values;
}

ExitStatus print(char sign, const std::string& name, const std::string& value) {
  std::cout << sign << ' ' << shown(name + value) << '\n';
  return differ;
}

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

}  // namespace

ExitStatus diffManifests(const std::string& oldFile, const std::string& newFile) {
  ExitStatus status = allGood;
  std::vector<Record> records;
  const ExitStatus loaded = forEachFile({oldFile, newFile}, [&](const std::string& file) {
    const InputFile input(file);
    return loadRecord(file, input.path(), records.emplace_back());
  });
  if (loaded != allGood) {
    return wrongUsage;
  }
  Values before = valuesOf(*records.front());
  const Values after = valuesOf(*records.back());
  for (const auto& [name, value] : after) {
    const auto old = before.extract(name);
    if (old.empty()) {
      status = print('+', name, value);
    } else if (old.mapped() != value) {
      status = print('!', name, old.mapped() + ", now" + value);
    }
  }
  for (const auto& [name, value] : before) {
    status = print('-', name, value);
  }
  if (status == allGood && records.front()->varnixPath != records.back()->varnixPath) {
    status = print('!', "search path", " in another order");
  }
  return finishOutput(status);
}

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

}  // namespace tool
