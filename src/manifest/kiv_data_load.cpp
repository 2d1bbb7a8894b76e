#include "manifest/kiv_data_load.h"

#include "interface/document_load.h"
#include "manifest/populate_kiv_data.h"

#include <qzjexxml/qzjexxml.h>

#include <iostream>
#include <memory>

namespace jexxml {

bool buildWithinLimit(KivMaster& master, std::uint64_t memoryLeft) {
  if (!buildKivMaster(master)) {
    return false;
  }
  if (rootPathText(master) > memoryLeft) {
    std::cerr << "The file map is far larger than its document" << std::endl;
    return false;
  }
  return true;
}

}  // namespace jexxml

int InitKIVData(const char* fileName, KIVData** handle) {
  if (*handle != nullptr) {
    return 0;
  }
  auto data = std::make_unique<KIVData>();
  {
    const jexxml::DocumentLoad load(fileName);
    jexxml::KivMaster master{load.document(), nullptr};
    if (jexxml::buildWithinLimit(master, jexxml::DocumentLoad::memoryLeft())) {
      jexxml::populateKivData(master, *data);
    }
  }
  *handle = data.release();
  return 1;
}

int TermKIVData(KIVData** handle) {
  delete *handle;
  *handle = nullptr;
  return 1;
}
