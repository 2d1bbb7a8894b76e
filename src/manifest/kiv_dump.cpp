#include "manifest/kiv_dump.h"

#include "tree/dump_line.h"

#include <string>

namespace jexxml {

static void dumpRootMacro(KivRmNode& rootMacro) {
  dumpLine("##rootmacro: no of data nodes=" + std::to_string(rootMacro.rootMacroDataNodeList.size()));
  for (auto& item : rootMacro.rootMacroDataNodeList) {
    dumpLine({{"###data: name=", item.name}, {" abspath=", item.abspath}});
  }
}

static void dumpFilemap(KivFmNode& filemap) {
  dumpLine("##filemap:");
  for (auto& root : filemap.filemapRootNodeList) {
    dumpLine({{"###root: path=", root.path}});
    for (auto& file : root.filemapDataNodeList) {
      dumpLine({{"####data: dir_name=", file.dirName},
                {" file_name=", file.fileName},
                {" dir_rename=", file.dirRename},
                {" file_rename=", file.fileRename}});
    }
  }
}

static void dumpVarnixPath(KivVpNode& varnixPath) {
  dumpLine("##varnixpath:");
  for (auto& item : varnixPath.varnixPathDataNodeList) {
    dumpLine({{"###data: path=", item.path}});
  }
}

bool dumpKivMaster(KivMaster& master) {
  if (master.root == nullptr) {
    return false;
  }
  dumpLine("=======================KIV============================");
  for (auto& kiv : master.root->kivNodeList) {
    dumpLine({{"#kiv: application=", kiv.application}});
    for (auto& rootMacro : kiv.rootMacroNodeList) {
      dumpRootMacro(rootMacro);
    }
    for (auto& filemap : kiv.filemapNodeList) {
      dumpFilemap(filemap);
    }
    for (auto& varnixPath : kiv.varnixPathNodeList) {
      dumpVarnixPath(varnixPath);
    }
  }
  dumpLine("=======================================================");
  return true;
}

}  // namespace jexxml
