#include "document/parser_library.h"

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

bool halfStarted = false;

// Takes the place of the parser library's own handler, which ends the program, or of an embedder's, while it lives.
// What a start panics for is want of memory.
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

// The default memory of a parser library that this library starts first. Its stop runs the destructor of a content
// model, which allocates a list of ten pointers, and where an exception would end the program: so there is a reserve
// for that.
class DefaultMemory final : public xercesc::MemoryManager {
 public:
  void* allocate(XMLSize_t size) override {
    try {
      return ::operator new(size);
    } catch (const std::bad_alloc&) {
      if (!isStopping || reserveTaken || size > reserve.size()) {
        throw xercesc::OutOfMemoryException();
      }
    }
    reserveTaken = true;
    return reserve.data();
  }

  void deallocate(void* memory) override {
    if (memory == reserve.data()) {
      reserveTaken = false;
    } else {
      ::operator delete(memory);
    }
  }

  MemoryManager* getExceptionMemoryManager() override { return this; }

  static inline bool isStopping = false;

 private:
  alignas(std::max_align_t) std::array<std::byte, 10 * sizeof(void*)> reserve;
  bool reserveTaken = false;
};

// Throws std::bad_alloc where there is no mebibyte. By direct calls, which the compiler does not leave out as it may
// leave out a new expression.
void checkForRoom() { ::operator delete(::operator new (std::size_t{1} << 20U)); }

}  // namespace

void initializeParserLibrary() {
  if (halfStarted) {
    throw std::bad_alloc();
  }
  checkForRoom();
  halfStarted = true;
  try {
    const NoPanic noPanic;
    if (XMLPlatformUtils::fgMemoryManager == nullptr) {
      XMLPlatformUtils::fgMemoryManager = new DefaultMemory;  // which the parser library adopts
    }
    XMLPlatformUtils::Initialize();
  } catch (const xercesc::XMLException&) {
    halfStarted = false;
    throw;
  } catch (const xercesc::OutOfMemoryException&) {  // which is no std::exception
    throw std::bad_alloc();
  }
  halfStarted = false;
}

void terminateParserLibrary() noexcept {
  if (!halfStarted) {
    DefaultMemory::isStopping = true;
    XMLPlatformUtils::Terminate();
    DefaultMemory::isStopping = false;
  }
}

}  // namespace jexxml
