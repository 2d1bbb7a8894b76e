// The vocabulary of archive manifests: one class for each kind of element, children before parents. The attributes are
// in the order in which they are fetched. docs/manifest-format.md describes the format.
#pragma once

#include "tree/tree_build.h"

namespace jexxml {

// A "data" of a "rootmacro": a name for an absolute path.
struct KivRmDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute abspath{domNode, commonStrings->get("abspath")};
  NodeAttribute name{domNode, commonStrings->get("name")};

  bool process() override { return fetch(abspath, name); }
};

// A "rootmacro".
struct KivRmNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<KivRmDataNode> rootMacroDataNodeList{"data"};

  bool process() override { return build(*this, "Failed to build Root Macro Data Node List", rootMacroDataNodeList); }
};

// A "data" of a file map's "root": a file, and the names under which it is restored if they differ.
struct KivFmDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute dirName{domNode, commonStrings->get("dir_name")};
  NodeAttribute fileName{domNode, commonStrings->get("file_name")};
  NodeAttribute dirRename{domNode, commonStrings->get("dir_rename")};
  NodeAttribute fileRename{domNode, commonStrings->get("file_rename")};

  bool process() override { return fetch(dirName, fileName, dirRename, fileRename); }
};

// A "root" of a file map: the path under which its files are found.
struct KivFmRootNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};
  ChildNodeList<KivFmDataNode> filemapDataNodeList{"data"};

  bool process() override {
    return fetch(path) && build(*this, "Failed to build Filemap Data Node List", filemapDataNodeList);
  }
};

// A "filemap".
struct KivFmNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<KivFmRootNode> filemapRootNodeList{"root"};

  bool process() override { return build(*this, "Failed to build Filemap Root Node List", filemapRootNodeList); }
};

// A "data" of a "varnixpath": one entry of the search path.
struct KivVpDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};

  bool process() override { return fetch(path); }
};

// A "varnixpath".
struct KivVpNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<KivVpDataNode> varnixPathDataNodeList{"data"};

  bool process() override { return build(*this, "Failed to build Varnix Path Data Node List", varnixPathDataNodeList); }
};

// A "kiv": one packaged application.
struct KivNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute application{domNode, commonStrings->get("application")};
  ChildNodeList<KivRmNode> rootMacroNodeList{"rootmacro"};
  ChildNodeList<KivFmNode> filemapNodeList{"filemap"};
  ChildNodeList<KivVpNode> varnixPathNodeList{"varnixpath"};

  bool process() override {
    return domNode != nullptr && fetch(application) &&
           build(*this, "Failed processing Node Lists", rootMacroNodeList, filemapNodeList, varnixPathNodeList);
  }
};

// The root element, of any name.
struct KivRootNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute type{domNode, commonStrings->get("type")};
  NodeAttribute version{domNode, commonStrings->get("version")};
  NodeAttribute date{domNode, commonStrings->get("date")};
  NodeAttribute name{domNode, commonStrings->get("name")};
  ChildNodeList<KivNode> kivNodeList{"kiv"};

  bool process() override {
    return domNode != nullptr && fetch(type, version, date, name) &&
           (!domNode->hasChildNodes() || build(*this, "Error processing kiv nodes", kivNodeList));
  }
};

using KivMaster = DocumentTree<KivRootNode>;

// Builds the manifest tree over `master.document`, as buildTree does.
bool buildKivMaster(KivMaster& master);

}  // namespace jexxml
