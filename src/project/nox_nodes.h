// The project description's vocabulary: one class for each kind of element, parents after their children.
//
//   doc_root  type version date name      (the root element's name is not tested)
//     dependency
//       directory  path
//         data  pathd name
//     development  project debug_log debug_level
//       rootmacro
//         data  abspath name
//       addpath
//         data  path where
//     security
//       exclude  message
//         data  path
//     deployment  application debug_test
//       pathmap
//         data  front replace_by
//
// An element is recognised at its place only. Everything else is stepped over, no attribute is
// required, and no value is tested.
#ifndef QZJEXXML_PROJECT_NOX_NODES_H
#define QZJEXXML_PROJECT_NOX_NODES_H

#include "xml/tree_build.h"

namespace jexxml {

// A file in a directory that the project depends on.
struct NoxDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  NoxDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute pathd{domNode, commonStrings->get("pathd")};
  NodeAttribute name{domNode, commonStrings->get("name")};
};

struct NoxDirectoryNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "directory";

  NoxDirectoryNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute path{domNode, commonStrings->get("path")};
  ChildNodeList<NoxDataNode> dataNodeList;
};

struct NoxDependencyNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "dependency";

  NoxDependencyNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<NoxDirectoryNode> directoryNodeList;
};

// A root macro: a name for an absolute path.
struct NoxRmDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  NoxRmDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute abspath{domNode, commonStrings->get("abspath")};
  NodeAttribute name{domNode, commonStrings->get("name")};
};

struct NoxRmNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "rootmacro";

  NoxRmNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<NoxRmDataNode> rootMacroDataNodeList;
};

// An added path, and where it is added.
struct NoxApDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  NoxApDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute path{domNode, commonStrings->get("path")};
  NodeAttribute where{domNode, commonStrings->get("where")};
};

struct NoxApNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "addpath";

  NoxApNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<NoxApDataNode> addPathDataNodeList;
};

struct NoxDevelopmentNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "development";

  NoxDevelopmentNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute project{domNode, commonStrings->get("project")};
  NodeAttribute debugLog{domNode, commonStrings->get("debug_log")};
  NodeAttribute debugLevel{domNode, commonStrings->get("debug_level")};
  ChildNodeList<NoxRmNode> rootMacroNodeList;
  ChildNodeList<NoxApNode> addPathNodeList;
};

// A path that is excluded.
struct NoxSecDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  NoxSecDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute path{domNode, commonStrings->get("path")};
};

struct NoxExcludeNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "exclude";

  NoxExcludeNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute message{domNode, commonStrings->get("message")};
  ChildNodeList<NoxSecDataNode> secDataNodeList;
};

struct NoxSecNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "security";

  NoxSecNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<NoxExcludeNode> excludeNodeList;
};

// A front part of paths, and what replaces it.
struct NoxPmDataNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "data";

  NoxPmDataNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute front{domNode, commonStrings->get("front")};
  NodeAttribute replaceBy{domNode, commonStrings->get("replace_by")};
};

struct NoxPmNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "pathmap";

  NoxPmNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  ChildNodeList<NoxPmDataNode> pathMapDataNodeList;
};

struct NoxDeploymentNode final : NoxXmlNodeInterface {
  static constexpr const char* elementName = "deployment";

  NoxDeploymentNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute application{domNode, commonStrings->get("application")};
  NodeAttribute debugTest{domNode, commonStrings->get("debug_test")};
  ChildNodeList<NoxPmNode> pathMapNodeList;
};

struct NoxRootNode final : NoxXmlNodeInterface {
  NoxRootNode(DOMNode* element, const XmlCommonStrings* strings) : domNode(element), commonStrings(strings) {}
  bool process() override;

  DOMNode* domNode;
  const XmlCommonStrings* commonStrings;
  NodeAttribute type{domNode, commonStrings->get("type")};
  NodeAttribute version{domNode, commonStrings->get("version")};
  NodeAttribute date{domNode, commonStrings->get("date")};
  NodeAttribute name{domNode, commonStrings->get("name")};
  ChildNodeList<NoxDependencyNode> dependencyNodeList;
  ChildNodeList<NoxDevelopmentNode> developmentNodeList;
  ChildNodeList<NoxSecNode> securityNodeList;
  ChildNodeList<NoxDeploymentNode> deploymentNodeList;
};

using NoxMaster = DocumentTree<NoxRootNode>;

// Builds the project tree over `master.document`; results and messages as for buildTree.
bool buildNoxMaster(NoxMaster& master);

}  // namespace jexxml

#endif  // QZJEXXML_PROJECT_NOX_NODES_H
