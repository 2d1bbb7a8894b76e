// Conversions between UTF-16 strings and texts in the locale encoding.
//
// A stub for libnuvo of the tool chain, with the functions that libqzjexxml calls. The locale encoding is the encoding
// of the calling thread's LC_CTYPE locale. In the "C" locale it is UTF-8; a program that never calls setlocale has that
// locale. The C library converts encodings other than UTF-8, and loads a module for each.
//
// Thread-safe. Functions that allocate throw std::bad_alloc.
#ifndef NUVO_H
#define NUVO_H

#include <cstddef>

extern "C" {

// Converts `length` bytes of `text`, or all bytes up to its NUL if `length` is negative. Returns a new NUL-terminated
// string, to be freed with nuvoFree. Returns null if `text` is null, or not valid in the locale encoding.
__attribute__((visibility("default"))) char16_t* lcp_to_utf16(const char* text, int length);

// Converts `length` code units of `text`, or all code units up to its NUL if `length` is negative. Returns a new
// NUL-terminated text, to be freed with nuvoFree. Returns null only if `text` is null.
//
// A character that the encoding lacks, or an unpaired surrogate, is written as \uHHHH with four capital hexadecimal
// digits for each code unit. Different strings give different texts: if a string literally contains such an escape, its
// backslash is written as \u005C. The same happens to a literal \u005C that would be read as that backslash. Everything
// else is written unchanged: in a Unicode encoding, everything but unpaired surrogates and literal escapes of
// surrogates.
__attribute__((visibility("default"))) char* utf16_to_lcp(const char16_t* text, int length);

// The number of bytes before the NUL. 0 if `text` is null.
__attribute__((visibility("default"))) std::size_t nuvoStrlen(const char* text);

// Frees the result of a conversion. Does nothing if it is null.
__attribute__((visibility("default"))) void nuvoFree(void* text);

}  // extern "C"

#endif  // NUVO_H
