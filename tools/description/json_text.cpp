#include "description/json_text.h"

#include <nlohmann/json.hpp>
#include <utf8.h>

#include <iostream>
#include <map>
#include <utility>

namespace tool {

namespace {

std::string dump(const nlohmann::json& value) {
  return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

std::string json(std::string_view text) { return dump(text); }

std::string json(const std::vector<std::string>& texts) { return dump(texts); }

std::string jsonOfFile(const std::string& file) {
  std::string members = "\"file\":" + json(file);
  if (utf8::is_valid(file.begin(), file.end())) {
    return members;
  }
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string bytes;
  for (const char letter : file) {
    const auto byte = static_cast<unsigned char>(letter);
    bytes +=
        byte < 0x80 && byte != '%' ? std::string{letter} : std::string{'%', digits[byte >> 4U], digits[byte & 15U]};
  }
  return members + ",\"fileBytes\":" + json(bytes);
}

std::string json(const std::vector<Finding>& findings) {
  std::string list;
  for (const auto& [place, rule, text] : findings) {
    list += list.empty() ? "{" : ",{";
    list += R"("severity":)" + json(isError(rule) ? "error" : "warning") + ",\"rule\":" + json(nameOf(rule));
    if (place.line != 0) {
      list += ",\"line\":" + std::to_string(place.line) + ",\"column\":" + std::to_string(place.column);
    }
    list += ",\"message\":" + json(text) + '}';
  }
  return '[' + list + ']';
}

// Elements come in document order, each after its parent: what is open when one comes ends where its parent does not.
void printJson(const Description& description) {
  std::vector<std::size_t> open;
  const auto closeTo = [&](std::size_t parent) {
    bool closed = false;
    for (; !open.empty() && open.back() != parent; open.pop_back(), closed = true) {
      std::cout << "]}";
    }
    return closed;
  };
  for (std::size_t i = 0; i < description.elements.size(); ++i) {
    const Element& element = description.elements[i];
    std::cout << (i != 0 && closeTo(element.parent) ? "," : "") << "{\"element\":" << json(element.kind->name)
              << ",\"attributes\":";
    std::map<std::string, std::string> attributes;
    for (const AttributeKind& attribute : element.kind->attributes) {
      if (auto value = element.value(attribute)) {
        attributes.emplace(attribute.name, *std::move(value));
      }
    }
    printObject(attributes, [](const std::string& value) { return value; });
    std::cout << ",\"children\":[";
    open.push_back(i);
  }
  closeTo(static_cast<std::size_t>(-1));
}

}  // namespace tool
