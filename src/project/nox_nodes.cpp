#include "project/nox_nodes.h"

namespace jexxml {

bool buildNoxMaster(NoxMaster& master) { return buildTree(master); }

}  // namespace jexxml
