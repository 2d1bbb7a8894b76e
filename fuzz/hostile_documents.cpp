#include "hostile_documents.h"

#include <algorithm>
#include <functional>

namespace hostile {
namespace {

using std::size_t;
using Part = std::function<std::string(size_t)>;

// part(0), part(1), ... until they are `size` bytes.
std::string fill(size_t size, const Part& part) {
  std::string text;
  for (size_t i = 0; text.size() < size; ++i) {
    text += part(i);
  }
  return text;
}

// part(0) to part(count - 1) with a separator between them.
std::string join(size_t count, const std::string& separator, const Part& part) {
  std::string text;
  for (size_t i = 0; i < count; ++i) {
    text += (i == 0 ? "" : separator) + part(i);
  }
  return text;
}

std::string repeat(size_t count, const std::string& part) {
  return join(count, "", [&](size_t) { return part; });
}

std::string repeatTo(size_t size, const std::string& part) { return repeat(size / part.size(), part); }

std::string number(size_t i) { return std::to_string(i); }

std::string named(const std::string& prefix, size_t i) { return prefix + number(i); }

// Names that the parser library's string hash, which multiplies by 38, all gives the same value.
std::string colliding(size_t i) {
  std::string name;
  for (size_t bit = 0; bit < 14; ++bit) {
    name += ((i >> bit) & 1U) == 0 ? "Ag" : "BA";
  }
  return name;
}

std::string withDtd(const std::string& declarations, const std::string& root) {
  return "<!DOCTYPE a [" + declarations + "]>" + root;
}

std::string inRoot(const std::string& content) { return "<a>" + content + "</a>"; }

// One declaration that every part of it makes worse, and elements that use it, half of the size each.
std::string declaredAndUsed(size_t size, const std::string& declarations, const std::string& use) {
  return withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY>" + declarations, inRoot(repeatTo(size / 2, use)));
}

// Entities e0, e1, ...: each refers `width` times to the one before.
std::string tower(const std::string& kind, const std::string& reference, const std::string& ground, size_t height,
                  size_t width) {
  return join(height, "", [&](size_t i) {
    const std::string value = i == 0 ? ground : repeat(width, reference + named("e", i - 1) + ";");
    return "<!ENTITY " + kind + named("e", i) + " '" + value + "'>";
  });
}

// (x0|x1|...) with `separator` between names, of about `size` bytes.
std::string group(size_t size, const std::string& separator, const Part& name) {
  return "(" + name(0) + fill(size, [&](size_t i) { return separator + name(i + 1); }) + ")";
}

Part numbered(const std::string& prefix) {
  return [prefix](size_t i) { return named(prefix, i); };
}

// A content model whose automaton has a state for each of the last `length` choices.
std::string explosive(size_t length) {
  return "((a|b)*,a," + join(length, ",", [](size_t) { return "(a|b)"; }) + ")";
}

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
    // Content models.
    {"a choice of many",
     [](size_t size) { return withDtd("<!ELEMENT a " + group(size, "|", numbered("b")) + "*>", "<a/>"); }},
    {"a sequence of many",
     [](size_t size) { return withDtd("<!ELEMENT a " + group(size, ",", numbered("b")) + ">", "<a/>"); }},
    {"a sequence of many that may be absent",
     [](size_t size) {
       return withDtd("<!ELEMENT a " + group(size, ",", [](size_t i) { return named("b", i) + "?"; }) + ">", "<a/>");
     }},
    {"a sequence of one name",
     [](size_t size) { return withDtd("<!ELEMENT a " + group(size, ",", [](size_t) { return "b"; }) + ">", "<a/>"); }},
    {"mixed content of many",
     [](size_t size) {
       return withDtd("<!ELEMENT a (#PCDATA" + fill(size / 2, [](size_t i) { return "|" + named("b", i); }) + ")*>",
                      inRoot(repeatTo(size / 2, "<c/>")));
     }},
    {"nested content models",
     [](size_t size) {
       return withDtd("<!ELEMENT a " + repeatTo(size / 2, "(") + "a" + repeatTo(size / 2, ")") + ">", "<a/>");
     }},
    {"nested sequences",
     [](size_t size) {
       return withDtd("<!ELEMENT a " + repeatTo(size * 3 / 4, "(a,") + "a" + repeatTo(size / 4, ")") + ">", "<a/>");
     }},
    {"nested sequences at the limit, often",
     [](size_t size) {
       const auto model = [](const std::string& name) {
         return "<!ELEMENT " + name + " " + repeat(990, "(a,") + "a" + repeat(990, ")") + ">";
       };
       return withDtd("<!ELEMENT a ANY>" + fill(size, [&](size_t i) { return model(named("b", i)); }),
                      inRoot(join(size / 4000, "", [](size_t i) { return "<" + named("b", i) + "/>"; })));
     }},
    {"an automaton that explodes", [](size_t) { return withDtd("<!ELEMENT a " + explosive(40) + ">", "<a/>"); }},
    {"many automata that explode a little",
     [](size_t size) {
       return withDtd(
           "<!ELEMENT a ANY>" +
               fill(size / 2,
                    [](size_t i) { return "<!ELEMENT " + named("b", i) + explosive(10).insert(0, " ") + ">"; }),
           inRoot(fill(size / 2, [](size_t i) { return "<" + named("b", i) + "/>"; })));
     }},
    {"a long content model that each element violates",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ELEMENT b " + group(size / 2, "|", numbered("c")) + ">",
                      inRoot(repeatTo(size / 2, "<b><a/></b>")));
     }},
    {"a long content model that an entity's elements violate",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ELEMENT b (" + join(200, ",", numbered("c")) + ")><!ENTITY e '" +
                          repeatTo(size / 2, "<b/>") + "'>",
                      inRoot(repeatTo(size / 2, "&e;")));
     }},
    {"element declarations",
     [](size_t size) {
       return withDtd(fill(size, [](size_t i) { return "<!ELEMENT " + named("b", i) + " ANY>"; }), "<a/>");
     }},
    {"element declarations that collide",
     [](size_t size) {
       return withDtd(fill(size, [](size_t i) { return "<!ELEMENT " + colliding(i % 9'999) + " ANY>"; }), "<a/>");
     }},
    {"content models in a parameter entity, often",
     [](size_t size) {
       return withDtd(
           "<!ENTITY % e '<!ELEMENT b " + group(size / 2, ",", numbered("c")) + ">'>" + repeatTo(size / 2, "%e;"),
           "<a/>");
     }},
    // Attribute lists.
    {"attribute definitions",
     [](size_t size) {
       return declaredAndUsed(
           size, "<!ATTLIST b" + fill(size / 2, [](size_t i) { return " " + named("c", i) + " CDATA #IMPLIED"; }) + ">",
           "<b/>");
     }},
    {"attribute definitions at the limit",
     [](size_t size) {
       return declaredAndUsed(
           size, "<!ATTLIST b" + join(999, "", [](size_t i) { return " " + named("c", i) + " CDATA #IMPLIED"; }) + ">",
           "<b/>");
     }},
    {"attribute definitions that collide",
     [](size_t size) {
       return declaredAndUsed(
           size,
           "<!ATTLIST b" + fill(size / 2, [](size_t i) { return " " + colliding(i % 9'999) + " CDATA #IMPLIED"; }) +
               ">",
           "<b/>");
     }},
    {"default values",
     [](size_t size) {
       return declaredAndUsed(
           size,
           "<!ATTLIST b" +
               join(std::min<size_t>(999, size / 20), "", [](size_t i) { return " " + named("c", i) + " CDATA ''"; }) +
               ">",
           "<b/>");
     }},
    {"a long default value",
     [](size_t size) {
       return declaredAndUsed(size, "<!ATTLIST b c CDATA '" + std::string(size / 2, 'x') + "'>", "<b/>");
     }},
    {"required attributes",
     [](size_t size) {
       return declaredAndUsed(size,
                              "<!ATTLIST b" +
                                  join(std::min<size_t>(999, size / 40), "",
                                       [](size_t i) { return " " + named("c", i) + " CDATA #REQUIRED"; }) +
                                  ">",
                              "<b/>");
     }},
    {"attribute lists",
     [](size_t size) {
       return withDtd(
           "<!ELEMENT a ANY>" + fill(size, [](size_t i) { return "<!ATTLIST " + named("b", i) + " c CDATA ''>"; }),
           "<a/>");
     }},
    {"an attribute list again and again",
     [](size_t size) {
       return declaredAndUsed(
           size, fill(size / 2, [](size_t i) { return "<!ATTLIST b " + named("c", i % 9) + " CDATA ''>"; }), "<b/>");
     }},
    {"an enumeration",
     [](size_t size) {
       return declaredAndUsed(size, "<!ATTLIST b c " + group(size / 2, "|", numbered("d")) + " #IMPLIED>",
                              "<b c='" + named("d", size / 14) + "'/>");
     }},
    {"notations in an enumeration",
     [](size_t size) {
       return declaredAndUsed(size,
                              fill(size / 4, [](size_t i) { return "<!NOTATION " + named("n", i) + " SYSTEM ''>"; }) +
                                  "<!ATTLIST b c NOTATION " + group(size / 8, "|", numbered("n")) + " #IMPLIED>",
                              "<b c='n9'/>");
     }},
    // Identifiers.
    {"identifiers",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY><!ATTLIST b c ID #IMPLIED>",
                      inRoot(fill(size, [](size_t i) { return "<b c='" + named("i", i) + "'/>"; })));
     }},
    {"identifiers that collide",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY><!ATTLIST b c ID #IMPLIED>",
                      inRoot(fill(size, [](size_t i) { return "<b c='x" + number(i >> 14U) + colliding(i) + "'/>"; })));
     }},
    {"references to undeclared identifiers",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY><!ATTLIST b c IDREF #IMPLIED>",
                      inRoot(fill(size, [](size_t i) { return "<b c='" + named("i", i) + "'/>"; })));
     }},
    {"references that collide",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY><!ATTLIST b c IDREF #IMPLIED>",
                      inRoot(fill(size, [](size_t i) { return "<b c='x" + number(i >> 14U) + colliding(i) + "'/>"; })));
     }},
    {"a long list of references",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ATTLIST a b IDREFS #IMPLIED>",
                      "<a b='" + fill(size, [](size_t i) { return named(" i", i); }) + "'/>");
     }},
    {"a long list of references that collide",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ATTLIST a b IDREFS #IMPLIED>",
                      "<a b='" + fill(size, [](size_t i) { return " x" + number(i >> 14U) + colliding(i); }) + "'/>");
     }},
    {"a long list of tokens",
     [](size_t size) {
       return withDtd("<!ELEMENT a ANY><!ATTLIST a b NMTOKENS #IMPLIED>", "<a b='" + repeatTo(size, "x ") + "'/>");
     }},
    {"a long list of entities",
     [](size_t size) {
       return withDtd(
           "<!ELEMENT a ANY><!NOTATION n SYSTEM ''><!ENTITY e SYSTEM '' NDATA n><!ATTLIST a b ENTITIES #IMPLIED>",
           "<a b='" + repeatTo(size, "e ") + "'/>");
     }},
    // Entities, notations, conditional sections.
    {"entities",
     [](size_t size) {
       return withDtd(fill(size, [](size_t i) { return "<!ENTITY " + named("e", i) + " ''>"; }), "<a/>");
     }},
    {"entities that collide",
     [](size_t size) {
       return withDtd(fill(size, [](size_t i) { return "<!ENTITY " + colliding(i % 9'999) + " ''>"; }), "<a/>");
     }},
    {"notations",
     [](size_t size) {
       return withDtd(fill(size, [](size_t i) { return "<!NOTATION " + named("n", i) + " SYSTEM ''>"; }), "<a/>");
     }},
    {"a tower of entities in text", [](size_t) { return withDtd(tower("", "&", "x", 9, 10), "<a>&e8;</a>"); }},
    {"a tower of entities in an attribute", [](size_t) { return withDtd(tower("", "&", "", 9, 10), "<a b='&e8;'/>"); }},
    {"a tower of entities in a default value",
     [](size_t) {
       return withDtd("<!ELEMENT a ANY>" + tower("", "&", "", 9, 10) + "<!ATTLIST a b CDATA '&e8;'>", "<a/>");
     }},
    {"a tower of parameter entities", [](size_t) { return withDtd(tower("% ", "&#37;", "", 9, 10) + "%e8;", "<a/>"); }},
    {"a tower of declarations",
     [](size_t) { return withDtd(tower("% ", "&#37;", "<!ELEMENT b ANY>", 9, 10) + "%e8;", "<a/>"); }},
    {"a tower of long entities",
     [](size_t size) { return withDtd(tower("", "&", std::string(size, 'x'), 9, 10), "<a b='&e8;'/>"); }},
    {"a chain of entities",
     [](size_t size) {
       return withDtd(tower("", "&", "", std::min<size_t>(9'999, size / 23), 1),
                      "<a>&" + named("e", std::min<size_t>(9'999, size / 23) - 1) + ";</a>");
     }},
    {"a chain of parameter entities",
     [](size_t size) {
       return withDtd(tower("% ", "&#37;", "", std::min<size_t>(9'999, size / 30), 1) + "%" +
                          named("e", std::min<size_t>(9'999, size / 30) - 1) + ";",
                      "<a/>");
     }},
    {"one entity, often",
     [](size_t size) {
       return withDtd("<!ENTITY e '" + std::string(size / 2, 'x') + "'>", inRoot(repeatTo(size / 2, "&e;")));
     }},
    {"one entity of elements, often",
     [](size_t size) {
       return withDtd("<!ENTITY e '" + repeatTo(size / 2, "<b/>") + "'>", inRoot(repeatTo(size / 2, "&e;")));
     }},
    {"one entity of comments, often",
     [](size_t size) {
       return withDtd("<!ENTITY e '" + repeatTo(size / 2, "<!---->") + "'>", inRoot(repeatTo(size / 2, "&e;")));
     }},
    {"one entity in attributes, often",
     [](size_t size) {
       return withDtd("<!ENTITY e '" + std::string(size / 2, 'x') + "'>", inRoot(repeatTo(size / 2, "<b c='&e;'/>")));
     }},
    {"one parameter entity of comments, often",
     [](size_t size) {
       return withDtd("<!ENTITY % e '" + repeatTo(size / 2, "<!---->") + "'>" + repeatTo(size / 2, "%e;"), "<a/>");
     }},
    {"one parameter entity of white space, often",
     [](size_t size) {
       return withDtd("<!ENTITY % e '" + std::string(size / 2, ' ') + "'>" + repeatTo(size / 2, "%e;"), "<a/>");
     }},
    {"one parameter entity of attribute lists, often",
     [](size_t size) {
       return withDtd("<!ENTITY % e '" +
                          fill(size / 2, [](size_t i) { return "<!ATTLIST b " + named("c", i) + " CDATA #IMPLIED>"; }) +
                          "'>" + repeatTo(size / 2, "%e;"),
                      "<a/>");
     }},
    {"undeclared entities",
     [](size_t size) { return withDtd("<!ENTITY % x SYSTEM 'x'>", inRoot(repeatTo(size, "&e;"))); }},
    {"conditional sections",
     [](size_t size) {
       return withDtd("<!ENTITY % e '<![INCLUDE[<!ELEMENT b ANY>]]>'>" + repeatTo(size, "%e;"), "<a/>");
     }},
    {"comments in the declarations", [](size_t size) { return withDtd(repeatTo(size, "<!---->"), "<a/>"); }},
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

std::span<const Family> families() { return all; }

}  // namespace hostile
