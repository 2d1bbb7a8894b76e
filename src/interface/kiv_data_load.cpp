#include "interface/document_load.h"
#include "manifest/populate_kiv_data.h"

#include <qzjexxml/qzjexxml.h>

#include <memory>

namespace jexxml {
namespace {

void loadManifest(const char* fileName, KIVData& data) {
  const DocumentLoad load(fileName);
  if (load.document() == nullptr) {
    return;
  }
  KivMaster master{load.document(), nullptr};
  if (buildKivMaster(master)) {
    populateKivData(master, data);
  }
}

}  // namespace
}  // namespace jexxml

int InitKIVData(const char* fileName, KIVData** handle) {
  if (*handle != nullptr) {
    return 0;
  }
  auto data = std::make_unique<KIVData>();
  jexxml::loadManifest(fileName, *data);
  *handle = data.release();
  return 1;
}

int TermKIVData(KIVData** handle) {
  delete *handle;
  *handle = nullptr;
  return 1;
}
