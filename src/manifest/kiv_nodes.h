// The archive manifest's vocabulary: one class for each kind of element, parents after their children.
//
//   doc_root  type version date name      (the root element's name is not tested)
//     kiv  application
//       rootmacro
//         data  abspath name
//       filemap
//         root  path
//           data  dir_name file_name dir_rename file_rename
//       varnixpath
//         data  path
//
// An element is recognised at its place only. Everything else is stepped over, no attribute is
// required, and no value is tested.
#ifndef QZJEXXML_MANIFEST_KIV_NODES_H
#define QZJEXXML_MANIFEST_KIV_NODES_H

#include "xml/tree_build.h"

namespace jexxml {

// A root macro: a name for an absolute path.
struct KivRmDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  KivRmDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute abspath{domNode, commonStrings->get("abspath")};
  NodeAttribute name{domNode, commonStrings->get("name")};
};

struct KivRmNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "rootmacro";

  KivRmNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<KivRmDataNode> rootMacroDataNodeList;
};

// A file of the file map, with the names under which it is restored where they differ.
struct KivFmDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  KivFmDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute dirName{domNode, commonStrings->get("dir_name")};
  NodeAttribute fileName{domNode, commonStrings->get("file_name")};
  NodeAttribute dirRename{domNode, commonStrings->get("dir_rename")};
  NodeAttribute fileRename{domNode, commonStrings->get("file_rename")};
};

// The path under which files of the file map are found.
struct KivFmRootNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "root";

  KivFmRootNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute path{domNode, commonStrings->get("path")};
  ChildNodeList<KivFmDataNode> filemapDataNodeList;
};

struct KivFmNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "filemap";

  KivFmNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<KivFmRootNode> filemapRootNodeList;
};

// An entry of the search path.
struct KivVpDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  KivVpDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute path{domNode, commonStrings->get("path")};
};

struct KivVpNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "varnixpath";

  KivVpNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<KivVpDataNode> varnixPathDataNodeList;
};

// One packaged application.
struct KivNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "kiv";

  KivNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute application{domNode, commonStrings->get("application")};
  ChildNodeList<KivRmNode> rootMacroNodeList;
  ChildNodeList<KivFmNode> filemapNodeList;
  ChildNodeList<KivVpNode> varnixPathNodeList;
};

struct KivRootNode final : NoxXmlNodeInterface {
  KivRootNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute type{domNode, commonStrings->get("type")};
  NodeAttribute version{domNode, commonStrings->get("version")};
  NodeAttribute date{domNode, commonStrings->get("date")};
  NodeAttribute name{domNode, commonStrings->get("name")};
  ChildNodeList<KivNode> kivNodeList;
};

using KivMaster = DocumentTree<KivRootNode>;

// Builds the manifest tree over `master.document`; results and messages as for buildTree.
bool buildKivMaster(KivMaster& master);

}  // namespace jexxml

#endif  // QZJEXXML_MANIFEST_KIV_NODES_H
