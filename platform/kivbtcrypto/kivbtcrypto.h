// Encryption of bytes with a passphrase.
//
// A stub for libqzkivbtcrypto of the tool chain, with the two functions that libqzjexxml calls.
// docs/encrypted-file-format.md describes the format. Thread-safe if no array is shared.
#ifndef KIVBTCRYPTO_H
#define KIVBTCRYPTO_H

#include <qzjexxml/export.h>
#include <qzjexxml/kiv_byte_array.h>

// Both functions read `input` and `passphrase`, which are raw bytes without a NUL. On success they store the result in
// `output`, in a new block from new[], and return true. On failure they make `output` empty and return false. They free
// the block that `output` held before. They fail if the passphrase is empty, or if libsodium cannot be initialized.
// They throw std::bad_alloc when out of memory, also while they derive the key.

// Encrypts `input`, which may be empty. Two calls never give the same bytes.
QZJEXXML_EXPORT bool kivbtcPassphraseEncrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase);

// Decrypts and authenticates `input`. Also fails if the passphrase is wrong, or if a byte of the file was changed,
// removed or added. Fails before it derives a key if the header is unknown, or asks for more than 10 passes or 256 MiB.
QZJEXXML_EXPORT bool kivbtcPassphraseDecrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase);

#endif  // KIVBTCRYPTO_H
