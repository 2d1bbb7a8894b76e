#include "description/entries.h"

#include "manifest/kiv_entries.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <tuple>
#include <utility>

namespace tool {
namespace {

// The entries of a tree, which come by kinds, with their elements.
class Collector {
 public:
  explicit Collector(const Description& description) : elements(description.elements) {
    entries.reserve(elements.size());
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
                                         root.filemapDataNodeList.release();
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
  // Those of one kind come in the order of their elements.
  void add(Entry::Kind kind, const xercesc::DOMNode* node, std::string key, std::string value = {}) {
    std::size_t& i = places.at(static_cast<std::size_t>(kind));
    while (elements.at(i).node != node) {
      ++i;
    }
    entries.push_back({&elements[i], kind, std::move(key), std::move(value)});
  }

  const std::vector<Element>& elements;
  std::array<std::size_t, 3> places = {};  // of the last entry's element, by kind
};

template <typename Tree>
std::vector<Entry> collect(Description& description) {
  Tree tree;
  if (description.hasErrors() || !description.build(tree)) {
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
      description.isManifest() ? collect<jexxml::KivMaster>(description) : collect<jexxml::NoxMaster>(description);
  findOverridden(entries);
  return entries;
}

}  // namespace tool
