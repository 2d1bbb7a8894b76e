#include "manifest/populate_kiv_data.h"

#include <xercesc/util/XMLString.hpp>

#include <iterator>
#include <string>
#include <utility>

namespace jexxml {
namespace {

void populateRootMacros(KivRmNode& rootMacro, KIVData& data) {
  for (auto& item : rootMacro.rootMacroDataNodeList) {
    const std::string& name = item.name.getText();
    data.rootMacros[name] = item.abspath.getText();
  }
}

// The rename where there is one, else the name.
const std::string& restoredName(NodeAttribute& rename, NodeAttribute& name) {
  return rename.getText().empty() ? name.getText() : rename.getText();
}

// Both with '/' between them, as they stand.
std::string joined(std::string folder, const std::string& name) {
  folder += '/';
  folder += name;
  return folder;
}

// Asks for the values of a file that is soon to be copied: since the parse they have left the processor's
// cache (bench: "load unsorted").
void prefetchValues(const KivFmDataNode* file) {
  if (file != nullptr) {
    for (const NodeAttribute* attribute : {&file->dirName, &file->fileName, &file->dirRename, &file->fileRename}) {
      __builtin_prefetch(attribute->value);
    }
  }
}

void populateFileMap(KivFmNode& filemap, KIVData& data) {
  constexpr int lookahead = 4;
  auto expectedPlace = data.fileMap.end();  // files mostly stand in order
  for (auto& root : filemap.filemapRootNodeList) {
    const std::string& rootPath = root.path.getText();
    ChildNodeList<KivFmDataNode>& files = root.filemapDataNodeList;
    for (int i = 0; i < files.size(); ++i) {
      prefetchValues(files.at(i + lookahead));
      KivFmDataNode& file = *files.at(i);
      const std::string& dirName = file.dirName.getText();
      const std::string& fileName = file.fileName.getText();
      std::string source = joined(joined(rootPath, dirName), fileName);
      const std::string& targetDir = restoredName(file.dirRename, file.dirName);
      std::string target = joined(targetDir, restoredName(file.fileRename, file.fileName));
      const auto place = data.fileMap.try_emplace(expectedPlace, std::move(source));
      FileMapEntry& entry = place->second;
      entry.target = std::move(target);
      entry.holder.isDefault = false;
      entry.holder.set(nullptr, false);
      expectedPlace = std::next(place);
    }
  }
}

void populateSearchPath(KivVpNode& varnixPath, KIVData& data) {
  for (auto& item : varnixPath.varnixPathDataNodeList) {
    data.varnixPath.push_back(item.path.getText());
  }
}

}  // namespace

std::uint64_t rootPathText(const KivMaster& master) {
  std::uint64_t text = 0;
  if (master.root != nullptr) {
    for (const auto& kiv : master.root->kivNodeList) {
      for (const auto& filemap : kiv.filemapNodeList) {
        for (const auto& root : filemap.filemapRootNodeList) {
          text += std::uint64_t{root.filemapDataNodeList.nodes.size()} * xercesc::XMLString::stringLen(root.path.value);
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
