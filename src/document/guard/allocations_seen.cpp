// What a DocumentParser sees between two callbacks: the allocations of the parser library.
#include "document/guard/document_parser.h"
#include "document/guard/steps.h"

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/KVStringPair.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/RefHash2KeysTableOf.hpp>
#include <xercesc/util/RefHashTableOf.hpp>

#include <algorithm>
#include <utility>

namespace jexxml {

namespace {

// The sizes of an entry in the table of a tag's attributes, and in those of prefixes and namespaces.
bool isEntrySize(std::size_t size) {
  return size == sizeof(xercesc::RefHash2KeysTableBucketElem<xercesc::XMLAttr>) ||
         size == sizeof(xercesc::RefHashTableBucketElem<XMLCh>);
}

}  // namespace

// An object of the parser library is recognised at the allocation that it makes next itself: for an attribute its name,
// for an identifier its name too, for a declaration an object with an empty prefix and a name, or both names.
void DocumentParser::checkAllocation(std::size_t size) {
  const auto newest = memory.newestBlock();
  if (awaitingName != nullptr && --blocksToName <= 0) {
    const auto* name = static_cast<const XMLCh*>(newest.first);
    if (*name != 0) {
      declare(*std::exchange(awaitingName, nullptr), name);
      holdTokens();
    }
  }
  if (size == readerBlockSize()) {
    openReader();
  } else if (secondTable.in(newest) != nullptr) {  // its buckets
    tagTables.makeSecond(size / sizeof(void*));
  } else if (const auto* attribute = objectKinds().pair.in<xercesc::KVStringPair>(newest)) {
    givenAttributes.push_back(attribute);
  } else if (objectKinds().identifier.in(newest) != nullptr) {
    awaitingName = &identifierNames;
    blocksToName = 1;
  } else if (inDeclarations && objectKinds().declaration.in(newest) != nullptr) {
    awaitingName = &declaredElements;
    blocksToName = 2;
  }
  if (!CountedMemory::mayBeADestructors(size)) {
    checkMemory(size);
  }
  if (isEntrySize(size)) {
    lookAtTag();
  }
}

void DocumentParser::checkMemory(std::size_t more) {
  if (memory.reserveUsed && !refused) {
    refused = true;
    throw xercesc::OutOfMemoryException();
  }
  hold(memory.bytesInUse + nodeBytes() + more, budgets.memory);
}

// A tag's attributes are looked up after all of them have been read. Each that then enters a table, and each prefix and
// namespace that is new, allocates an entry; while they are read, at most two of a name and a value have the size of
// one. So with each look reaching for twice as many attributes as there are entries, and the next look coming when
// there are a quarter more, none is looked up that no look has seen.
void DocumentParser::lookAtTag() {
  if (++entries < entriesToLook || givenAttributes.size() <= TagTables::few) {
    return;
  }
  entriesToLook = entries + entries / 4;
  const GivenAttributes given(givenAttributes.data(), std::min(2 * entries, givenAttributes.size()));
  std::size_t mappings = mappingsInScope.back();
  const std::uint64_t steps = tagTables.costOf(given, mostDefinitions, false) + costOfNamespaces(given, mappings);
  hold(work + steps + costOfMappings(given.size() + prefixedDefinitions, mappings), budgets.work);
}

// Whatever an entity's text is, its names are looked up in one of the tables.
std::uint64_t DocumentParser::fullestOfAll() const {
  std::size_t most = 0;
  for (const NameTable* table : {&declaredElements, &undeclaredElements, &generalEntities, &parameterEntities,
                                 &notations, &prefixes, &namespaces, &identifierNames}) {
    most = std::max(most, table->fullestBucket());
  }
  return most;
}

// The block before an entity's reader is the stream of its text, which is complete by then.
void DocumentParser::openReader() {
  readerSeen = true;
  const auto* stream = objectKinds().stream.in<xercesc::BinMemInputStream>(memory.newestBlock());
  if (stream == nullptr) {  // the document's own, or a block that only has the size
    return;
  }
  const std::uint64_t characters = stream->getSize() / sizeof(XMLCh);
  const std::size_t open = getScanner()->getReaderMgr()->getReaderDepth();
  const std::uint64_t compared = open + generalEntities.fullestBucket() + parameterEntities.fullestBucket();
  spend(entitySteps + (entityCharacterSteps + fullestOfAll()) * characters +
        (comparisonSteps + longestEntityName) * compared);
  if (open > mostReaders) {
    mostReaders = open;
    spend(readerSteps);
  }
  entityCharacters += characters;
  holdTokens();
}

// Values are looked up after all of a tag have been read, and those by default before the first tag: tokens in an
// enumeration, identifiers, entities, and a few namespaces in each other. Entities can make them far longer than the
// document.
void DocumentParser::holdTokens() {
  const std::uint64_t characters = entityCharacters + tokensByDefault;
  const std::uint64_t compared = TagTables::few + identifierNames.fullestBucket() + generalEntities.fullestBucket();
  hold(work + enumerationSteps(characters) + characterSteps * compared * characters, budgets.work);
}

// To look up tokens, of which each may be one letter.
std::uint64_t DocumentParser::enumerationSteps(std::uint64_t characters) const {
  return longestEnumeration * (1 + characters / 2) * 5 / 2;
}

}  // namespace jexxml
