// Copies a manifest tree into the record for the caller.
#pragma once

#include "manifest/kiv_nodes.h"

#include <qzjexxml/kiv_data.h>

#include <cstdint>

namespace jexxml {

// The bytes that the paths of the roots take in the record, where each file repeats the path of its root. The memory
// budget of the document covers everything else in the record.
std::uint64_t rootPathText(const KivMaster& master);

// Adds the root macros, file map and search path of each "kiv" element to `data`, in document order. If several entries
// have the same key, the last one is used. Adds nothing if the root is null. Releases the nodes of the files. Returns
// true. REQUIRES: the document still exists.
bool populateKivData(const KivMaster& master, KIVData& data);

}  // namespace jexxml
