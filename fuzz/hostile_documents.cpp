// The families that do without a document type declaration.
#include "hostile_documents.h"

#include "hostile_parts.h"

#include <algorithm>

namespace hostile {
namespace {

std::string manifestOf(const std::string& rootPath, const std::string& files) {
  return "<r><kiv><filemap><root path='" + rootPath + "'>" + files + "</root></filemap></kiv></r>";
}

constexpr Family all[] = {
    // Elements and attributes.
    {"elements", [](size_t size) { return inRoot(repeatTo(size, "<b/>")); }},
    {"element names",
     [](size_t size) { return inRoot(fill(size, [](size_t i) { return "<" + named("b", i) + "/>"; })); }},
    {"element names that collide",
     [](size_t size) { return inRoot(fill(size, [](size_t i) { return "<" + colliding(i % 9'999) + "/>"; })); }},
    {"long names",
     [](size_t size) {
       return inRoot(fill(size, [](size_t i) { return "<" + std::string(999, 'b') + number(i) + "/>"; }));
     }},
    {"depth", [](size_t size) { return repeatTo(size / 2, "<a>") + repeatTo(size / 2, "</a>"); }},
    {"depth at its limit, often",
     [](size_t size) { return inRoot(fill(size, [](size_t) { return repeat(999, "<a>") + repeat(999, "</a>"); })); }},
    {"attributes of one element",
     [](size_t size) { return "<a" + fill(size, [](size_t i) { return " " + named("b", i) + "=''"; }) + "/>"; }},
    {"attributes at their limit, often",
     [](size_t size) {
       const std::string element = "<b" + join(999, "", [](size_t i) { return " " + named("c", i) + "=''"; }) + "/>";
       return inRoot(repeatTo(std::max(size, element.size()), element));
     }},
    {"attribute names",
     [](size_t size) { return inRoot(fill(size, [](size_t i) { return "<b " + named("c", i) + "=''/>"; })); }},
    {"attribute names that collide",
     [](size_t size) { return inRoot(fill(size, [](size_t i) { return "<b " + colliding(i % 9'999) + "=''/>"; })); }},
    {"attributes that collide in one element",
     [](size_t size) {
       return inRoot(fill(size, [](size_t i) {
         return "<b" + join(900, "", [&](size_t k) { return " " + colliding((i * 900 + k) % 9'900) + "=''"; }) + "/>";
       }));
     }},
    {"a long attribute", [](size_t size) { return "<a b='" + std::string(size, 'x') + "'/>"; }},
    {"two attributes of one name, often", [](size_t size) { return inRoot(repeatTo(size, "<b c='' c=''/>")); }},
    {"white space in tags", [](size_t size) { return "<a" + std::string(size, ' ') + "/>"; }},
    // Namespaces.
    {"namespaces",
     [](size_t size) { return inRoot(fill(size, [](size_t i) { return "<b xmlns='" + named("u", i) + "'/>"; })); }},
    {"namespaces that collide",
     [](size_t size) {
       return inRoot(fill(size, [](size_t i) { return "<b xmlns='" + colliding(i % 9'999) + "'/>"; }));
     }},
    {"prefixes in scope, each element looks through",
     [](size_t size) {
       return "<a" + join(900, "", [](size_t i) { return " xmlns:" + named("p", i) + "='" + named("u", i) + "'"; }) +
              ">" + repeatTo(size, "<p0:b/>") + "</a>";
     }},
    {"prefixes in nested scopes",
     [](size_t size) {
       return join(900, "", [](size_t i) { return "<a xmlns:" + named("p", i) + "='u'>"; }) +
              repeatTo(size, "<p0:b p0:c=''/>") + repeat(900, "</a>");
     }},
    {"attributes with prefixes",
     [](size_t size) {
       return "<a xmlns:p='u' xmlns:q='u'" + fill(size, [](size_t i) { return " p:" + named("b", i) + "=''"; }) + "/>";
     }},
    // Text, comments, instructions, references.
    {"text", [](size_t size) { return inRoot(std::string(size, 'x')); }},
    {"white space", [](size_t size) { return inRoot(std::string(size, '\n')); }},
    {"text that needs conversion",
     [](size_t size) { return inRoot(fill(size, [](size_t i) { return "<\u00E9" + number(i % 9) + "/>"; })); }},
    {"comments", [](size_t size) { return inRoot(repeatTo(size, "<!---->")); }},
    {"a long comment", [](size_t size) { return inRoot("<!--" + std::string(size, 'x') + "-->"); }},
    {"comments before the root", [](size_t size) { return repeatTo(size, "<!---->") + "<a/>"; }},
    {"instructions", [](size_t size) { return inRoot(repeatTo(size, "<?b?>")); }},
    {"instruction names",
     [](size_t size) { return inRoot(fill(size, [](size_t i) { return "<?" + named("b", i) + "?>"; })); }},
    {"character data sections", [](size_t size) { return inRoot(repeatTo(size, "<![CDATA[]]>")); }},
    {"character references in text", [](size_t size) { return inRoot(repeatTo(size, "&#1;")); }},
    {"good character references in text", [](size_t size) { return inRoot(repeatTo(size, "&#x20;")); }},
    {"character references in an attribute", [](size_t size) { return "<a b='" + repeatTo(size, "&#32;") + "'/>"; }},
    {"the five entities", [](size_t size) { return inRoot(repeatTo(size, "&lt;")); }},
    {"unclosed markup", [](size_t size) { return "<a>" + repeatTo(size, "<"); }},
    // What this library makes of a document.
    {"a long path for many files",
     [](size_t size) {
       return manifestOf(std::string(size / 2, 'p'),
                         fill(size / 2, [](size_t i) { return "<data file_name='" + number(i) + "'/>"; }));
     }},
    {"a long path of backslashes", [](size_t size) { return manifestOf(repeatTo(size, "\\u005C"), "<data/>"); }},
    {"files",
     [](size_t size) {
       return manifestOf("r", fill(size, [](size_t i) { return "<data file_name='" + number(i) + "'/>"; }));
     }},
    {"roots",
     [](size_t size) {
       return manifestOf("r", "</root>" + fill(size, [](size_t i) {
                                return "<root path='" + number(i) + "'><data/></root>";
                              }) + "<root>");
     }},
};

}  // namespace

std::vector<Family> families() {
  std::vector<Family> both(std::begin(all), std::end(all));
  const std::span<const Family> declarations = declarationFamilies();
  both.insert(both.end(), declarations.begin(), declarations.end());
  return both;
}

}  // namespace hostile
