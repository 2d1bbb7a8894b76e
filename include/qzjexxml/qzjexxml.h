// libqzjexxml: reads the XML description files of the packaging tool chain, and reads, encrypts and
// decrypts whole files. All its functions, by subject; the types they use have headers of their own.
//
// C++ programs are better served by manifest.h, which is written over these functions.
//
// Diagnostics are lines on the standard error stream (std::cerr); docs/diagnostics.md lists them with their causes.
//
// Threads: one load at a time in the whole process; TermKIVData, TermNOXData and the functions on files run beside
// it and beside each other, as long as no argument and no file is shared. The library starts no threads.
//
// Texts of a record are in the code page of the calling thread's LC_CTYPE locale, and so are texts of the document in
// messages. In the "C" locale, which a program has that never calls setlocale, it is UTF-8. A character that the code
// page lacks is written as \u65E5, and an unpaired surrogate as \uD83D.
//
// A load in an atexit handler, or in the destructor of a static object, works only if that was registered, or
// constructed, after the process's first load: libraries below the parser library end in handlers of their own,
// which they register in that load.
//
// Out of memory: std::bad_alloc reaches the caller, after all that the call allocated has been freed. Where it
// happens while the document or the tree is built, the load may report it instead, as "An error occurred during
// parsing" or "An error occurred Inside buildKivMaster". Out of memory while the parser library starts leaves that
// library unusable: every later load of the process throws std::bad_alloc too.
//
// Every load initializes and terminates the parser library, which takes longer than to load a file of some hundred
// entries. A program that makes many loads links Xerces-C itself and keeps it initialized, which is reference-counted:
// xercesc::XMLPlatformUtils::Initialize() before the first load and Terminate() after the last.
#ifndef QZJEXXML_QZJEXXML_H
#define QZJEXXML_QZJEXXML_H

#include <qzjexxml/export.h>
#include <qzjexxml/kiv_byte_array.h>
#include <qzjexxml/kiv_data.h>
#include <qzjexxml/kiv_file_reader.h>

// ---- Archive manifests

// Loads the archive manifest `fileName` into a new record and stores it in `*handle`; the caller owns it until
// TermKIVData.
//
// REQUIRES: `handle` is not null; no other load (InitKIVData, InitNOXData) runs meanwhile, on any thread.
//
// Returns 0 and does nothing else when `*handle` is not null. Otherwise returns 1, also when the load fails:
// a load that succeeds writes nothing to the standard error stream, one that fails writes why, and that is how
// a caller learns it. A program that has to know replaces the buffer of std::cerr for the time of the call and
// looks whether anything was written, as docs/exported-functions.md shows. That buffer is the whole process's: no other
// thread may write to std::cerr meanwhile.
//
// After a failure the record is empty; after a reported exception during the build it holds what was complete before.
// After std::bad_alloc `*handle` is still null. The diagnostics call every document "JexXml", whatever the file's name.
extern "C" QZJEXXML_EXPORT int InitKIVData(const char* fileName, KIVData** handle);

// Destroys the record in `*handle` and sets the handle to null; does nothing for a null record. Returns 1. May
// run at any time, on any thread. REQUIRES: `handle` is not null.
extern "C" QZJEXXML_EXPORT int TermKIVData(KIVData** handle);

// ---- Project descriptions

// Loads the project description `fileName`, checks it and reports what is wrong on the standard error stream,
// with the diagnostics of InitKIVData; a good file writes nothing. Nothing is handed back: `*handle`
// is never written, and when it is not null nothing is done. Returns 0 in every case.
//
// REQUIRES: `handle` is not null; no other load (InitKIVData, InitNOXData) runs meanwhile, on any thread.
extern "C" QZJEXXML_EXPORT int InitNOXData(const char* fileName, void** handle);

// Sets `*handle` to null; nothing is freed. Returns 1. REQUIRES: `handle` is not null.
extern "C" QZJEXXML_EXPORT int TermNOXData(void** handle);

// ---- Reading files

// Reads any file into `out`, byte for byte, and returns true. Returns false after a message, with `out` as it
// was:
//
//   "Parameter Error!"                  `fileName` is null or empty
//   "Could not open file: " + fileName  it cannot be opened, or is a socket
//   "Nothing to read!"                  it is empty, of 2 GiB or more, a directory, FIFO or device (which are not
//                                       opened), or reading fails
//
// Thread-safe as long as `out` is not shared.
QZJEXXML_EXPORT bool ReadXmlFile(const char* fileName, KIVByteArray& out);

// Returns the content of a file followed by one NUL byte, in a block from new[] that the caller frees with
// delete[]; null, after a message of the other ReadXmlFile, when there is none to return. The length is not
// returned. Thread-safe.
extern "C" QZJEXXML_EXPORT char* ReadXmlFile(const char* fileName);

// ---- Encrypting files
//
// A passphrase is a NUL-terminated text of any bytes, which is not modified. The stub of this project refuses an
// empty one, as it refuses a wrong one: without a message. Copies of passphrases and
// plaintexts that the functions make are wiped; what they hand out is the caller's to wipe. All are thread-safe
// as long as no array or file is shared.

// Encrypts `fileName` into the file beside it whose name has ".enc" for the first ".xml" anywhere in the path,
// or else ".enc" appended; replaces what that file held, and returns true. Writing is not checked: decrypt to
// be sure. Returns false without a message, and with no file touched, when the crypto library refuses; or after
//
//   "File name is null or empty!"
//   "Could not open file: " + the name  the file, or the encrypted one, cannot be opened, or is a socket; or the
//                                       encrypted one is a link to the file itself
//   "Could not read file!"              it is empty, of 2 GiB or more, a directory, FIFO or device, or reading fails
//
// REQUIRES: `passphrase` is not null.
QZJEXXML_EXPORT bool EncryptFile(const char* fileName, char* passphrase);

// Decrypts `fileName` into `out` and returns true. Returns false after a message of EncryptFile, with `out` as it
// was; or without one when the crypto library refuses (a wrong passphrase, a damaged file): `out` is then what
// that library left, which for the stub of this project is nothing.
//
// REQUIRES: `passphrase` is not null.
QZJEXXML_EXPORT bool DecryptXmlFile(const char* fileName, KIVByteArray& out, char* passphrase);

// Returns the plaintext of `fileName` followed by one NUL byte, in a block from new[] that the caller frees with
// delete[]; null for an empty plaintext, and where the other DecryptXmlFile returns false, with its messages.
//
// REQUIRES: `passphrase` is not null.
extern "C" QZJEXXML_EXPORT char* DecryptXmlFile(const char* fileName, char* passphrase);

// Returns whether `fileName` decrypts under the passphrase; messages as for DecryptXmlFile. Writes no file.
//
// REQUIRES: `passphrase` is not null.
QZJEXXML_EXPORT bool DecryptFile(const char* fileName, char* passphrase);

// ---- Version

// The library's version, "7.1.0.144", and the date of that version, "July 26, 2005".
extern "C" {
QZJEXXML_EXPORT extern const char* libqzjexxml_version;
QZJEXXML_EXPORT extern const char* libqzjexxml_build_date;
}

#endif  // QZJEXXML_QZJEXXML_H
