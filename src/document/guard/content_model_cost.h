// What it costs the parser library to prepare for an element's content, and to check it.
#ifndef QZJEXXML_DOCUMENT_GUARD_CONTENT_MODEL_COST_H
#define QZJEXXML_DOCUMENT_GUARD_CONTENT_MODEL_COST_H

#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace jexxml {

struct ContentModel {
  std::vector<std::u16string_view> names;  // as often as they stand in it; those of the declaration
  std::size_t nodes = 0;                   // of its tree, which may be as deep
  std::uint64_t cost = 0;                  // steps of work to make an automaton of it
};

// The parser library compares all names of a content model with each other, follows from each place in it to the next,
// and makes an automaton whose table has a column for each different name. A row stands for the places in the model
// that a name just read may have been at, so a name that stands at k places can make 2^k rows: (a|b)*,a,(a|b),(a|b)
// does. Mixed content is a list, and has no automaton.
ContentModel contentModelOf(const xercesc::DTDElementDecl& declaration);

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_CONTENT_MODEL_COST_H
