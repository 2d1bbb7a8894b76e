#include "manifest/populate_kiv_data.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace jexxml {
namespace {

void populateRootMacros(const KivRmNode& rootMacro, KIVData& data) {
  for (const auto& item : rootMacro.rootMacroDataNodeList.nodes) {
    const std::string& name = item->name.getText();
    data.rootMacros[name] = item->abspath.getText();
  }
}

// The rename where there is one, else the name.
const std::string& restoredName(NodeAttribute& rename, NodeAttribute& name) {
  return rename.getText().empty() ? name.getText() : rename.getText();
}

// The parts with '/' between them, as they stand.
std::string joined(std::initializer_list<std::string_view> parts) {
  std::size_t size = parts.size() - 1;
  for (const std::string_view part : parts) {
    size += part.size();
  }
  std::string path;
  path.reserve(size);
  path = *parts.begin();
  for (const std::string_view part : std::span(parts.begin() + 1, parts.end())) {
    path += '/';
    path += part;
  }
  return path;
}

void populateFileMap(const KivFmNode& filemap, KIVData& data) {
  for (const auto& root : filemap.filemapRootNodeList.nodes) {
    const std::string& rootPath = root->path.getText();
    for (const auto& file : root->filemapDataNodeList.nodes) {
      std::string source = joined({rootPath, file->dirName.getText(), file->fileName.getText()});
      std::string target =
          joined({restoredName(file->dirRename, file->dirName), restoredName(file->fileRename, file->fileName)});
      FileMapEntry& entry = data.fileMap[std::move(source)];
      entry.target = std::move(target);
      entry.holder.isDefault = false;
      entry.holder.set(nullptr, false);
    }
  }
}

void populateSearchPath(const KivVpNode& varnixPath, KIVData& data) {
  for (const auto& item : varnixPath.varnixPathDataNodeList.nodes) {
    data.varnixPath.push_back(item->path.getText());
  }
}

}  // namespace

bool populateKivData(const KivMaster& master, KIVData& data) {
  if (master.root == nullptr) {
    return true;
  }
  for (const auto& kiv : master.root->kivNodeList.nodes) {
    for (const auto& rootMacro : kiv->rootMacroNodeList.nodes) {
      populateRootMacros(*rootMacro, data);
    }
    for (const auto& filemap : kiv->filemapNodeList.nodes) {
      populateFileMap(*filemap, data);
    }
    for (const auto& varnixPath : kiv->varnixPathNodeList.nodes) {
      populateSearchPath(*varnixPath, data);
    }
  }
  return true;
}

}  // namespace jexxml
