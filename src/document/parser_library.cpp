#include "document/parser_library.h"

#include "text/lcp_text.h"

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <array>
#include <cstddef>
#include <new>

namespace jexxml {

using xercesc::PanicHandler;
using xercesc::XMLPlatformUtils;

namespace {

bool isHalfStarted = false;
bool isStopping = false;

// Takes the place of Xerces-C's own handler, which ends the program, or of an embedder's, while it lives. A start
// panics only when it is out of memory.
class NoPanic final : public PanicHandler {
 public:
  NoPanic() : before(XMLPlatformUtils::fgUserPanicHandler) { XMLPlatformUtils::fgUserPanicHandler = this; }
  NoPanic(const NoPanic&) = delete;
  NoPanic& operator=(const NoPanic&) = delete;
  ~NoPanic() override { XMLPlatformUtils::fgUserPanicHandler = before; }

  void panic(const PanicReasons /*reason*/) override { throw std::bad_alloc(); }

 private:
  PanicHandler* before;
};

// The default memory of an Xerces-C that this library starts first. Its stop runs destructors that allocate a list of
// ten pointers each, one after another, where an exception would end the program: so there is a reserve for one.
class DefaultMemory final : public xercesc::MemoryManager {
 public:
  void* allocate(XMLSize_t size) override {
    try {
      return ::operator new(size);
    } catch (const std::bad_alloc&) {
      if (isStopping && size <= reserve.size()) {
        return reserve.data();
      }
      throw xercesc::OutOfMemoryException();
    }
  }

  void deallocate(void* memory) override {
    if (memory != reserve.data()) {
      ::operator delete(memory);
    }
  }

  MemoryManager* getExceptionMemoryManager() override { return this; }

 private:
  alignas(std::max_align_t) std::array<std::byte, 10 * sizeof(void*)> reserve;
};

// By direct calls, which the compiler does not leave out as it may leave out a new expression.
void requireMebibyte() { ::operator delete(::operator new (std::size_t{1} << 20U)); }

}  // namespace

ParserLibrary::ParserLibrary() {
  if (isHalfStarted) {
    throw std::bad_alloc();
  }
  requireMebibyte();
  isHalfStarted = true;
  try {
    const NoPanic noPanic;
    if (XMLPlatformUtils::fgMemoryManager == nullptr) {
      XMLPlatformUtils::fgMemoryManager = new DefaultMemory;  // which Xerces-C adopts
    }
    XMLPlatformUtils::Initialize();
  } catch (const xercesc::XMLException& exception) {
    whyNot = LcpText(exception.getMessage()).view();
  } catch (const xercesc::OutOfMemoryException&) {  // which is no std::exception
    throw std::bad_alloc();
  }
  isHalfStarted = false;
}

// Also after a failed start.
ParserLibrary::~ParserLibrary() {
  isStopping = true;
  XMLPlatformUtils::Terminate();
  isStopping = false;
}

}  // namespace jexxml
