// The families that abuse a document type declaration.
#include "hostile_documents.h"
#include "hostile_parts.h"

#include <algorithm>

namespace hostile {
namespace {

constexpr Family all[] = {
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
           size, "<!ATTLIST b" + join(99, "", [](size_t i) { return " " + named("c", i) + " CDATA #IMPLIED"; }) + ">",
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
               join(std::min<size_t>(99, size / 20), "", [](size_t i) { return " " + named("c", i) + " CDATA ''"; }) +
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
                                  join(std::min<size_t>(99, size / 40), "",
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
    {"an entity of spaces among tokens, often",
     [](size_t size) {
       return withDtd(
           "<!ELEMENT a ANY><!ENTITY e '" + std::string(size / 4, ' ') + "'><!ATTLIST a b NMTOKENS #IMPLIED>",
           "<a b='x" + repeatTo(size * 3 / 4, "&e;") + "'/>");
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
};

}  // namespace

std::span<const Family> declarationFamilies() { return all; }

}  // namespace hostile
