// XercesSession: keeps Xerces-C started during its lifetime.
#pragma once

#include <optional>
#include <string>

namespace jexxml {

// Xerces-C counts its starts, and has to be stopped as often as it was started. The constructor starts it and the
// destructor stops it. If a start runs out of memory, Xerces-C stays half started: from then on it must be neither
// started nor stopped.
class XercesSession {
 public:
  // Throws std::bad_alloc if Xerces-C is half started, if this start runs out of memory, or if less than 1 MiB is free.
  XercesSession();
  XercesSession(const XercesSession&) = delete;
  XercesSession& operator=(const XercesSession&) = delete;
  ~XercesSession();

  // The reason why Xerces-C did not start, in the locale encoding; empty if it is started.
  const std::optional<std::string>& failure() const { return startFailure; }

 private:
  std::optional<std::string> startFailure;
};

}  // namespace jexxml
