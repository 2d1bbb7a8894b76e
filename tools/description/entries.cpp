#include "description/entries.h"

#include "io/library_diagnostics.h"
#include "manifest/kiv_data_load.h"
#include "manifest/kiv_entries.h"
#include "project/nox_nodes.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace tool {
namespace {

// The entries of a tree, which come by kinds, with their elements.
class Collector {
 public:
  explicit Collector(const Description& description) {
    for (const Element& element : description.elements) {
      elements.emplace(element.node, &element);
    }
  }

  void addEntriesOf(const jexxml::KivMaster& tree) {
    jexxml::forEachEntry(tree, {
                                   .rootMacro = [this](auto... parts) { add(Entry::Kind::rootMacro, parts...); },
                                   .files =
                                       [this](jexxml::KivFmRootNode& root, std::vector<jexxml::KivFile>& files) {
                                         auto node = root.filemapDataNodeList.begin();
                                         for (jexxml::KivFile& file : files) {
                                           add(Entry::Kind::file, (node++)->domNode, std::move(file.source),
                                               std::move(file.target));
                                         }
                                       },
                                   .searchPath = [this](auto... parts) { add(Entry::Kind::searchPath, parts...); },
                               });
  }

  // A load composes nothing of a project.
  void addEntriesOf(const jexxml::NoxMaster& tree) {
    for (auto& development : tree.root->developmentNodeList) {
      for (auto& rootMacro : development.rootMacroNodeList) {
        for (auto& item : rootMacro.rootMacroDataNodeList) {
          add(Entry::Kind::rootMacro, item.domNode, item.name.getText(), item.abspath.getText());
        }
      }
      for (auto& addPath : development.addPathNodeList) {
        for (auto& item : addPath.addPathDataNodeList) {
          add(Entry::Kind::searchPath, item.domNode, item.path.getText());
        }
      }
    }
  }

  std::vector<Entry> entries;

 private:
  void add(Entry::Kind kind, const xercesc::DOMNode* node, std::string key, std::string value = {}) {
    entries.push_back({elements.at(node), kind, std::move(key), std::move(value)});
  }

  std::unordered_map<const xercesc::DOMNode*, const Element*> elements;
};

// What a load says after the parse is a finding.
template <typename Tree>
std::vector<Entry> collect(Description& description, bool (*build)(Tree&, std::uint64_t memoryLeft)) {
  Tree tree{description.document(), nullptr};
  const std::string diagnostics = diagnosticsOf([&] { build(tree, description.memoryLeft()); });
  if (!diagnostics.empty()) {
    const bool isLimit = diagnostics.starts_with("The file map");
    description.report(isLimit ? Rule::overLimit : Rule::notLoadable, Position{},
                       diagnostics.substr(0, diagnostics.find('\n')));
    return {};
  }
  Collector collector(description);
  collector.addEntriesOf(tree);
  std::ranges::stable_sort(collector.entries, {}, &Entry::element);
  return std::move(collector.entries);
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
  std::vector<Entry> entries =
      description.isManifest() ? collect<jexxml::KivMaster>(description, jexxml::buildWithinLimit)
                               : collect<jexxml::NoxMaster>(description, [](jexxml::NoxMaster& tree, std::uint64_t) {
                                   return jexxml::buildNoxMaster(tree);
                                 });
  findOverridden(entries);
  return entries;
}

}  // namespace tool
