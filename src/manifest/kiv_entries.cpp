#include "manifest/kiv_entries.h"

namespace jexxml {
namespace {

// Composes files. Its strings reuse their memory for the next file.
class FileComposer {
 public:
  KivFile compose(const std::string& rootPath, const KivFmDataNode& node) {
    node.dirName.readText(dirName);
    node.fileName.readText(fileName);
    KivFile file;
    file.source = joined(rootPath, dirName, fileName);
    const std::string& targetDir = restoredName(node.dirRename, node.dirName, dirName, dirRename);
    file.target = joined(targetDir, restoredName(node.fileRename, node.fileName, fileName, fileRename));
    return file;
  }

 private:
  // The rename if it is not empty, else the name. An empty name is read again, to report an unset attribute again.
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

void composeFiles(KivFmNode& filemap, const KivEntryActions& actions) {
  FileComposer composer;
  std::vector<KivFile> files;
  for (auto& root : filemap.filemapRootNodeList) {
    const std::string& rootPath = root.path.getText();
    files.clear();
    files.reserve(root.filemapDataNodeList.nodes.size());
    for (const KivFmDataNode& node : root.filemapDataNodeList) {
      files.push_back(composer.compose(rootPath, node));
    }
    actions.files(root, files);
  }
}

}  // namespace

void forEachEntry(const KivMaster& master, const KivEntryActions& actions) {
  if (master.root == nullptr) {
    return;
  }
  for (auto& kiv : master.root->kivNodeList) {
    for (auto& rootMacro : kiv.rootMacroNodeList) {
      for (auto& item : rootMacro.rootMacroDataNodeList) {
        const std::string& name = item.name.getText();
        actions.rootMacro(item.domNode, name, item.abspath.getText());
      }
    }
    for (auto& filemap : kiv.filemapNodeList) {
      composeFiles(filemap, actions);
    }
    for (auto& varnixPath : kiv.varnixPathNodeList) {
      for (auto& item : varnixPath.varnixPathDataNodeList) {
        std::string path;
        item.path.readText(path);
        actions.searchPath(item.domNode, std::move(path));
      }
    }
  }
}

}  // namespace jexxml
