#include "description/entries.h"

#include "io/library_diagnostics.h"
#include "manifest/kiv_data_load.h"
#include "project/nox_nodes.h"

#include <algorithm>
#include <tuple>

namespace tool {
namespace {

std::string join(const std::string& first, const std::string& last) { return first + '/' + last; }

// What a load says after the parse, as a finding.
bool isRefused(Description& description) {
  const std::string diagnostics = diagnosticsOf([&] {
    if (description.isManifest()) {
      jexxml::KivMaster master{description.document(), nullptr};
      jexxml::buildWithinLimit(master, description.memoryLeft());
    } else {
      jexxml::NoxMaster master{description.document(), nullptr};
      jexxml::buildNoxMaster(master);
    }
  });
  if (!diagnostics.empty()) {
    const bool isLimit = diagnostics.starts_with("The file map");
    description.report(isLimit ? Rule::overLimit : Rule::notLoadable, Position{},
                       diagnostics.substr(0, diagnostics.find('\n')));
  }
  return !diagnostics.empty();
}

// As the record has it. Reads the attributes in one pass over those that are there.
Entry fileOf(const Element& element, const std::string& rootPath) {
  const auto [directory, file, newDirectory, newFile] =
      element.values({"dir_name", "file_name", "dir_rename", "file_rename"});
  return {&element, Entry::Kind::file, join(join(rootPath, directory), file),
          join(newDirectory.empty() ? directory : newDirectory, newFile.empty() ? file : newFile)};
}

void findOverridden(std::vector<Entry>& entries) {
  std::vector<Entry*> ordered;
  ordered.reserve(entries.size());
  for (Entry& entry : entries) {
    ordered.push_back(&entry);
  }
  const auto key = [](const Entry* entry) { return std::tie(entry->kind, entry->key); };
  if (!std::ranges::is_sorted(ordered, {}, key)) {
    std::ranges::stable_sort(ordered, {}, key);
  }
  for (std::size_t i = 1; i < ordered.size(); ++i) {
    if (ordered[i]->kind != Entry::Kind::searchPath && key(ordered[i - 1]) == key(ordered[i])) {
      ordered[i]->overrides = ordered[i - 1];
      ordered[i - 1]->overriddenBy = ordered[i];
    }
  }
}

}  // namespace

std::vector<Entry> entriesOf(Description& description) {
  std::vector<Entry> entries;
  if (isRefused(description)) {
    return entries;
  }
  const Element* root = nullptr;
  std::string rootPath;
  for (const Element& element : description.elements) {
    const Element& parent = description.elements[element.parent];
    if (parent.kind->name == "rootmacro") {
      entries.push_back({&element, Entry::Kind::rootMacro, element["name"], element["abspath"]});
    } else if (parent.kind->name == "varnixpath" || parent.kind->name == "addpath") {
      entries.push_back({&element, Entry::Kind::searchPath, element["path"], {}});
    } else if (parent.kind->name == "root") {
      if (&parent != root) {
        root = &parent;
        rootPath = parent["path"];
      }
      entries.push_back(fileOf(element, rootPath));
    }
  }
  findOverridden(entries);
  return entries;
}

}  // namespace tool
