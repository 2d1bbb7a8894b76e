#include "manifest/kiv_nodes.h"

namespace jexxml {

bool buildKivMaster(KivMaster& master) { return buildTree(master); }

}  // namespace jexxml
