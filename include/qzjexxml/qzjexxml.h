// libqzjexxml: reads the XML description files of the packaging tool chain, and reads, encrypts and
// decrypts whole files.
//
// Diagnostics are lines on the standard error stream (std::cerr); the texts stand with each function.
// Allocation failures reach the caller as std::bad_alloc, with everything released that the call made.
#ifndef QZJEXXML_QZJEXXML_H
#define QZJEXXML_QZJEXXML_H

#include <qzjexxml/kiv_byte_array.h>
#include <qzjexxml/kiv_data.h>
#include <qzjexxml/kiv_file_reader.h>

#define QZJEXXML_EXPORT __attribute__((visibility("default")))

extern "C" {

// The library's version, "7.1.0.144", and the date of that version.
QZJEXXML_EXPORT extern const char* libqzjexxml_version;
QZJEXXML_EXPORT extern const char* libqzjexxml_build_date;

// Loads the archive manifest `fileName` into a new record and stores it in `*handle`; the caller owns
// it until TermKIVData.
//
// REQUIRES: `handle` is not null; no other load (InitKIVData, InitNOXData) runs meanwhile, on any thread.
//
// Returns 0 and does nothing else when `*handle` is not null. Otherwise returns 1, also when the load
// fails: the record is then empty (after an exception during the build: filled with what was built
// before it), and only the standard error stream tells. A load that succeeds writes nothing. Messages:
//
//   the text of ReadXmlFile, then "Error building input source"   the file cannot be read
//   "Error at file "JexXml", line L, column C" or "Fatal Error at file ...", then a line
//   "   Message: ...", for each error; then "Error buiding DOM"   the document is not well-formed XML,
//                                                                 or not valid by its own DTD
//   "Error during Xerces-c Initialization.", then a line
//   "  Exception message:..."                                     the parser library does not start
//   "An error occurred Inside buildKivMaster", "A DOM error occurred Inside buildKivMaster" or
//   "Error Allocating Common Strings"                             the document cannot be walked
//
// The library calls every document "JexXml" in its messages, whatever the file's name.
QZJEXXML_EXPORT int InitKIVData(const char* fileName, KIVData** handle);

// Destroys the record in `*handle` and sets the handle to null; does nothing for a null record.
// Returns 1. May run at any time, on any thread. REQUIRES: `handle` is not null.
QZJEXXML_EXPORT int TermKIVData(KIVData** handle);

// Loads the project description `fileName`, checks it and reports what is wrong on the standard error
// stream, with the messages of InitKIVData; a good file writes nothing. Nothing is handed back: `*handle`
// is never written, and when it is not null nothing is done. Returns 0 in every case.
//
// REQUIRES: `handle` is not null; no other load (InitKIVData, InitNOXData) runs meanwhile, on any thread.
QZJEXXML_EXPORT int InitNOXData(const char* fileName, void** handle);

// Sets the handle to null; nothing is freed. Returns 1. REQUIRES: `handle` is not null.
QZJEXXML_EXPORT int TermNOXData(void** handle);

// Returns the content of a file followed by one NUL byte, in a block from new[] that the caller frees
// with delete[]; null, after a message, when there is none to return. The length is not returned.
// Messages as for the other ReadXmlFile.
QZJEXXML_EXPORT char* ReadXmlFile(const char* fileName);

// Returns what DecryptXmlFile below gives, followed by one NUL byte, in a block from new[] that the
// caller frees with delete[]; null when that fails or the plaintext is empty.
QZJEXXML_EXPORT char* DecryptXmlFile(const char* fileName, char* passphrase);

}  // extern "C"

// Reads any file into `out`, byte for byte, and returns true. Returns false after a message, with
// `out` unchanged:
//
//   "Parameter Error!"                  `fileName` is null or empty
//   "Could not open file: " + fileName  it cannot be opened
//   "Nothing to read!"                  it is empty, of 2 GiB or more, not a regular file, or reading fails
//
// Thread-safe as long as `out` is not shared.
QZJEXXML_EXPORT bool ReadXmlFile(const char* fileName, KIVByteArray& out);

// The three functions below work under a passphrase: a NUL-terminated text of any bytes, which they
// don't modify. REQUIRES: it is not null. Copies of passphrases and plaintexts that they make are wiped.
// Each returns false after one of the messages
//
//   "File name is null or empty!"
//   "Could not open file: " + fileName
//   "Could not read file!"              it is empty, of 2 GiB or more, not a regular file, or reading fails
//
// and false without a message when the crypto library refuses. Thread-safe as long as no array or file
// is shared.

// Decrypts `fileName` into `out`. When the crypto library refuses (a wrong passphrase, a damaged
// file), `out` is what it left: the stand-in of this project leaves it empty. After a message, `out` is
// unchanged. The plaintext is the caller's to wipe.
QZJEXXML_EXPORT bool DecryptXmlFile(const char* fileName, KIVByteArray& out, char* passphrase);

// Returns whether `fileName` decrypts under the passphrase. Writes no file.
QZJEXXML_EXPORT bool DecryptFile(const char* fileName, char* passphrase);

// Encrypts `fileName` into the file beside it whose name has ".enc" for the first ".xml" anywhere in the
// path, or else ".enc" appended; replaces what that file held. When the crypto library refuses, no file
// is touched. Writing is not checked: decrypt to be sure. False too after
// "Could not open file: " + the encrypted file's name.
QZJEXXML_EXPORT bool EncryptFile(const char* fileName, char* passphrase);

#endif  // QZJEXXML_QZJEXXML_H
