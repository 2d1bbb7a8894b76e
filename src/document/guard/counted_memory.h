// CountedMemory: the parser library's default memory, with a count of what one parser takes of it.
#ifndef QZJEXXML_DOCUMENT_GUARD_COUNTED_MEMORY_H
#define QZJEXXML_DOCUMENT_GUARD_COUNTED_MEMORY_H

#include <xercesc/framework/MemoryManager.hpp>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

namespace jexxml {

// Destructors of content models allocate: a list of the nodes to delete, from ten pointers on, which grows by a
// quarter. An exception there would end the program. So when the system has no memory left, blocks that may be such a
// list come from a reserve.
//
// What has not been given back is released at the end: the parser library forgets a little where an
// exception passes it.
class CountedMemory final : public xercesc::MemoryManager {
 public:
  CountedMemory() = default;
  CountedMemory(const CountedMemory&) = delete;
  CountedMemory& operator=(const CountedMemory&) = delete;
  ~CountedMemory() override;

  // Throws what `beforeAllocation` does, and xercesc::OutOfMemoryException.
  void* allocate(XMLSize_t size) override;
  void deallocate(void* memory) override;
  xercesc::MemoryManager* getExceptionMemoryManager() override;

  // The block allocated last, of those in use, and its size. Null and 0 when there is none.
  std::pair<const void*, std::size_t> newestBlock() const;

  // Whether a block of that size may be a destructor's.
  static bool mayBeADestructors(std::size_t size) { return size >= 10 * sizeof(void*) && size % sizeof(void*) == 0; }

  std::size_t bytesInUse = 0;
  std::size_t mostBytes = 0;                               // that were in use at one time
  bool reserveUsed = false;                                // the system had no memory left
  std::function<void(std::size_t size)> beforeAllocation;  // if set, called first

 private:
  // Stands before each block; all are in a list.
  struct alignas(std::max_align_t) Block {
    Block* previous;
    Block* next;
    std::size_t size;
  };

  Block* takeFromReserve(std::size_t size);

  // Each holds the longest list of a content model within the limits; there are two where one grows.
  static constexpr std::size_t slots = 8;
  static constexpr std::size_t slotSize = sizeof(Block) + 7'000 * sizeof(void*);

  std::unique_ptr<std::byte[]> reserve{new std::byte[slots * slotSize]};  // never touched before it is needed
  std::array<Block*, slots> taken = {};
  Block* lastBlock = nullptr;
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_COUNTED_MEMORY_H
