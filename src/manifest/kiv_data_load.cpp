#include "document/guard/limits.h"
#include "interface/document_load.h"
#include "manifest/populate_kiv_data.h"

#include <qzjexxml/qzjexxml.h>

#include <iostream>
#include <memory>

int InitKIVData(const char* fileName, KIVData** handle) {
  if (*handle != nullptr) {
    return 0;
  }
  auto data = std::make_unique<KIVData>();
  {
    const jexxml::DocumentLoad load(fileName);
    jexxml::KivMaster master{load.document(), nullptr};
    if (jexxml::buildKivMaster(master)) {
      if (jexxml::rootPathText(master) > jexxml::memoryLimit(load.fileSize()).most) {
        std::cerr << "The file map is far larger than its document" << std::endl;
      } else {
        jexxml::populateKivData(master, *data);
      }
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
