#include "parser_library.h"

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <new>

namespace tool {

ParserLibrary::ParserLibrary() {
  try {
    xercesc::XMLPlatformUtils::Initialize();
    started = true;
  } catch (const xercesc::OutOfMemoryException&) {  // which is no std::exception
    throw std::bad_alloc();
  } catch (const xercesc::XMLException&) {
  }
}

ParserLibrary::~ParserLibrary() {
  if (started) {
    xercesc::XMLPlatformUtils::Terminate();
  }
}

}  // namespace tool
