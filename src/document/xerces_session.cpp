#include "document/xerces_session.h"

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

// Replaces the panic handler during its lifetime, because the handlers of Xerces-C and of the program may end the
// program. A start of Xerces-C panics only when out of memory.
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

// The default memory manager of Xerces-C when this library is the first to start it. When Xerces-C stops, its
// destructors allocate one list of ten pointers at a time. An exception in a destructor would end the program, so
// `reserve` has room for one list.
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

// Calls the operators directly, because the compiler may remove a new expression.
void requireMebibyte() { ::operator delete(::operator new (std::size_t{1} << 20U)); }

}  // namespace

XercesSession::XercesSession() {
  if (isHalfStarted) {
    throw std::bad_alloc();
  }
  requireMebibyte();
  isHalfStarted = true;
  try {
    const NoPanic noPanic;
    if (XMLPlatformUtils::fgMemoryManager == nullptr) {
      XMLPlatformUtils::fgMemoryManager = new DefaultMemory;  // Xerces-C takes ownership
    }
    XMLPlatformUtils::Initialize();
  } catch (const xercesc::XMLException& exception) {
    startFailure = LcpText(exception.getMessage()).view();
  } catch (const xercesc::OutOfMemoryException&) {  // not a std::exception
    throw std::bad_alloc();
  }
  isHalfStarted = false;
}

// Xerces-C counts a failed start too.
XercesSession::~XercesSession() {
  isStopping = true;
  XMLPlatformUtils::Terminate();
  isStopping = false;
}

}  // namespace jexxml
