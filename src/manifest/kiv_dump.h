// The manifest tree as text on the standard error stream, for diagnosis.
#pragma once

#include "manifest/kiv_nodes.h"

namespace jexxml {

// Writes a line for each element below the root element, between two banners: a number sign for each level, the
// element's name, and its attributes, such as
//
//   ####data: dir_name=lib file_name=util dir_rename=lib2 file_rename=
//
// Returns true; for a null root false, with nothing written. REQUIRES: the document lives.
bool dumpKivMaster(KivMaster& master);

}  // namespace jexxml
