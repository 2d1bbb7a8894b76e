#!/usr/bin/env bash
# Compares the exported symbols of a libqzjexxml.so, with kinds and versions, with the list below.
set -euo pipefail
library=$1

# Kinds of nm: T function, D variable, V weak object, A version node. Link-time optimisation makes some weak symbols
# strong.
expected='A libqzjexxml.INTERNAL
A v7.0
D libqzjexxml_build_date@@v7.0
D libqzjexxml_version@@v7.0
T DecryptFile(char const*, char*)@@v7.0
T DecryptXmlFile(char const*, KIVByteArray&, char*)@@v7.0
T DecryptXmlFile@@v7.0
T EncryptFile(char const*, char*)@@v7.0
T InitKIVData@@v7.0
T InitNOXData@@v7.0
T ReadXmlFile(char const*, KIVByteArray&)@@v7.0
T ReadXmlFile@@v7.0
T TermKIVData@@v7.0
T TermNOXData@@v7.0
V typeinfo for KIVByteArray@@v7.0
V typeinfo for KIVFileReaderWithoutTransform@@v7.0
V typeinfo for KIVFileReader@@v7.0
V typeinfo name for KIVByteArray@@v7.0
V typeinfo name for KIVFileReaderWithoutTransform@@v7.0
V typeinfo name for KIVFileReader@@v7.0
V vtable for KIVByteArray@@v7.0
V vtable for KIVFileReaderWithoutTransform@@v7.0
V vtable for KIVFileReader@@v7.0
name libqzjexxml.so, base libqzjexxml.so'

exported=$(nm -DC --defined-only --with-symbol-versions "$library" |
  sed -E 's/^[0-9a-f]* //; s/^[DR] (vtable|typeinfo)/V \1/')
soname=$(readelf -Wd "$library" | sed -n 's/.*soname: \[\(.*\)\]/\1/p')
base=$(readelf -WV "$library" | sed -n 's/.*Flags: BASE .*Name: //p')
diff <(LC_ALL=C sort <<<"$expected") <(LC_ALL=C sort <<<"$exported
name $soname, base $base")
