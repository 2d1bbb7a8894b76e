// JSON, written piece by piece: what is printed may be large.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_JSON_TEXT_H
#define QZJEXXML_TOOLS_DESCRIPTION_JSON_TEXT_H

#include "description/description.h"

#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// A JSON string, and a list of them. What is not UTF-8 becomes U+FFFD.
std::string json(std::string_view text);
std::string json(const std::vector<std::string>& texts);

// The member "file"; for a name that is not UTF-8, also "fileBytes": the name with its bytes above 0x7F, and %, as %E9.
std::string jsonOfFile(const std::string& file);

// [{"severity":"error","rule":"not-valid","line":2,"column":1,"message":"..."}, ...], without the place where there is
// none.
std::string json(const std::vector<Finding>& findings);

// An object of the keys of a map and the texts that `valueOf` gives for its values.
void printObject(const auto& pairs, const auto& valueOf) {
  std::cout << '{';
  const char* separator = "";
  for (const auto& [key, value] : pairs) {
    std::cout << separator << json(key) << ':' << json(valueOf(value));
    separator = ",";
  }
  std::cout << '}';
}

// The tree of the elements that a load takes: {"element":"data","attributes":{...},"children":[...]}.
void printJson(const Description& description);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_JSON_TEXT_H
