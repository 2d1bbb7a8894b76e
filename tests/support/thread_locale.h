// Gives the calling thread one of the locales that the build makes, while it lives.
#ifndef QZJEXXML_TESTS_THREAD_LOCALE_H
#define QZJEXXML_TESTS_THREAD_LOCALE_H

#include <locale.h>
#include <stdlib.h>

#include <stdexcept>
#include <string>

// For the leak checker: the C library's newlocale does not free its own parsed copy of LOCPATH.
extern "C" [[gnu::used, gnu::visibility("default")]] inline const char* __lsan_default_suppressions() {
  return "leak:__argz_add_sep";
}

class ThreadLocale {
 public:
  explicit ThreadLocale(const std::string& name) {
    setenv("LOCPATH", LOCALE_FOLDER, 1);
    locale = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
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
  locale_t locale = nullptr;
  locale_t previous = nullptr;
};

#endif  // QZJEXXML_TESTS_THREAD_LOCALE_H
