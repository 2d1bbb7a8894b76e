// Collects the output to std::cerr during its lifetime.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

class CapturedStderr {
 public:
  CapturedStderr() : standard(std::cerr.rdbuf(captured.rdbuf())) {}
  CapturedStderr(const CapturedStderr&) = delete;
  CapturedStderr& operator=(const CapturedStderr&) = delete;
  ~CapturedStderr() { std::cerr.rdbuf(standard); }

  // The output since the last call.
  std::string take() {
    std::string text = captured.str();
    captured.str("");
    return text;
  }

 private:
  std::ostringstream captured;
  std::streambuf* standard;
};
