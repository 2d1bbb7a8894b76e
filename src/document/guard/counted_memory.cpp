#include "document/guard/counted_memory.h"

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <utility>

namespace jexxml {

using xercesc::XMLPlatformUtils;

void* CountedMemory::allocate(XMLSize_t size) {
  constexpr std::size_t longText = 256;
  constexpr std::size_t longest = 16'384;
  if (isReader(size)) {
    beforeReader();
  }
  Block* block = nullptr;
  try {
    block = static_cast<Block*>(XMLPlatformUtils::fgMemoryManager->allocate(sizeof(Block) + size));
    block->previous = std::exchange(ring.previous, block);
    block->next = std::exchange(block->previous->next, block);
  } catch (const xercesc::OutOfMemoryException&) {
    isAbandoned = true;
    block = takeFromReserve(size);
  }
  block->size = size;
  block->candidates = readerSize == 0 ? 0 : 1 + std::min(size, longest) / longText;
  bytes += size;
  candidates += block->candidates;
  return block + 1;
}

void CountedMemory::deallocate(void* memory) {
  if (memory == nullptr || isAbandoned) {
    return;
  }
  Block* block = static_cast<Block*>(memory) - 1;
  block->previous->next = block->next;
  block->next->previous = block->previous;
  bytes -= block->size;
  candidates -= block->candidates;
  XMLPlatformUtils::fgMemoryManager->deallocate(block);
}

CountedMemory::~CountedMemory() {
  for (Block* block = ring.next; block != &ring;) {
    XMLPlatformUtils::fgMemoryManager->deallocate(std::exchange(block, block->next));
  }
}

CountedMemory::Block* CountedMemory::takeFromReserve(std::size_t size) {
  const std::size_t blocks = 2 + size / sizeof(Block);
  if (blocks > reserveBlocks - reserveUsed) {
    throw xercesc::OutOfMemoryException();
  }
  return &reserve[std::exchange(reserveUsed, reserveUsed + blocks)];
}

bool CountedMemory::isReader(std::size_t size) {
  constexpr std::size_t largeBlock = 65'536;
  const bool isFirst = readerSize == 0 && size > largeBlock;
  readerSize = isFirst ? size : readerSize;
  return size == readerSize && !isFirst;
}

xercesc::MemoryManager* CountedMemory::getExceptionMemoryManager() { return XMLPlatformUtils::fgMemoryManager; }

}  // namespace jexxml
