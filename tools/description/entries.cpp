#include "description/entries.h"

#include "manifest/kiv_entries.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

namespace tool {

using Kind = Entry::Kind;
using Add = std::function<void(Kind, const xercesc::DOMNode*, std::string key, std::string value)>;

static void addEntries(jexxml::KivMaster& tree, const Add& add) {
  jexxml::forEachEntry(tree, {
                                 .rootMacro = [&](auto... parts) { add(Kind::rootMacro, parts...); },
                                 .files =
                                     [&](jexxml::KivFmRootNode& root, std::vector<jexxml::KivFile>& files) {
                                       auto node = root.filemapDataNodeList.begin();
                                       for (jexxml::KivFile& file : files) {
                                         add(Kind::file, (node++)->domNode, std::move(file.source),
                                             std::move(file.target));
                                       }
                                       root.filemapDataNodeList.release();
                                     },
                                 .searchPath = [&](auto... parts) { add(Kind::searchPath, parts..., ""); },
                             });
}

// A load makes no record of a project description. These entries are for check and explain.
static void addEntries(jexxml::NoxMaster& tree, const Add& add) {
  for (auto& development : tree.root->developmentNodeList) {
    for (auto& rootMacro : development.rootMacroNodeList) {
      for (auto& item : rootMacro.rootMacroDataNodeList) {
        add(Kind::rootMacro, item.domNode, item.name.getText(), item.abspath.getText());
      }
    }
    for (auto& addPath : development.addPathNodeList) {
      for (auto& item : addPath.addPathDataNodeList) {
        add(Kind::searchPath, item.domNode, item.path.getText(), "");
      }
    }
  }
}

// Calls `link` for each pair of consecutive wanted entries with equal keys.
static void linkEqual(std::vector<Entry>& entries, auto isWanted, auto key, auto link) {
  std::vector<Entry*> ordered;
  for (Entry& entry : entries) {
    if (isWanted(entry)) {
      ordered.push_back(&entry);
    }
  }
  const auto keyOf = [&](const Entry* entry) -> decltype(auto) { return key(*entry); };
  if (!std::ranges::is_sorted(ordered, {}, keyOf)) {
    std::ranges::stable_sort(ordered, {}, keyOf);
  }
  for (std::size_t i = 1; i < ordered.size(); ++i) {
    if (keyOf(ordered[i - 1]) == keyOf(ordered[i])) {
      link(*ordered[i - 1], *ordered[i]);
    }
  }
}

// Entries of one kind are in the order of their elements.
std::vector<Entry> entriesOf(Description& description) {
  std::vector<Entry> entries;
  std::array<std::size_t, 3> lastElements = {};  // by kind
  const Add add = [&](Kind kind, const xercesc::DOMNode* node, std::string key, std::string value) {
    std::size_t& i = lastElements.at(static_cast<std::size_t>(kind));
    while (description.elements.at(i).node != node) {
      ++i;
    }
    entries.push_back({&description.elements[i], kind, std::move(key), std::move(value)});
  };
  const auto build = [&](auto tree) {
    if (!description.hasErrors() && description.build(tree)) {
      addEntries(tree, add);
    }
  };
  description.isManifest() ? build(jexxml::KivMaster()) : build(jexxml::NoxMaster());
  if (!std::ranges::is_sorted(entries, {}, &Entry::element)) {
    std::ranges::stable_sort(entries, {}, &Entry::element);
  }
  linkEqual(
      entries, [](const Entry& entry) { return entry.kind != Kind::searchPath; },
      [](const Entry& entry) { return std::tie(entry.kind, entry.key); },
      [](Entry& earlier, Entry& later) {
        later.overrides = &earlier;
        earlier.overriddenBy = &later;
      });
  linkEqual(
      entries, [](const Entry& entry) { return entry.isFile() && entry.overriddenBy == nullptr; },
      [](const Entry& entry) -> const std::string& { return entry.value; },
      [](Entry& earlier, Entry& later) { later.sameTarget = &earlier; });
  return entries;
}

}  // namespace tool
