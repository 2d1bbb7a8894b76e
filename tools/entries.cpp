#include "entries.h"

namespace tool {
namespace {

std::string join(const std::string& first, const std::string& last) { return first + '/' + last; }

const std::string& firstGiven(const Element& element, const char* name, const char* otherwise) {
  return element[name].empty() ? element[otherwise] : element[name];
}

}  // namespace

std::vector<Entry> entriesOf(const Description& description) {
  std::vector<Entry> entries;
  for (const Element& element : description.elements) {
    const Element& parent = description.elements[element.parent];
    if (parent.kind->name == "rootmacro") {
      entries.push_back({&element, false, element["name"], element["abspath"]});
    } else if (parent.kind->name == "root") {
      entries.push_back(
          {&element, true, join(join(parent["path"], element["dir_name"]), element["file_name"]),
           join(firstGiven(element, "dir_rename", "dir_name"), firstGiven(element, "file_rename", "file_name"))});
    }
  }
  return entries;
}

}  // namespace tool
