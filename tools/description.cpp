#include "description.h"

namespace tool {

std::string placeOf(const std::string& file, const Place& place) {
  return place.line == 0 ? file : file + ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
}

const std::string& Element::operator[](const std::string& attribute) const {
  static const std::string absent;
  const auto given = attributes.find(attribute);
  return given == attributes.end() ? absent : given->second;
}

void Description::find(const Place& place, bool isError, const std::string& text) {
  constexpr std::size_t most = 1'000;
  warnings += isError ? 0 : 1;
  if (isError || warnings <= most) {
    findings.push_back({place, isError, text});
  } else if (warnings == most + 1) {
    findings.push_back({place, false, "there are more warnings, which are not shown"});
  }
}

}  // namespace tool
