#include "project/nox_nodes.h"

namespace jexxml {

bool NoxDataNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(pathd, name);
  return true;
}

bool NoxDirectoryNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(path);
  return buildList(*this, dataNodeList, "Error processing Data Node List");
}

bool NoxDependencyNode::process() {
  return buildList(*this, directoryNodeList, "Failed processing Directory Node List");
}

bool NoxRmDataNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(abspath, name);
  return true;
}

bool NoxRmNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  return buildList(*this, rootMacroDataNodeList, "Error processing rm data nodes");
}

bool NoxApDataNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(path, where);
  return true;
}

bool NoxApNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  return buildList(*this, addPathDataNodeList, "Error processing ap data nodes");
}

bool NoxDevelopmentNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(project, debugLog, debugLevel);
  return buildList(*this, rootMacroNodeList, "Error processing rm nodes") &&
         buildList(*this, addPathNodeList, "Error processing ap nodes");
}

bool NoxSecDataNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(path);
  return true;
}

bool NoxExcludeNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(message);
  return buildList(*this, secDataNodeList, "Error processing sec data nodes");
}

bool NoxSecNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  return buildList(*this, excludeNodeList, "Error processing exc nodes");
}

bool NoxPmDataNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(front, replaceBy);
  return true;
}

bool NoxPmNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  return buildList(*this, pathMapDataNodeList, "Error processing pm data nodes");
}

bool NoxDeploymentNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(application, debugTest);
  return buildList(*this, pathMapNodeList, "Error processing pm nodes");
}

bool NoxRootNode::process() {
  if (domNode == nullptr) {
    return false;
  }
  fetch(type, version, date, name);
  if (!domNode->hasChildNodes()) {
    return true;
  }
  return buildList(*this, dependencyNodeList, "Error processing dep nodes") &&
         buildList(*this, developmentNodeList, "Error processing dev nodes") &&
         buildList(*this, securityNodeList, "Error processing sec nodes") &&
         buildList(*this, deploymentNodeList, "Error processing dpl nodes");
}

bool buildNoxMaster(NoxMaster& master) { return buildTree(master); }

}  // namespace jexxml
