// Conversions between the parser's 16-bit strings and texts in the local code page.
//
// A stub for the tool chain's own libnuvo: just the functions that libqzjexxml calls. The local
// code page is the codeset of the calling thread's LC_CTYPE locale; in the "C" locale, which is what a
// program that never calls setlocale has, it is UTF-8. Encodings other than UTF-8 are converted by the C library,
// which loads a module for each.
//
// Thread-safe. Functions that allocate throw std::bad_alloc.
#ifndef NUVO_H
#define NUVO_H

#include <cstddef>

extern "C" {

// Converts `length` bytes of `text`, or all up to its NUL when `length` is negative. Returns a new
// NUL-terminated string for nuvoFree, or null for a null text and for bytes that the code page does
// not define.
__attribute__((visibility("default"))) char16_t* lcp_to_utf16(const char* text, int length);

// Converts `length` code units of `text`, or all up to its NUL when `length` is negative. Returns a new
// NUL-terminated text for nuvoFree; null only for a null `text`.
//
// What the code page cannot represent, an unpaired surrogate among it, is written as \uHHHH with four
// capital hexadecimal digits for each code unit. Different strings give different texts: where a string
// has such an escape literally, its backslash is written as \u005C, and likewise where \u005C itself would be
// read so. All else stands as it is; in a Unicode code page that is everything but unpaired surrogates and
// literal escapes of surrogates.
__attribute__((visibility("default"))) char* utf16_to_lcp(const char16_t* text, int length);

// The number of bytes before the NUL; 0 for null.
__attribute__((visibility("default"))) std::size_t nuvoStrlen(const char* text);

// Releases what a conversion returned; null is ignored.
__attribute__((visibility("default"))) void nuvoFree(void* text);

}  // extern "C"

#endif  // NUVO_H
