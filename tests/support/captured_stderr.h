// Collects what is written to std::cerr while it lives.
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

  // What was written since the last call.
  std::string take() {
    std::string text = captured.str();
    captured.str("");
    return text;
  }

 private:
  std::ostringstream captured;
  std::streambuf* standard;
};
