// What one document may cost: the numbers, each with the message that reports a document beyond it.
//
// No description file comes near them; the deepest element of either vocabulary is the fifth. The parser
// library alone takes minutes, or all of the memory, for some documents of a few kilobytes: what it does for
// each element, name or declaration often grows with the number of those before it.
#ifndef QZJEXXML_DOCUMENT_GUARD_LIMITS_H
#define QZJEXXML_DOCUMENT_GUARD_LIMITS_H

#include <cstdint>

namespace jexxml {

struct Limit {
  std::uint64_t most;
  const char16_t* message;
};

inline constexpr Limit depthLimit = {1'000, u"the document nests elements deeper than 1,000"};
inline constexpr Limit attributeLimit = {1'000, u"an element has more than 1,000 attributes"};
inline constexpr Limit namespaceLimit = {10'000, u"the document declares more than 10,000 namespaces"};
inline constexpr Limit errorLimit = {1'000, u"the document has more than 1,000 errors"};
inline constexpr Limit errorTextLimit = {100'000,
                                         u"the messages for the document's errors are too long"};  // characters

// Names are looked up in tables where those that are made for it all stand in one row.
inline constexpr Limit elementNameLimit = {2'000, u"the document has more than 2,000 different element names"};
inline constexpr Limit attributeNameLimit = {2'000, u"the document has more than 2,000 different attribute names"};
inline constexpr Limit entityLimit = {2'000, u"the document declares more than 2,000 entities and notations"};
inline constexpr Limit elementDeclarationLimit = {2'000, u"the document declares elements more than 2,000 times"};
inline constexpr Limit attributeDeclarationLimit = {100,
                                                    u"the document declares more than 100 attributes of an element"};
inline constexpr Limit identifierLimit = {10'000,
                                          u"the document has more than 10,000 identifiers and references to them"};

// Characters of the values that an attribute's declaration lists; each use of the attribute goes through them.
inline constexpr Limit enumerationLimit = {4'000, u"the document declares an attribute with too many values"};

// Characters without a callback of the parser in between, where the document declares attributes that list
// identifiers or entities: those are looked up one by one before the tag is known.
inline constexpr Limit listLimit = {200'000, u"a tag or comment is too long where lists of identifiers are declared"};

// Bytes that count as read for each entity that is opened, of every kind; the parser library itself stops at 50,000
// entities in text and attributes.
inline constexpr std::uint64_t entityCost = 1'024;

// By the measure of content_model_cost.h, all of the document's together.
inline constexpr Limit contentModelLimit = {2'000'000, u"the content models of the document are too complex"};

// Blocks of memory taken without a callback of the parser in between: some for each attribute of a tag, and
// for each name in a declaration.
inline constexpr Limit markupLimit = {100'000, u"a tag or declaration of the document has too many parts"};

// Bytes that the document may take in memory, and that may be read in its entities. A document object model takes about
// 17 times the file; 180 times where each small element has attributes by default, which the parser library keeps
// thrice.
constexpr Limit sizeLimit(std::uint64_t documentSize) {
  return {(std::uint64_t{8} << 20U) + 192 * documentSize, u"the document expands to far more than its size"};
}

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_LIMITS_H
