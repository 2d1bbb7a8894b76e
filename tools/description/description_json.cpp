#include "description/description_json.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace tool {

void write(JsonWriter& json, const std::vector<Finding>& findings) {
  json.beginArray();
  for (const auto& [position, rule, text] : findings) {
    json.beginObject().key("severity").text(isError(rule) ? "error" : "warning").key("rule").text(nameOf(rule));
    if (position.line != 0) {
      json.key("line").number(position.line).key("column").number(position.column);
    }
    json.key("message").text(text).end();
  }
  json.end();
}

// Elements come in document order, each after its parent: what is open when one comes ends where its parent does not.
void write(JsonWriter& json, const Description& description) {
  std::vector<std::size_t> open;
  const auto close = [&] {
    json.end().end();
    open.pop_back();
  };
  for (std::size_t i = 0; i < description.elements.size(); ++i) {
    const Element& element = description.elements[i];
    while (!open.empty() && open.back() != element.parent) {
      close();
    }
    json.beginObject().key("element").text(element.kind->name).key("attributes").beginObject();
    std::map<std::string, std::string> attributes;
    for (const AttributeKind& attribute : element.kind->attributes) {
      if (auto value = element.value(attribute.parserName.c_str())) {
        attributes.emplace(attribute.name, *std::move(value));
      }
    }
    for (const auto& [name, value] : attributes) {
      json.key(name).text(value);
    }
    json.end().key("children").beginArray();
    open.push_back(i);
  }
  while (!open.empty()) {
    close();
  }
}

}  // namespace tool
