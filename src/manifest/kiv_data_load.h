// The step of a load between the document and the record.
#pragma once

#include "manifest/kiv_nodes.h"

#include <cstdint>

namespace jexxml {

// Builds the tree over `master.document`. Returns true if the record is to be populated from the tree. If the root
// paths in the record would take more than `memoryLeft` bytes, writes "The file map is far larger than its document"
// and returns false.
bool buildWithinLimit(KivMaster& master, std::uint64_t memoryLeft);

}  // namespace jexxml
