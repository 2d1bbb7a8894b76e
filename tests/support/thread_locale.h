// Gives the calling thread a locale while it lives. The test environment's LOCPATH names the folder
// of the locales, which the build makes.
#ifndef QZJEXXML_TESTS_THREAD_LOCALE_H
#define QZJEXXML_TESTS_THREAD_LOCALE_H

#include <locale.h>

#include <stdexcept>
#include <string>

class ThreadLocale {
 public:
  explicit ThreadLocale(const std::string& name) : locale(newlocale(LC_ALL_MASK, name.c_str(), nullptr)) {
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
  locale_t locale;
  locale_t previous = nullptr;
};

#endif  // QZJEXXML_TESTS_THREAD_LOCALE_H
