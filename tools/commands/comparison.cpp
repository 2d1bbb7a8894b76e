#include "commands/comparison.h"

#include "io/quoting.h"
#include "io/terminal_text.h"

#include <iostream>
#include <string_view>

namespace tool {
namespace {

// The attributes that are given, each behind a blank; those that the element is required to have, or the others, or
// all.
enum class Which { required, others, all };

std::string attributesOf(const Element& element, Which which, bool areCut = false) {
  std::string text;
  for (const AttributeKind& attribute : element.kind->attributes) {
    if (which == Which::all || attribute.required == (which == Which::required)) {
      if (const auto value = element.value(attribute)) {
        text += ' ' + attribute.name + '=' + (areCut ? inQuotes(*value) : '"' + *value + '"');
      }
    }
  }
  return text;
}

// The names of the elements above and of its own, without the root element's, each behind a blank.
std::string pathTo(const Element& element, const Description& description) {
  const Element& parent = description.elements[element.parent];
  return &parent == &element ? "" : pathTo(parent, description) + ' ' + element.kind->name;
}

}  // namespace

Comparison::Side& Comparison::start() {
  if (sides.empty()) {
    parents.emplace("", 0);
    shownParents.emplace_back();
  }
  return sides.emplace_back();
}

Comparison::Name Comparison::add(Side& side, Name name, const std::string& value) {
  const int time = ++side.times[name];
  if (time > 1) {
    name.own += ", time " + std::to_string(time);
  }
  side.values.emplace(name, value);
  return name;
}

void Comparison::add(const KIVData& record) {
  Side& side = start();
  ordered = "search path";
  for (const auto& [name, path] : record.rootMacros) {
    add(side, {0, " root macro " + name}, " = " + path);
  }
  for (const auto& [source, entry] : record.fileMap) {
    add(side, {0, " file " + source}, " -> " + entry.target);
  }
  for (const std::string& path : record.varnixPath) {
    side.order.push_back(add(side, {0, " search path " + path}, ""));
  }
}

void Comparison::add(const Description& description) {
  Side& side = start();
  ordered = "elements";
  std::vector<std::size_t> numbers(description.elements.size(), 0);  // of the elements as parents; 0 where not known
  for (const Element& element : description.elements) {
    const bool isRoot = &element == &description.elements.front();
    const std::string required = attributesOf(element, Which::required);
    const std::string others = attributesOf(element, Which::others);
    if (required.empty() && others.empty()) {
      continue;
    }
    std::size_t& number = numbers[element.parent];
    if (number == 0 && !isRoot) {
      number = numberOf(description.elements[element.parent], description);
    }
    side.order.push_back(
        add(side, {isRoot ? 0 : number, (isRoot ? " root element" : ' ' + element.kind->name) + required}, others));
  }
}

std::size_t Comparison::numberOf(const Element& parent, const Description& description) {
  const std::string path = pathTo(parent, description);
  if (path.empty()) {  // the root element
    return 0;
  }
  const auto [place, isNew] = parents.emplace(path + attributesOf(parent, Which::all), shownParents.size());
  if (isNew) {
    shownParents.push_back(path + attributesOf(parent, Which::all, true));
  }
  return place->second;
}

void Comparison::printLine(char sign, const Name& name, const std::string& value) const {
  std::cout << sign << shown(shownParents[name.parent] + name.own + value) << '\n';
}

bool Comparison::print() const {
  const auto& before = sides.front().values;
  const auto& after = sides.back().values;
  bool differ = false;
  for (const auto& [name, value] : after) {
    const auto old = before.find(name);
    if (old == before.end()) {
      printLine('+', name, value);
    } else if (old->second != value) {
      printLine('!', name, old->second + ", now" + value);
    }
    differ |= old == before.end() || old->second != value;
  }
  for (const auto& [name, value] : before) {
    if (!after.contains(name)) {
      printLine('-', name, value);
      differ = true;
    }
  }
  if (!differ && sides.front().order != sides.back().order) {
    std::cout << "! " << ordered << " in another order\n";
    differ = true;
  }
  return differ;
}

}  // namespace tool
