#include "commands/comparison.h"

#include "commands/record_rows.h"
#include "io/quoting.h"
#include "io/terminal_text.h"
#include "manifest/populate_kiv_data.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace tool {
namespace {

// The attributes that the element has, each after a space: the required ones, the others, or all.
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

// The names of the elements above and of its own, without the root element's, each before a blank.
std::string pathTo(const Element& element, const Description& description) {
  const Element& parent = description.elements[element.parent];
  return &parent == &element ? "" : pathTo(parent, description) + element.kind->name + ' ';
}

std::string ordinal(std::size_t number) {
  const std::size_t last = number % 100 / 10 == 1 ? 0 : number % 10;
  return std::to_string(number) + (last == 1 ? "st" : last == 2 ? "nd" : last == 3 ? "rd" : "th");
}

}  // namespace

std::size_t Comparison::groupOf(const std::string& id, const Group& group) {
  const auto [found, isNew] = groupNumbers.emplace(id, groups.size());
  if (isNew) {
    groups.push_back(group);
  }
  return found->second;
}

void Comparison::addRecord(Rows& rows, const jexxml::KivMaster& tree) {
  jexxml::populateKivData(tree, rows.record);
  for (const Section& section : sections) {
    const bool isOrdered = section.separator == nullptr;
    const std::string name = section.row + std::string(" ");
    const std::size_t group = groupOf(name, {name, isOrdered ? "" : section.separator});
    section.forEach(rows.record, [&](const std::string& key, const std::string& value) {
      rows.rows.push_back({group, key, isOrdered ? std::string_view() : std::string_view(value)});
    });
  }
}

void Comparison::add(Side side, const Description& description, const jexxml::KivMaster& tree) {
  Rows& rows = sides.at(static_cast<std::size_t>(side));
  constexpr auto unknown = static_cast<std::size_t>(-1);
  std::vector<std::size_t> groupsIn(description.elements.size(), unknown);  // by the parent
  for (const Element& element : description.elements) {
    if (description.isManifest() && element.parent != 0) {
      continue;
    }
    const bool isRoot = &element == &description.elements.front();
    const std::string required = attributesOf(element, Which::required);
    std::string others = attributesOf(element, Which::others);
    if (required.empty() && others.empty()) {
      continue;
    }
    std::size_t& group = groupsIn[element.parent];
    if (group == unknown) {
      group = groupIn(description.elements[element.parent], description);
    }
    const std::string& key = rows.texts.emplace_back((isRoot ? "root element" : element.kind->name) + required);
    rows.rows.push_back({group, key, rows.texts.emplace_back(std::move(others))});
  }
  addRecord(rows, tree);
}

std::size_t Comparison::groupIn(const Element& parent, const Description& description) {
  const std::string path = pathTo(parent, description);
  const std::string name = path.substr(0, path.size() - (path.empty() ? 0 : 1));
  return path.empty() ? groupOf("", {})  // the root element
                      : groupOf(name + attributesOf(parent, Which::all),
                                {name + attributesOf(parent, Which::all, true) + ' ', ""});
}

// By their names. Numbers those of one key.
std::vector<const Comparison::Row*> Comparison::ordered(Rows& side) {
  const auto key = [](const Row* row) { return std::tie(row->group, row->key); };
  std::vector<Row*> rows;
  rows.reserve(side.rows.size());
  for (Row& row : side.rows) {
    rows.push_back(&row);
  }
  if (!std::ranges::is_sorted(rows, {}, key)) {
    std::ranges::stable_sort(rows, {}, key);
  }
  for (std::size_t i = 1; i < rows.size(); ++i) {
    rows[i]->number = key(rows[i - 1]) == key(rows[i]) ? rows[i - 1]->number + 1 : 1;
  }
  return {rows.begin(), rows.end()};
}

void Comparison::printLine(char sign, const Row& row, std::string_view newValue) const {
  const Group& group = groups[row.group];
  std::cout << sign << ' ' << escapeForTerminal(group.name) << escapeForTerminal(row.key);
  if (row.number > 1) {
    std::cout << " (" << ordinal(row.number) << ')';
  }
  std::cout << group.separator << escapeForTerminal(row.value);
  if (sign == '!') {
    std::cout << ", now" << group.separator << escapeForTerminal(newValue);
  }
  std::cout << '\n';
}

bool Comparison::print() {
  const std::vector<const Row*> before = ordered(sides[0]);
  const std::vector<const Row*> after = ordered(sides[1]);
  bool differ = false;
  std::vector<const Row*> removed;
  auto old = before.begin();
  for (const Row* row : after) {
    for (; old != before.end() && (*old)->name() < row->name(); ++old) {
      removed.push_back(*old);
    }
    const bool isNew = old == before.end() || (*old)->name() != row->name();
    if (isNew || (*old)->value != row->value) {
      isNew ? printLine('+', *row, {}) : printLine('!', **old, row->value);
      differ = true;
    }
    old += isNew ? 0 : 1;
  }
  removed.insert(removed.end(), old, before.end());
  for (const Row* row : removed) {
    printLine('-', *row, {});
  }
  differ |= !removed.empty();
  if (differ) {
    return true;
  }
  const auto moved = std::ranges::mismatch(sides[0].rows, sides[1].rows, {}, &Row::name, &Row::name).in2;
  if (moved != sides[1].rows.end()) {
    std::cout << "! " << escapeForTerminal(groups[moved->group].name) << escapeForTerminal(moved->key)
              << " in another order\n";
  }
  return moved != sides[1].rows.end();
}

}  // namespace tool
