#include "project/nox_dump.h"

#include "tree/dump_line.h"

namespace jexxml {

static void dumpDependency(NoxDependencyNode& dependency) {
  dumpLine("#dependency:");
  for (auto& directory : dependency.directoryNodeList) {
    dumpLine({{"##directory: path=", directory.path}});
    for (auto& item : directory.dataNodeList) {
      dumpLine({{"###data: pathd=", item.pathd}, {" name=", item.name}});
    }
  }
}

static void dumpDevelopment(NoxDevelopmentNode& development) {
  dumpLine({{"#development: project=", development.project},
            {" debug_log=", development.debugLog},
            {" debug_level=", development.debugLevel}});
  for (auto& rootMacro : development.rootMacroNodeList) {
    dumpLine("##rootmacro:");
    for (auto& item : rootMacro.rootMacroDataNodeList) {
      dumpLine({{"###rmdata: name=", item.name}, {" abspath=", item.abspath}});
    }
  }
  for (auto& addPath : development.addPathNodeList) {
    dumpLine("##addpath:");
    for (auto& item : addPath.addPathDataNodeList) {
      dumpLine({{"###apdata: path=", item.path}, {" where=", item.where}});
    }
  }
}

static void dumpSecurity(NoxSecNode& security) {
  dumpLine("#security:");
  for (auto& exclude : security.excludeNodeList) {
    dumpLine({{"##exclude: message=", exclude.message}});
    for (auto& item : exclude.secDataNodeList) {
      dumpLine({{"###secdata: path=", item.path}});
    }
  }
}

static void dumpDeployment(NoxDeploymentNode& deployment) {
  dumpLine({{"#deployment: application=", deployment.application}, {" debug_test=", deployment.debugTest}});
  for (auto& pathMap : deployment.pathMapNodeList) {
    dumpLine("##pathmap:");
    for (auto& item : pathMap.pathMapDataNodeList) {
      dumpLine({{"###pmdata: front=", item.front}, {" replace_by=", item.replaceBy}});
    }
  }
}

bool dumpNoxMaster(NoxMaster& master) {
  if (master.root == nullptr) {
    return false;
  }
  dumpLine("=================DEPENDENCY======================");
  for (auto& dependency : master.root->dependencyNodeList) {
    dumpDependency(dependency);
  }
  dumpLine("=================================================");
  dumpLine("=================DEVELOPMENT=====================");
  for (auto& development : master.root->developmentNodeList) {
    dumpDevelopment(development);
  }
  dumpLine("===============================================");
  dumpLine("=================SECURITY======================");
  for (auto& security : master.root->securityNodeList) {
    dumpSecurity(security);
  }
  dumpLine("===============================================");
  dumpLine("=================DEPLOYMENT=====================");
  for (auto& deployment : master.root->deploymentNodeList) {
    dumpDeployment(deployment);
  }
  dumpLine("==================================================");
  return true;
}

}  // namespace jexxml
