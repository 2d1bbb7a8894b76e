// Loads a file as a manifest and as a project description. A good file must still load afterwards.
#include "in_memory_file.h"

#include <qzjexxml/qzjexxml.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <string_view>

namespace {

KIVData* loadManifest(const InMemoryFile& file) {
  KIVData* manifest = nullptr;
  if (InitKIVData(file.path().c_str(), &manifest) != 1 || manifest == nullptr) {
    std::abort();
  }
  return manifest;
}

}  // namespace

// Starts Xerces-C once, so that the loads do not have to start and stop it.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  xercesc::XMLPlatformUtils::Initialize();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const InMemoryFile file(bytes, size);
  KIVData* manifest = loadManifest(file);
  TermKIVData(&manifest);
  void* project = nullptr;
  if (InitNOXData(file.path().c_str(), &project) != 0 || project != nullptr) {
    std::abort();
  }
  static constexpr std::string_view good = "<r><kiv><varnixpath><data path='p'/></varnixpath></kiv></r>";
  const InMemoryFile goodFile(reinterpret_cast<const std::uint8_t*>(good.data()), good.size());
  manifest = loadManifest(goodFile);
  if (manifest->varnixPath != std::vector<std::string>{"p"}) {
    std::abort();
  }
  TermKIVData(&manifest);
  return 0;
}
