// For each limit a document that has just so much of what is limited.
#include "hostile_documents.h"
#include "hostile_parts.h"

namespace hostile {
namespace {

std::string each(std::size_t count, const std::string& before, const std::string& after) {
  return join(count, "", [&](std::size_t i) { return named(before, i) + after; });
}

std::string inDtd(const std::string& declarations, const std::string& content) {
  return withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY>" + declarations, inRoot(content));
}

const Limited limitedRows[] = {
    {1'000, "the document nests elements deeper than 1,000",
     [](std::size_t n) { return repeat(n, "<a>") + repeat(n, "</a>"); }},
    {1'000, "an element has more than 1,000 attributes",
     [](std::size_t n) { return "<a" + each(n, " b", "=''") + "/>"; }},
    {10'000, "the document declares more than 10,000 namespaces",
     [](std::size_t n) { return "<a xmlnsfoo=''>" + each(n, "<b xmlns='u", "'/>") + "</a>"; }},
    {2'000, "the document has more than 2,000 different element names",
     [](std::size_t n) { return "<a>" + each(n - 1, "<b", "/>") + "</a>"; }},
    {2'000, "the document has more than 2,000 different attribute names",
     [](std::size_t n) { return "<a>" + each(n, "<b c", "=''/>") + "</a>"; }},
    {2'000, "the document declares more than 2,000 entities and notations",
     [](std::size_t n) { return inDtd("<!NOTATION n SYSTEM ''>" + each(n - 1, "<!ENTITY e", " ''>"), ""); }},
    {2'000, "the document declares elements more than 2,000 times",
     [](std::size_t n) { return inDtd("<!ATTLIST b c CDATA ''>" + each(n - 3, "<!ELEMENT d", " ANY>"), ""); }},
    {100, "the document declares more than 100 attributes of an element",
     [](std::size_t n) { return inDtd("<!ATTLIST b" + each(n, " c", " CDATA #IMPLIED") + ">", ""); }},
    {10'000, "the document has more than 10,000 identifiers and references to them",
     [](std::size_t n) {
       return inDtd("<!ATTLIST b c ID #IMPLIED d IDREFS #IMPLIED>", each(n - 2, "<b c='i", "'/>") + "<b d='i0 i1'/>");
     }},
    {4'000, "the document declares an attribute with too many values",
     [](std::size_t n) { return inDtd("<!ATTLIST b c (" + std::string(n, 'x') + ") #IMPLIED>", ""); }},
    {811, "the content models of the document are too complex",
     [](std::size_t n) { return inDtd("<!ELEMENT c (" + each(n - 1, "d", ",") + "e)>", ""); }},
    {50'000,
     "parser has encountered more than '50000' entity expansions in the document; this is the limit imposed by the "
     "application",
     [](std::size_t n) { return inDtd("<!ENTITY e ''>", std::string(200'000, ' ') + repeat(n, "&e;")); }},
};

}  // namespace

std::span<const Limited> limited() { return limitedRows; }

}  // namespace hostile
