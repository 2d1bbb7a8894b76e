// Writes the manifest tree as text to the standard error stream, for diagnosis.
#pragma once

#include "manifest/kiv_nodes.h"

namespace jexxml {

// Writes one line for each element below the root element, between two banners. A line has a number sign for each
// level, the name of the element, and its attributes, for example:
//
//   ####data: dir_name=lib file_name=util dir_rename=lib2 file_rename=
//
// Returns true. Returns false and writes nothing if the root is null. REQUIRES: the document still exists.
bool dumpKivMaster(KivMaster& master);

}  // namespace jexxml
