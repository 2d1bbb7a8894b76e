#include "interface/document_load.h"
#include "project/nox_nodes.h"

#include <qzjexxml/qzjexxml.h>

int InitNOXData(const char* fileName, void** handle) {
  if (*handle == nullptr) {
    const jexxml::DocumentLoad load(fileName);
    jexxml::NoxMaster master{load.document(), nullptr};
    jexxml::buildNoxMaster(master);
  }
  return 0;
}

int TermNOXData(void** handle) {
  *handle = nullptr;
  return 1;
}
