// The part of a manifest's load between its document and its record.
#pragma once

#include "manifest/kiv_nodes.h"

#include <cstdint>

namespace jexxml {

// Builds the tree over `master.document`. True when a record is to be populated from it; else after a message, "The
// file map is far larger than its document" where the paths of its roots would take more than `memoryLeft` bytes.
bool buildWithinLimit(KivMaster& master, std::uint64_t memoryLeft);

}  // namespace jexxml
