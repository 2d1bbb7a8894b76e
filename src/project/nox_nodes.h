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

#include "tree/tree_build.h"

namespace jexxml {

// A "data" of a directory: a file that the project depends on.
struct NoxDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute pathd{domNode, commonStrings->get("pathd")};
  NodeAttribute name{domNode, commonStrings->get("name")};

  bool process() override { return domNode != nullptr && fetch(pathd, name); }
};

struct NoxDirectoryNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};
  ChildNodeList<NoxDataNode> dataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && fetch(path) && build(*this, "Error processing Data Node List", dataNodeList);
  }
};

struct NoxDependencyNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxDirectoryNode> directoryNodeList{"directory"};

  bool process() override { return build(*this, "Failed processing Directory Node List", directoryNodeList); }
};

// A "data" of a root macro: a name for an absolute path.
struct NoxRmDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute abspath{domNode, commonStrings->get("abspath")};
  NodeAttribute name{domNode, commonStrings->get("name")};

  bool process() override { return domNode != nullptr && fetch(abspath, name); }
};

struct NoxRmNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxRmDataNode> rootMacroDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && build(*this, "Error processing rm data nodes", rootMacroDataNodeList);
  }
};

// A "data" of the added paths: a path, and where it is added.
struct NoxApDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};
  NodeAttribute where{domNode, commonStrings->get("where")};

  bool process() override { return domNode != nullptr && fetch(path, where); }
};

struct NoxApNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxApDataNode> addPathDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && build(*this, "Error processing ap data nodes", addPathDataNodeList);
  }
};

struct NoxDevelopmentNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute project{domNode, commonStrings->get("project")};
  NodeAttribute debugLog{domNode, commonStrings->get("debug_log")};
  NodeAttribute debugLevel{domNode, commonStrings->get("debug_level")};
  ChildNodeList<NoxRmNode> rootMacroNodeList{"rootmacro"};
  ChildNodeList<NoxApNode> addPathNodeList{"addpath"};

  bool process() override {
    return domNode != nullptr && fetch(project, debugLog, debugLevel) &&
           build(*this, "Error processing rm nodes", rootMacroNodeList) &&
           build(*this, "Error processing ap nodes", addPathNodeList);
  }
};

// A "data" of an exclusion: a path that is excluded.
struct NoxSecDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};

  bool process() override { return domNode != nullptr && fetch(path); }
};

struct NoxExcludeNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute message{domNode, commonStrings->get("message")};
  ChildNodeList<NoxSecDataNode> secDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && fetch(message) && build(*this, "Error processing sec data nodes", secDataNodeList);
  }
};

struct NoxSecNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxExcludeNode> excludeNodeList{"exclude"};

  bool process() override { return domNode != nullptr && build(*this, "Error processing exc nodes", excludeNodeList); }
};

// A "data" of a path map: the front part of paths, and what replaces it.
struct NoxPmDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute front{domNode, commonStrings->get("front")};
  NodeAttribute replaceBy{domNode, commonStrings->get("replace_by")};

  bool process() override { return domNode != nullptr && fetch(front, replaceBy); }
};

struct NoxPmNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxPmDataNode> pathMapDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && build(*this, "Error processing pm data nodes", pathMapDataNodeList);
  }
};

struct NoxDeploymentNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute application{domNode, commonStrings->get("application")};
  NodeAttribute debugTest{domNode, commonStrings->get("debug_test")};
  ChildNodeList<NoxPmNode> pathMapNodeList{"pathmap"};

  bool process() override {
    return domNode != nullptr && fetch(application, debugTest) &&
           build(*this, "Error processing pm nodes", pathMapNodeList);
  }
};

// The root element, of any name.
struct NoxRootNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute type{domNode, commonStrings->get("type")};
  NodeAttribute version{domNode, commonStrings->get("version")};
  NodeAttribute date{domNode, commonStrings->get("date")};
  NodeAttribute name{domNode, commonStrings->get("name")};
  ChildNodeList<NoxDependencyNode> dependencyNodeList{"dependency"};
  ChildNodeList<NoxDevelopmentNode> developmentNodeList{"development"};
  ChildNodeList<NoxSecNode> securityNodeList{"security"};
  ChildNodeList<NoxDeploymentNode> deploymentNodeList{"deployment"};

  bool process() override {
    return domNode != nullptr && fetch(type, version, date, name) &&
           (!domNode->hasChildNodes() || (build(*this, "Error processing dep nodes", dependencyNodeList) &&
                                          build(*this, "Error processing dev nodes", developmentNodeList) &&
                                          build(*this, "Error processing sec nodes", securityNodeList) &&
                                          build(*this, "Error processing dpl nodes", deploymentNodeList)));
  }
};

using NoxMaster = DocumentTree<NoxRootNode>;

// Builds the project tree over `master.document`; results and messages as for buildTree.
bool buildNoxMaster(NoxMaster& master);

}  // namespace jexxml

#endif  // QZJEXXML_PROJECT_NOX_NODES_H
