// The entries of a manifest tree, from which the record is made.
#pragma once

#include "manifest/kiv_nodes.h"

#include <functional>
#include <string>
#include <vector>

namespace jexxml {

struct KivFile {
  std::string source;
  std::string target;
};

// Called for the entries, with the elements that define them.
struct KivEntryActions {
  std::function<void(const DOMNode* element, const std::string& name, const std::string& path)> rootMacro;

  // Called once for each root, with one file for each node of its list. May move the files, and release the nodes.
  std::function<void(KivFmRootNode& root, std::vector<KivFile>& files)> files;

  std::function<void(const DOMNode* element, std::string path)> searchPath;
};

// Composes the root macros, files and search path of each "kiv" element and calls the actions for them, each kind in
// document order. Does nothing if the root is null. REQUIRES: the document still exists.
void forEachEntry(const KivMaster& master, const KivEntryActions& actions);

}  // namespace jexxml
