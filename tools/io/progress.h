// A line on the terminal that shows how far long work is.
#pragma once

#include <cstddef>
#include <string>

namespace tool {

// On a terminal on the standard error stream, where there are many files, or the file is large.
void showProgress(std::size_t number, std::size_t count, const std::string& file);

// Comes before all else that is written, on either stream.
void clearProgress();

}  // namespace tool
