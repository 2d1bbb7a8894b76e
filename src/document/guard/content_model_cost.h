// What it costs the parser library to prepare for an element's content.
#ifndef QZJEXXML_DOCUMENT_GUARD_CONTENT_MODEL_COST_H
#define QZJEXXML_DOCUMENT_GUARD_CONTENT_MODEL_COST_H

#include <xercesc/validators/common/ContentSpecNode.hpp>

#include <cstdint>

namespace jexxml {

// The parser library compares all names of a content model with each other, and makes an automaton of them
// whose table has a column for each different name. A row stands for the places in the model that a name just
// read may have been at, so a name that stands at k places can make 2^k rows: (a|b)*,a,(a|b),(a|b) does.
//
// Returns at least the number of comparisons and of the table's cells; 0 for a null model.
std::uint64_t contentModelCost(const xercesc::ContentSpecNode* model);

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_CONTENT_MODEL_COST_H
