// A document parsed with the library's settings, for tests of what is built over a DOM.
#pragma once

#include "document/parse_document.h"
#include "tree/dom_navigation.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <string>

class ParsedDocument {
 public:
  explicit ParsedDocument(const std::string& text) {
    xercesc::XMLPlatformUtils::Initialize();
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "JexXml");
    document = jexxml::parseDocument(source, text.size());
  }
  ParsedDocument(const ParsedDocument&) = delete;
  ParsedDocument& operator=(const ParsedDocument&) = delete;
  ~ParsedDocument() {
    jexxml::gParser.reset();
    jexxml::gErrorReporter.reset();
    xercesc::XMLPlatformUtils::Terminate();
  }

  jexxml::DOMNode* root() const { return jexxml::firstElementChild(*document); }

  jexxml::DOMNode* document = nullptr;
};
