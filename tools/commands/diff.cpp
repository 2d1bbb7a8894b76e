// qzjexxml diff: what differs between two manifests, or two project descriptions.
#include "commands/command_line.h"
#include "commands/record_rows.h"
#include "commands/running.h"
#include "description/description.h"
#include "io/standard_streams.h"
#include "io/terminal_text.h"
#include "manifest/populate_kiv_data.h"

#include <qzjexxml/kiv_data.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace tool {
namespace {

// The names of the elements above and of its own, without the root element's, each before a blank.
std::string pathTo(const Element& element, const Description& description) {
  const Element& parent = description.elements[element.parent];
  return &parent == &element ? "" : pathTo(parent, description) + element.kind->name + ' ';
}

std::string ordinal(std::size_t number) {
  const std::size_t last = number % 100 / 10 == 1 ? 0 : number % 10;
  return std::to_string(number) + (last == 1 ? "st" : last == 2 ? "nd" : last == 3 ? "rd" : "th");
}

// What two descriptions of one kind say, as named values of which one has others than the other.
class Comparison {
 public:
  // Adds the elements of a project, each named by its parent's attributes and those that it is required to have; of a
  // manifest, those whose attributes are not in its record, and the record. A project has no tree.
  void add(std::size_t side, const Description& description, const jexxml::KivMaster& tree);

  // Prints a line for each value that was added (+) or removed (-), or is another (!), or one line when only their
  // order is. Returns whether there is a difference.
  bool print();

 private:
  // What the name of a row begins with, and what stands between its name and its value.
  struct Group {
    std::string name;
    const char* separator = "";
  };

  struct Row {
    auto name() const { return std::tie(group, key, number); }

    std::size_t group;
    std::string_view key;
    std::string_view value;
    std::size_t number = 1;  // among those with this key
  };

  struct Rows {
    KIVData record;  // the rows refer to its texts, or to these
    std::deque<std::string> texts;
    std::vector<Row> rows;
  };

  void addRecord(Rows& rows, const jexxml::KivMaster& tree);
  std::size_t groupOf(const std::string& id, const Group& group);
  std::size_t groupIn(const Element& parent, const Description& description);
  static std::vector<const Row*> ordered(Rows& side);
  void printLine(char sign, const Row& row, std::string_view newValue) const;

  std::array<Rows, 2> sides;
  std::map<std::string, std::size_t> groupNumbers;
  std::vector<Group> groups;
};

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

void Comparison::add(std::size_t side, const Description& description, const jexxml::KivMaster& tree) {
  Rows& rows = sides.at(side);
  constexpr auto unknown = static_cast<std::size_t>(-1);
  std::vector<std::size_t> groupsIn(description.elements.size(), unknown);  // by the parent
  for (const Element& element : description.elements) {
    if (description.isManifest() && element.parent != 0) {
      continue;
    }
    const bool isRoot = &element == &description.elements.front();
    const std::string required = element.attributesText(Element::Which::required);
    std::string others = element.attributesText(Element::Which::others);
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
                      : groupOf(name + parent.attributesText(Element::Which::all),
                                {name + parent.attributesText(Element::Which::all, true) + ' ', ""});
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
  bool isSame = true;
  std::vector<const Row*> removed;
  auto old = before.begin();
  for (const Row* row : after) {
    for (; old != before.end() && (*old)->name() < row->name(); ++old) {
      removed.push_back(*old);
    }
    const bool isNew = old == before.end() || (*old)->name() != row->name();
    if (isNew || (*old)->value != row->value) {
      isNew ? printLine('+', *row, {}) : printLine('!', **old, row->value);
      isSame = false;
    }
    old += isNew ? 0 : 1;
  }
  removed.insert(removed.end(), old, before.end());
  for (const Row* row : removed) {
    printLine('-', *row, {});
  }
  if (!isSame || !removed.empty()) {
    return true;
  }
  const auto moved = std::ranges::mismatch(sides[0].rows, sides[1].rows, {}, &Row::name, &Row::name).in2;
  if (moved != sides[1].rows.end()) {
    std::cout << "! " << escapeForTerminal(groups[moved->group].name) << escapeForTerminal(moved->key)
              << " in another order\n";
  }
  return moved != sides[1].rows.end();
}

// Prints a line for each value that was added (+) or removed (-), or is another (!). Returns differ when there is one,
// and wrongUsage, as diff(1) does, when a file does not load or the two are of different kinds.
ExitStatus diff(const Options& options) {
  Comparison comparison;
  std::vector<bool> kinds;  // of the files that show theirs: whether it is a manifest
  std::size_t side = 0;
  const ExitStatus status = forEachFile(options.files, [&](const std::string& file) {
    Description description(file);
    jexxml::KivMaster tree;
    const bool isProject = description.showsKind && !description.isManifest();
    if (description.hasErrors() || (!isProject && !description.build(tree))) {
      return description.reportUnloadable();
    }
    if (description.showsKind) {
      kinds.push_back(!isProject);
    }
    comparison.add(side++, description, tree);
    return allGood;
  });
  if (status != allGood) {
    return wrongUsage;
  }
  if (kinds.size() == 2 && kinds[0] != kinds[1]) {
    report(options.files[1], kinds[0] ? "is a project description, and the other file a manifest"
                                      : "is a manifest, and the other file a project description");
    return wrongUsage;
  }
  return finishOutput(comparison.print() ? differ : allGood);
}

ExitStatus runDiff(const Options& options) {
  try {
    return runWithParser(options, diff);
  } catch (const Failure& failure) {
    report(failure.subject, failure.what());
    return wrongUsage;
  }
}

}  // namespace

void addDiff(CommandLine& line) {
  line.add("diff", "Compare two manifests, or two project descriptions", "diff old.xml new.xml", runDiff)
      .file("OLD", "The description before")
      .file("NEW", "The description after")
      .output();
}

}  // namespace tool
