#include "hostile_parts.h"

namespace hostile {

std::string fill(size_t size, const Part& part) {
  std::string text;
  for (size_t i = 0; text.size() < size; ++i) {
    text += part(i);
  }
  return text;
}

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

std::string declaredAndUsed(size_t size, const std::string& declarations, const std::string& use) {
  return withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY>" + declarations, inRoot(repeatTo(size / 2, use)));
}

std::string tower(const std::string& kind, const std::string& reference, const std::string& ground, size_t height,
                  size_t width) {
  return join(height, "", [&](size_t i) {
    const std::string value = i == 0 ? ground : repeat(width, reference + named("e", i - 1) + ";");
    return "<!ENTITY " + kind + named("e", i) + " '" + value + "'>";
  });
}

std::string group(size_t size, const std::string& separator, const Part& name) {
  return "(" + name(0) + fill(size, [&](size_t i) { return separator + name(i + 1); }) + ")";
}

Part numbered(const std::string& prefix) {
  return [prefix](size_t i) { return named(prefix, i); };
}

std::string explosive(size_t length) {
  return "((a|b)*,a," + join(length, ",", [](size_t) { return "(a|b)"; }) + ")";
}

}  // namespace hostile
