// Sets the locale of the calling thread to one of the locales of the tests during its lifetime.
#pragma once

#include <locale.h>
#include <stdlib.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

#include <stdexcept>
#include <string>

class ThreadLocale {
 public:
  explicit ThreadLocale(const std::string& name) {
    setenv("LOCPATH", LOCALE_DIRECTORY, 1);
    locale = newLocale(name.c_str());
    unsetenv("LOCPATH");
    if (locale == nullptr) {
      throw std::runtime_error("no locale " + name);
    }
    previous = uselocale(locale);
  }
  ThreadLocale(const ThreadLocale&) = delete;
  ThreadLocale& operator=(const ThreadLocale&) = delete;
  ~ThreadLocale() {
    uselocale(previous);
    freelocale(locale);
  }

 private:
  // The C library does not free its parsed copy of LOCPATH. The leak checker must not report that.
  static locale_t newLocale(const char* name) {
#if defined(__SANITIZE_ADDRESS__)
    const __lsan::ScopedDisabler disabler;
#endif
    return newlocale(LC_ALL_MASK, name, nullptr);
  }

  locale_t locale = nullptr;
  locale_t previous = nullptr;
};
