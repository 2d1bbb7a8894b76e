#include "manifest/kiv_dump.h"

#include "xml/dump_line.h"

#include <string>

namespace jexxml {
namespace {

void dumpRootMacro(const KivRmNode& rootMacro) {
  dumpLine("##rootmacro: no of data nodes=" + std::to_string(rootMacro.rootMacroDataNodeList.size()));
  for (const auto& item : rootMacro.rootMacroDataNodeList.nodes) {
    dumpLine({{"###data: name=", item->name}, {" abspath=", item->abspath}});
  }
}

void dumpFilemap(const KivFmNode& filemap) {
  dumpLine("##filemap:");
  for (const auto& root : filemap.filemapRootNodeList.nodes) {
    dumpLine({{"###root: path=", root->path}});
    for (const auto& file : root->filemapDataNodeList.nodes) {
      dumpLine({{"####data: dir_name=", file->dirName},
                {" file_name=", file->fileName},
                {" dir_rename=", file->dirRename},
                {" file_rename=", file->fileRename}});
    }
  }
}

void dumpVarnixPath(const KivVpNode& varnixPath) {
  dumpLine("##varnixpath:");
  for (const auto& item : varnixPath.varnixPathDataNodeList.nodes) {
    dumpLine({{"###data: path=", item->path}});
  }
}

}  // namespace

bool dumpKivMaster(KivMaster& master) {
  if (master.root == nullptr) {
    return false;
  }
  dumpLine("=======================KIV============================");
  for (const auto& kiv : master.root->kivNodeList.nodes) {
    dumpLine({{"#kiv: application=", kiv->application}});
    for (const auto& rootMacro : kiv->rootMacroNodeList.nodes) {
      dumpRootMacro(*rootMacro);
    }
    for (const auto& filemap : kiv->filemapNodeList.nodes) {
      dumpFilemap(*filemap);
    }
    for (const auto& varnixPath : kiv->varnixPathNodeList.nodes) {
      dumpVarnixPath(*varnixPath);
    }
  }
  dumpLine("=======================================================");
  return true;
}

}  // namespace jexxml
