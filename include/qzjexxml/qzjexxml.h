// libqzjexxml reads the XML description files of the packaging tool chain. It also reads, encrypts and decrypts whole
// files. This header declares all functions, by subject; the types that they use have headers of their own.
//
// C++ programs should use manifest.h, which is built on these functions.
//
// Diagnostics are lines on the standard error stream (std::cerr); docs/diagnostics.md lists them with their causes.
//
// Threads: only one load may run at a time in the whole process. TermKIVData, TermNOXData and the functions for files
// may run at the same time as a load and as each other, if they share no argument and no file. The library starts no
// threads.
//
// Encoding: the texts of a record, and texts of the document in messages, are in the locale encoding, which is the
// encoding of the calling thread's LC_CTYPE locale. In the "C" locale it is UTF-8; a program that never calls setlocale
// has the "C" locale. A character that the encoding lacks is written as \u65E5, and an unpaired surrogate as \uD83D.
//
// Exit: the first load of a process registers exit handlers of libraries that Xerces-C uses. No load works after these
// handlers have run. A load in an atexit handler, or in the destructor of a static object, therefore works only if the
// handler was registered, or the object constructed, after the first load.
//
// Out of memory: a function frees everything that it allocated and throws std::bad_alloc. If a load runs out of memory
// while it builds the document or the tree, it may instead report "An error occurred during parsing" or "An error
// occurred Inside buildKivMaster". If a load runs out of memory while it starts Xerces-C, Xerces-C becomes unusable:
// every later load of the process throws std::bad_alloc too.
//
// Speed: every load starts and stops Xerces-C, which takes longer than loading a file of a few hundred entries. A
// program with many loads can link Xerces-C itself and keep it started, because Xerces-C counts its starts: the program
// calls xercesc::XMLPlatformUtils::Initialize() before the first load and Terminate() after the last.
#ifndef QZJEXXML_QZJEXXML_H
#define QZJEXXML_QZJEXXML_H

#include <qzjexxml/export.h>
#include <qzjexxml/kiv_byte_array.h>
#include <qzjexxml/kiv_data.h>
#include <qzjexxml/kiv_file_reader.h>

// ---- Archive manifests

// Loads the archive manifest `fileName` into a new record and stores the record in `*handle`. The caller owns the
// record and destroys it with TermKIVData.
//
// REQUIRES: `handle` is not null; no other load (InitKIVData, InitNOXData) runs at the same time, on any thread.
//
// Returns 0 and does nothing if `*handle` is not null. Otherwise returns 1, even if the load fails. A load that
// succeeds writes nothing to the standard error stream; a load that fails writes the reason. To learn whether a load
// failed, a program replaces the buffer of std::cerr during the call and checks whether anything was written, as
// docs/exported-functions.md shows. The whole process shares std::cerr: no other thread may write to it during the
// call.
//
// After a failure the record is empty, with one exception: after "An error occurred Inside buildKivMaster" or "A DOM
// error occurred Inside buildKivMaster" it holds the part that was complete. After std::bad_alloc `*handle` is still
// null. The diagnostics call every document "JexXml", whatever the name of the file.
extern "C" QZJEXXML_EXPORT int InitKIVData(const char* fileName, KIVData** handle);

// Destroys the record in `*handle` and sets `*handle` to null. Does nothing if `*handle` is null. Returns 1. May run at
// any time, on any thread. REQUIRES: `handle` is not null.
extern "C" QZJEXXML_EXPORT int TermKIVData(KIVData** handle);

// ---- Project descriptions

// Loads the project description `fileName` to check it. Writes its errors to the standard error stream, with the
// diagnostics of InitKIVData; writes nothing for a good file. There is no record: `*handle` is never written. Does
// nothing if `*handle` is not null. Always returns 0.
//
// REQUIRES: `handle` is not null; no other load (InitKIVData, InitNOXData) runs at the same time, on any thread.
extern "C" QZJEXXML_EXPORT int InitNOXData(const char* fileName, void** handle);

// Sets `*handle` to null and frees nothing. Returns 1. REQUIRES: `handle` is not null.
extern "C" QZJEXXML_EXPORT int TermNOXData(void** handle);

// ---- Reading files

// Reads any file into `out`, byte for byte, and returns true. On failure writes one of these messages, leaves `out`
// unchanged and returns false:
//
//   "Parameter Error!"                  `fileName` is null or empty
//   "Could not open file: " + fileName  it cannot be opened, or is a socket
//   "Nothing to read!"                  it is empty, has 2 GiB or more, or is a directory, FIFO or device (which are
//                                       not opened); or reading fails
//
// Thread-safe if `out` is not shared.
QZJEXXML_EXPORT bool ReadXmlFile(const char* fileName, KIVByteArray& out);

// Returns the content of a file followed by one NUL byte, in a block from new[] that the caller frees with delete[]. On
// failure writes a message of the other ReadXmlFile and returns null. The length is not returned. Thread-safe.
extern "C" QZJEXXML_EXPORT char* ReadXmlFile(const char* fileName);

// ---- Encrypting files
//
// A passphrase is a NUL-terminated text of any bytes. The functions do not modify it. The stub of the crypto library in
// this project rejects an empty passphrase like a wrong passphrase, without a message. The functions wipe their own
// copies of passphrases and plaintexts; the caller has to wipe the plaintext that it receives. The functions are
// thread-safe if no array and no file is shared.

// Encrypts `fileName` into another file and returns true. The name of that file is `fileName` with the first ".xml"
// anywhere in the path replaced by ".enc", or with ".enc" appended if there is no ".xml". An existing file is
// overwritten. Errors during the write are not detected: decrypt the file to be sure.
//
// If the crypto library fails, returns false without a message, and changes no file. On any other failure writes one of
// these messages and returns false:
//
//   "File name is null or empty!"
//   "Could not open file: " + the name  the file or the encrypted file cannot be opened, or is a socket; or the
//                                       encrypted file is a link to the file itself
//   "Could not read file!"              it is empty, has 2 GiB or more, or is a directory, FIFO or device; or
//                                       reading fails
//
// REQUIRES: `passphrase` is not null.
QZJEXXML_EXPORT bool EncryptFile(const char* fileName, char* passphrase);

// Decrypts `fileName` into `out` and returns true. If the file cannot be read, writes a message of EncryptFile, leaves
// `out` unchanged and returns false. If the crypto library fails (a wrong passphrase, a damaged file), returns false
// without a message; `out` then holds what the crypto library left in it. The stub of this project leaves it empty.
//
// REQUIRES: `passphrase` is not null.
QZJEXXML_EXPORT bool DecryptXmlFile(const char* fileName, KIVByteArray& out, char* passphrase);

// Returns the plaintext of `fileName` followed by one NUL byte, in a block from new[] that the caller frees with
// delete[]. Returns null if the plaintext is empty. Fails like the other DecryptXmlFile, with the same messages, and
// then returns null.
//
// REQUIRES: `passphrase` is not null.
extern "C" QZJEXXML_EXPORT char* DecryptXmlFile(const char* fileName, char* passphrase);

// Returns whether `fileName` can be decrypted with the passphrase. Writes the messages of DecryptXmlFile, but no file.
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
