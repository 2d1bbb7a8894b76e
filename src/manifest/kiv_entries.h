// The entries of a manifest tree: what the record has of it.
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

// What is done with the entries, and with the elements that they come from.
struct KivEntryActions {
  std::function<void(const DOMNode* element, const std::string& name, const std::string& path)> rootMacro;

  // The files of a root, one for each node of its list. The action may take the files, and release the nodes.
  std::function<void(KivFmRootNode& root, std::vector<KivFile>& files)> files;

  std::function<void(const DOMNode* element, std::string path)> searchPath;
};

// Composes the tree's root macros, files and search path: each "kiv" element's before the next one's, and each kind in
// the document's order. A null root has none. REQUIRES: the document lives.
void forEachEntry(const KivMaster& master, const KivEntryActions& actions);

}  // namespace jexxml
