#include "tree/xml_common_strings.h"

namespace jexxml {

XmlCommonStrings::XmlCommonStrings() {
  for (std::size_t i = 0; i < strings.size(); ++i) {
    strings[i].reset(lcp_to_utf16(xmlNames[i], -1));
  }
}

}  // namespace jexxml
