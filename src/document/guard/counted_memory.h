// CountedMemory: the parser library's default memory, with a count of what one parser takes of it.
#ifndef QZJEXXML_DOCUMENT_GUARD_COUNTED_MEMORY_H
#define QZJEXXML_DOCUMENT_GUARD_COUNTED_MEMORY_H

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>
#include <functional>
#include <memory>

namespace jexxml {

// The parser library allocates in destructors too, where an exception would end the program. So a limit is
// only noted here, for the parser to look at where it can stop, and blocks come from a reserve when the
// system has none left.
//
// What has not been given back is released at the end: the parser library forgets a little where an
// exception passes it.
class CountedMemory final : public xercesc::MemoryManager {
 public:
  CountedMemory() = default;
  CountedMemory(const CountedMemory&) = delete;
  CountedMemory& operator=(const CountedMemory&) = delete;
  ~CountedMemory() override;

  // Throws what `beforeAllocation` does, and xercesc::OutOfMemoryException when the reserve is used up too.
  void* allocate(XMLSize_t size) override;
  void deallocate(void* memory) override;
  xercesc::MemoryManager* getExceptionMemoryManager() override;

  std::size_t mostBytes = 0;                               // that were in use at one time
  std::size_t blocks = 0;                                  // that were ever taken
  bool reserveUsed = false;                                // the system had no memory left
  std::function<void(std::size_t size)> beforeAllocation;  // if set, called first

 private:
  // Stands before each block; all are in a list.
  struct alignas(std::max_align_t) Block {
    Block* previous;
    Block* next;
    std::size_t size;
    bool isFree;  // in the reserve, where blocks stand one after another
  };

  Block* takeFromReserve(std::size_t size);
  bool isFromReserve(const Block* block) const;
  void shrinkReserve();
  static std::size_t sizeInReserve(std::size_t size);

  static constexpr std::size_t reserveSize = std::size_t{256} << 10U;

  std::unique_ptr<std::byte[]> reserve{new std::byte[reserveSize]};  // never touched before it is needed
  std::size_t reserveTaken = 0;
  bool reserveUsedUp = false;  // but for the half that is kept for cleaning up
  std::size_t bytesInUse = 0;
  Block* lastBlock = nullptr;
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_COUNTED_MEMORY_H
