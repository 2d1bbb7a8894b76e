// The stub for libnuvo: conversions in several locale encodings.
#include "support/thread_locale.h"

#include <nuvo.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <tuple>

namespace {

std::optional<std::string> toLcp(const std::u16string& text, int length = -1) {
  const std::unique_ptr<char, void (*)(void*)> converted(utf16_to_lcp(text.c_str(), length), nuvoFree);
  return converted ? std::optional<std::string>(std::in_place, converted.get(), nuvoStrlen(converted.get()))
                   : std::nullopt;
}

std::optional<std::u16string> toUtf16(const std::string& text, int length = -1) {
  const std::unique_ptr<char16_t, void (*)(void*)> converted(lcp_to_utf16(text.c_str(), length), nuvoFree);
  return converted ? std::optional<std::u16string>(converted.get()) : std::nullopt;
}

TEST(Nuvo, ConvertsUpToTheLength) {
  EXPECT_EQ(toLcp(u"abc\u00E9x", 4), "abc\u00E9");
  EXPECT_EQ(toUtf16("caf\u00E9", 5), u"caf\u00E9");
  EXPECT_EQ(toLcp(std::u16string(1000, u'\u00E9'))->size(), 2000u);
  const ThreadLocale locale("test.ISO-8859-1");
  EXPECT_EQ(toLcp(std::u16string(1000, u'\u00E9')), std::string(1000, '\xE9'));
  EXPECT_TRUE(utf16_to_lcp(nullptr, -1) == nullptr && lcp_to_utf16(nullptr, -1) == nullptr);
}

constexpr char16_t loneHigh[] = {u'a', 0xD83D, u'b', 0};
constexpr char16_t loneLast[] = {u'a', 0xD83D, 0};
constexpr char16_t twoHigh[] = {0xD83D, 0xD83D, 0xDE00, 0};
constexpr char16_t loneLow[] = {0xDE00, 0xD83D, 0};

TEST(Nuvo, ConvertsToEachEncoding) {
  const std::tuple<const char*, const char16_t*, const char*> cases[] = {
      {"C", u"", ""},
      {"C", u"caf\u00E9 \u65E5\U0001F600", "caf\u00E9 \u65E5\U0001F600"},
      {"C", loneHigh, "a\\uD83Db"},
      {"C", loneLast, "a\\uD83D"},
      {"C", twoHigh, "\\uD83D\U0001F600"},
      {"C", u"\u007F\u0080\uE000\uFF21", "\x7F\xC2\x80\uE000\uFF21"},
      {"C", u"\U0001F3FF\U0010FC00", "\U0001F3FF\U0010FC00"},
      {"C", loneLow, "\\uDE00\\uD83D"},
      {"C", u"\\u65E5 \\ \\\\ \\u \\uD83", "\\u65E5 \\ \\\\ \\u \\uD83"},
      {"C", u"\\uD83D a\\u005Cb \\u005CuD83D", "\\u005CuD83D a\\u005Cb \\u005Cu005CuD83D"},
      {"test.UTF-8", u"caf\u00E9 \u65E5\U0001F600", "caf\u00E9 \u65E5\U0001F600"},
      {"test.ISO-8859-1", u"caf\u00E9", "caf\xE9"},
      {"test.ISO-8859-1", u"\u00E9\u65E5\u672C\u00E9", "\xE9\\u65E5\\u672C\xE9"},
      {"test.ISO-8859-1", u"\U0001F600x", "\\uD83D\\uDE00x"},
      {"test.ISO-8859-1", u"\\u65E5 \\u00E9 \\u65e5", "\\u005Cu65E5 \\u00E9 \\u65e5"},
      {"test.ISO-8859-1", u"\\\u65E5", "\\\\u65E5"},
      {"test.ISO-8859-1", u"\\x65E5 \\u65:5 \\u65EG \\u65@5 \\u65E", "\\x65E5 \\u65:5 \\u65EG \\u65@5 \\u65E"},
      {"test.BIG5-HKSCS", u"\u00CA\u0304\u65E5\u00CA", "\x88\x62\xA4\xE9\x88\x66"},
      {"test.BIG5-HKSCS", u"\u00CA\U0001F600", "\x88\x66\\uD83D\\uDE00"},
  };
  for (const auto& [name, string, text] : cases) {
    const ThreadLocale locale(name);
    EXPECT_EQ(toLcp(string), text) << name;
  }
}

TEST(Nuvo, GivesDifferentTextsForDifferentStrings) {
  const std::u16string parts[] = {u"\\", u"u005C", u"uD83D", u"u65E5", u"\u65E5", {0xD83D}};
  for (const char* name : {"C", "test.ISO-8859-1"}) {
    const ThreadLocale locale(name);
    std::set<std::string> texts;
    std::set<std::u16string> strings;
    for (int i = 0; i < 6 * 6 * 6 * 6 * 6; ++i) {
      std::u16string string;
      for (int digits = i; digits > 0; digits /= 6) {
        string += parts[digits % 6];
      }
      strings.insert(string);
      texts.insert(*toLcp(string));
    }
    EXPECT_EQ(texts.size(), strings.size());
  }
}

TEST(Nuvo, ReadsTheLocaleEncoding) {
  EXPECT_EQ(toUtf16("caf\u00E9"), u"caf\u00E9");
  EXPECT_EQ(toUtf16("a\xE9"), std::nullopt);
  EXPECT_EQ(toUtf16("a\xC3"), std::nullopt);
  EXPECT_EQ(toUtf16("\x80"), std::nullopt);
  const ThreadLocale locale("test.ISO-8859-1");
  EXPECT_EQ(toUtf16("a\xE9"), u"a\u00E9");
  std::thread([] { EXPECT_EQ(toLcp(u"\u00E9"), "\u00E9"); }).join();
  EXPECT_EQ(toLcp(u"\u00E9"), "\xE9");
}

}  // namespace
