// Encryption of bytes under a passphrase.
//
// A stub for the tool chain's own libqzkivbtcrypto: the two functions that libqzjexxml calls. What
// it writes is described in docs/encrypted-file-format.md. Thread-safe as long as arrays are not shared.
#ifndef KIVBTCRYPTO_H
#define KIVBTCRYPTO_H

#include <qzjexxml/export.h>
#include <qzjexxml/kiv_byte_array.h>

// Both read `input` and `passphrase` (raw bytes, without a NUL) and return true after storing the
// result in `output`, in a block of its own from new[]; what `output` held before is released. On
// false `output` is empty. An empty passphrase is refused with false, and so is a failure to start
// libsodium. Throws std::bad_alloc, also where there is no memory to derive the key.

// Gives a file that holds `input`, which may be empty. Two calls never give the same bytes.
QZJEXXML_EXPORT bool kivbtcPassphraseEncrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase);

// Gives the bytes that were encrypted into `input`, all of them authenticated. False as well for a
// wrong passphrase, for a file of which any byte was changed, removed or added, and for a header that
// is unknown or asks for more than 10 passes or 256 MiB, before anything is derived.
QZJEXXML_EXPORT bool kivbtcPassphraseDecrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase);

#endif  // KIVBTCRYPTO_H
