#include "bad_byte.h"

#include <utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tool {

void findBadByte(const KIVByteArray& bytes, Finding& finding) {
  if (!finding.isError || !finding.text.starts_with("invalid byte")) {
    return;
  }
  const char* start = bytes.data;
  const char* bad = utf8::find_invalid(start, start + bytes.length);
  const std::string_view good(start, static_cast<std::size_t>(bad - start));
  const std::string_view line = good.substr(good.rfind('\n') + 1);
  finding.place = {static_cast<std::uint64_t>(std::ranges::count(good, '\n')) + 1,
                   static_cast<std::uint64_t>(utf8::distance(line.begin(), line.end())) + 1};
  finding.text = "a byte that is not UTF-8: save the file as UTF-8, or name its encoding in the XML declaration";
}

}  // namespace tool
