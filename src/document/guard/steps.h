// What the parser library does, in steps of work (document/guard/limits.h).
#ifndef QZJEXXML_DOCUMENT_GUARD_STEPS_H
#define QZJEXXML_DOCUMENT_GUARD_STEPS_H

#include <cstdint>

namespace jexxml {

// What takes memory is charged for that too.
inline constexpr std::uint64_t elementSteps = 500;
inline constexpr std::uint64_t attributeSteps = 350;
inline constexpr std::uint64_t declarationSteps = 1'000;
inline constexpr std::uint64_t entitySteps = 6'500;    // the parser library ends each by an exception of its own
inline constexpr std::uint64_t readerSteps = 500'000;  // of one more than were ever open: it has buffers of 160 KiB
inline constexpr std::uint64_t entityCharacterSteps = 32;
inline constexpr std::uint64_t valueCharacterSteps = 20;  // also to convert it for the record
inline constexpr std::uint64_t namespaceCharacterSteps = 40;
inline constexpr std::uint64_t definitionSteps = 24;
inline constexpr std::uint64_t comparisonSteps = 8;
inline constexpr std::uint64_t characterSteps = 4;  // of a name that is compared with one that begins alike
inline constexpr std::uint64_t visitSteps = 16;     // of a name in a bucket
inline constexpr std::uint64_t bucketSteps = 4;     // of a table that is emptied
inline constexpr std::uint64_t errorSteps = 5'000;

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_STEPS_H
