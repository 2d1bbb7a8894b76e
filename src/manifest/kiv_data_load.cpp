#include "manifest/kiv_data_load.h"

#include "document/guard/limits.h"
#include "interface/document_load.h"
#include "manifest/populate_kiv_data.h"

#include <qzjexxml/qzjexxml.h>

#include <iostream>
#include <memory>

namespace jexxml {

bool buildWithinLimit(KivMaster& master, std::uint64_t fileSize) {
  if (!buildKivMaster(master)) {
    return false;
  }
  constexpr std::uint64_t bytesForACharacter = 3;  // in UTF-8, at most
  if (bytesForACharacter * rootPathText(master) > memoryLimit(fileSize).most) {
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
    if (jexxml::buildWithinLimit(master, load.fileSize())) {
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
