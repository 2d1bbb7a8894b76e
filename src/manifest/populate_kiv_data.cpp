#include "manifest/populate_kiv_data.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jexxml {
namespace {

void populateRootMacros(KivRmNode& rootMacro, KIVData& data) {
  for (auto& item : rootMacro.rootMacroDataNodeList) {
    const std::string& name = item.name.getText();
    data.rootMacros[name] = item.abspath.getText();
  }
}

// A file of the file map, to be added to the record.
struct File {
  std::string source;
  std::string target;
};

// Composes files. Its texts keep their room from one file to the next.
class FileReader {
 public:
  File read(const std::string& rootPath, const KivFmDataNode& node) {
    node.dirName.readText(dirName);
    node.fileName.readText(fileName);
    File file;
    file.source = joined(rootPath, dirName, fileName);
    const std::string& targetDir = restoredName(node.dirRename, node.dirName, dirName, dirRename);
    file.target = joined(targetDir, restoredName(node.fileRename, node.fileName, fileName, fileRename));
    return file;
  }

 private:
  // The rename where there is one, else the name. An empty text is never kept, so that it is read once more.
  static const std::string& restoredName(const NodeAttribute& rename, const NodeAttribute& name, std::string& nameText,
                                         std::string& renameText) {
    rename.readText(renameText);
    if (!renameText.empty()) {
      return renameText;
    }
    if (nameText.empty()) {
      name.readText(nameText);
    }
    return nameText;
  }

  // With '/' between them, as they stand.
  static std::string joined(const std::string& first, const auto&... rest) {
    std::string path;
    path.reserve((first.size() + ... + (1 + rest.size())));
    path = first;
    ((path += '/', path += rest), ...);
    return path;
  }

  std::string dirName;
  std::string fileName;
  std::string dirRename;
  std::string fileRename;
};

// In the order of the sources, which all begin with the root's path, so that each has its place in the map after the
// one before; those with the same source in the document's order, so that the last one counts (bench: "load unsorted").
void addFiles(std::vector<File>& files, std::size_t rootLength, KIVData& data) {
  const auto belowRoot = [rootLength](const File& file) { return std::string_view(file.source).substr(rootLength); };
  if (!std::ranges::is_sorted(files, {}, belowRoot)) {
    std::ranges::stable_sort(files, {}, belowRoot);
  }
  auto place = data.fileMap.end();
  for (File& file : files) {
    place = data.fileMap.try_emplace(place, std::move(file.source));
    FileMapEntry& entry = place->second;
    entry.target = std::move(file.target);
    entry.holder.isDefault = false;
    entry.holder.set(nullptr, false);
  }
}

// A root's nodes give way before its files enter the record, which so grows into the memory that the tree had (bench:
// "peak of a load").
void populateFileMap(KivFmNode& filemap, KIVData& data) {
  FileReader reader;
  std::vector<File> files;
  for (auto& root : filemap.filemapRootNodeList) {
    const std::string& rootPath = root.path.getText();
    ChildNodeList<KivFmDataNode>& nodes = root.filemapDataNodeList;
    files.clear();
    files.reserve(nodes.nodes.size());
    for (const KivFmDataNode& node : nodes) {
      files.push_back(reader.read(rootPath, node));
    }
    nodes.release();
    addFiles(files, rootPath.size(), data);
  }
}

void populateSearchPath(KivVpNode& varnixPath, KIVData& data) {
  for (auto& item : varnixPath.varnixPathDataNodeList) {
    item.path.readText(data.varnixPath.emplace_back());
  }
}

}  // namespace

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

bool populateKivData(const KivMaster& master, KIVData& data) {
  if (master.root == nullptr) {
    return true;
  }
  for (auto& kiv : master.root->kivNodeList) {
    for (auto& rootMacro : kiv.rootMacroNodeList) {
      populateRootMacros(rootMacro, data);
    }
    for (auto& filemap : kiv.filemapNodeList) {
      populateFileMap(filemap, data);
    }
    for (auto& varnixPath : kiv.varnixPathNodeList) {
      populateSearchPath(varnixPath, data);
    }
  }
  return true;
}

}  // namespace jexxml
