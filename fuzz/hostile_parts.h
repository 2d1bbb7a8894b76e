// What hostile documents are put together from.
#ifndef QZJEXXML_FUZZ_HOSTILE_PARTS_H
#define QZJEXXML_FUZZ_HOSTILE_PARTS_H

#include <cstddef>
#include <functional>
#include <string>

namespace hostile {

using std::size_t;
using Part = std::function<std::string(size_t)>;

// part(0), part(1), ... until they are `size` bytes.
std::string fill(size_t size, const Part& part);

// part(0) to part(count - 1) with a separator between them.
std::string join(size_t count, const std::string& separator, const Part& part);

std::string repeat(size_t count, const std::string& part);

std::string repeatTo(size_t size, const std::string& part);

std::string number(size_t i);

std::string named(const std::string& prefix, size_t i);

// Names that the parser library's string hash, which multiplies by 38, all gives the same value.
std::string colliding(size_t i);

std::string withDtd(const std::string& declarations, const std::string& root);

std::string inRoot(const std::string& content);

// One declaration that every part of it makes worse, and elements that use it, half of the size each.
std::string declaredAndUsed(size_t size, const std::string& declarations, const std::string& use);

// Entities e0, e1, ...: each refers `width` times to the one before.
std::string tower(const std::string& kind, const std::string& reference, const std::string& ground, size_t height,
                  size_t width);

// (x0|x1|...) with `separator` between names, of about `size` bytes.
std::string group(size_t size, const std::string& separator, const Part& name);

Part numbered(const std::string& prefix);

// A content model whose automaton has a state for each of the last `length` choices.
std::string explosive(size_t length);

}  // namespace hostile

#endif  // QZJEXXML_FUZZ_HOSTILE_PARTS_H
