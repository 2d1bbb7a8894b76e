#include "manifest/populate_kiv_data.h"

#include "manifest/kiv_entries.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jexxml {

// Adds the files in the order of their sources, so that each is inserted after the previous one (bench: "load
// unsorted"). All sources begin with the path of the root, which is not compared. The sort is stable, so the last of
// several files with the same source is used.
static void addFiles(std::vector<KivFile>& files, std::size_t rootLength, KIVData& data) {
  const auto belowRoot = [rootLength](const KivFile& file) { return std::string_view(file.source).substr(rootLength); };
  if (!std::ranges::is_sorted(files, {}, belowRoot)) {
    std::ranges::stable_sort(files, {}, belowRoot);
  }
  auto place = data.fileMap.end();
  for (KivFile& file : files) {
    place = data.fileMap.try_emplace(place, std::move(file.source));
    FileMapEntry& entry = place->second;
    entry.target = std::move(file.target);
    entry.holder.isDefault = false;
    entry.holder.set(nullptr, false);
  }
}

std::uint64_t rootPathText(const KivMaster& master) {
  std::uint64_t text = 0;
  if (master.root != nullptr) {
    for (auto& kiv : master.root->kivNodeList) {
      for (auto& filemap : kiv.filemapNodeList) {
        for (auto& root : filemap.filemapRootNodeList) {
          if (root.path.value != nullptr) {
            text += std::uint64_t{root.filemapDataNodeList.nodes.size()} * root.path.getText().size();
          }
        }
      }
    }
  }
  return text;
}

// Releases the nodes of a root before its files enter the record, which then uses the memory of the nodes (bench: "peak
// of a load").
bool populateKivData(const KivMaster& master, KIVData& data) {
  forEachEntry(master, {
                           .rootMacro = [&](const DOMNode* /*element*/, const std::string& name,
                                            const std::string& path) { data.rootMacros[name] = path; },
                           .files =
                               [&](KivFmRootNode& root, std::vector<KivFile>& files) {
                                 root.filemapDataNodeList.release();
                                 addFiles(files, root.path.cachedText().size(), data);
                               },
                           .searchPath = [&](const DOMNode* /*element*/,
                                             std::string path) { data.varnixPath.push_back(std::move(path)); },
                       });
  return true;
}

}  // namespace jexxml
