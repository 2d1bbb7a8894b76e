// Copying a manifest tree into the record that is handed to callers.
#pragma once

#include "manifest/kiv_nodes.h"

#include <qzjexxml/kiv_data.h>

#include <cstdint>

namespace jexxml {

// Bytes of the paths of the file map's roots as they stand in the record: each once for each of its files. Nothing else
// in the record is larger than what the document was charged for it.
std::uint64_t rootPathText(const KivMaster& master);

// Adds the tree's root macros, file map and search path to `data`, each "kiv" element's before the
// next one's, so that the document's last entry counts where keys agree. A null root adds nothing.
// The nodes of files are released on the way. Returns true. REQUIRES: the document lives.
bool populateKivData(const KivMaster& master, KIVData& data);

}  // namespace jexxml
