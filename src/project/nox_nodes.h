// The vocabulary of project descriptions: one class for each kind of element, children before parents. The attributes
// are in the order in which they are fetched. docs/project-format.md describes the format.
#pragma once

#include "tree/tree_build.h"

namespace jexxml {

// A "data" of a "directory": a file that the project depends on.
struct NoxDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute pathd{domNode, commonStrings->get("pathd")};
  NodeAttribute name{domNode, commonStrings->get("name")};

  bool process() override { return domNode != nullptr && fetch(pathd, name); }
};

// A "directory" of a "dependency".
struct NoxDirectoryNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};
  ChildNodeList<NoxDataNode> dataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && fetch(path) && build(*this, "Error processing Data Node List", dataNodeList);
  }
};

// A "dependency".
struct NoxDependencyNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxDirectoryNode> directoryNodeList{"directory"};

  bool process() override { return build(*this, "Failed processing Directory Node List", directoryNodeList); }
};

// A "data" of a "rootmacro": a name for an absolute path.
struct NoxRmDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute abspath{domNode, commonStrings->get("abspath")};
  NodeAttribute name{domNode, commonStrings->get("name")};

  bool process() override { return domNode != nullptr && fetch(abspath, name); }
};

// A "rootmacro" of a "development".
struct NoxRmNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxRmDataNode> rootMacroDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && build(*this, "Error processing rm data nodes", rootMacroDataNodeList);
  }
};

// A "data" of an "addpath": a path, and where it is added.
struct NoxApDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};
  NodeAttribute where{domNode, commonStrings->get("where")};

  bool process() override { return domNode != nullptr && fetch(path, where); }
};

// An "addpath" of a "development".
struct NoxApNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxApDataNode> addPathDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && build(*this, "Error processing ap data nodes", addPathDataNodeList);
  }
};

// A "development".
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

// A "data" of an "exclude": a path that is excluded.
struct NoxSecDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute path{domNode, commonStrings->get("path")};

  bool process() override { return domNode != nullptr && fetch(path); }
};

// An "exclude" of a "security".
struct NoxExcludeNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute message{domNode, commonStrings->get("message")};
  ChildNodeList<NoxSecDataNode> secDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && fetch(message) && build(*this, "Error processing sec data nodes", secDataNodeList);
  }
};

// A "security".
struct NoxSecNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxExcludeNode> excludeNodeList{"exclude"};

  bool process() override { return domNode != nullptr && build(*this, "Error processing exc nodes", excludeNodeList); }
};

// A "data" of a "pathmap": the front part of paths, and what replaces it.
struct NoxPmDataNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  NodeAttribute front{domNode, commonStrings->get("front")};
  NodeAttribute replaceBy{domNode, commonStrings->get("replace_by")};

  bool process() override { return domNode != nullptr && fetch(front, replaceBy); }
};

// A "pathmap" of a "deployment".
struct NoxPmNode final : NoxXmlNodeInterface {
  using NoxXmlNodeInterface::NoxXmlNodeInterface;

  ChildNodeList<NoxPmDataNode> pathMapDataNodeList{"data"};

  bool process() override {
    return domNode != nullptr && build(*this, "Error processing pm data nodes", pathMapDataNodeList);
  }
};

// A "deployment".
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

// Builds the project tree over `master.document`, as buildTree does.
bool buildNoxMaster(NoxMaster& master);

}  // namespace jexxml
