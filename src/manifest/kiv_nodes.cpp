#include "manifest/kiv_nodes.h"

namespace jexxml {

bool KivRmDataNode::process() {
  fetch(abspath, name);
  return true;
}

bool KivRmNode::process() {
  return buildList(*this, rootMacroDataNodeList, "Failed to build Root Macro Data Node List");
}

bool KivFmDataNode::process() {
  fetch(dirName, fileName, dirRename, fileRename);
  return true;
}

bool KivFmRootNode::process() {
  fetch(path);
  return buildList(*this, filemapDataNodeList, "Failed to build Filemap Data Node List");
}

bool KivFmNode::process() { return buildList(*this, filemapRootNodeList, "Failed to build Filemap Root Node List"); }

bool KivVpDataNode::process() {
  fetch(path);
  return true;
}

bool KivVpNode::process() {
  return buildList(*this, varnixPathDataNodeList, "Failed to build Varnix Path Data Node List");
}

bool KivNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(application);
  constexpr const char* message = "Failed processing Node Lists";
  return buildList(*this, rootMacroNodeList, message) && buildList(*this, filemapNodeList, message) &&
         buildList(*this, varnixPathNodeList, message);
}

bool KivRootNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(type, version, date, name);
  return !domNode->hasChildNodes() || buildList(*this, kivNodeList, "Error processing kiv nodes");
}

bool buildKivMaster(KivMaster& master) { return buildTree(master); }

}  // namespace jexxml
