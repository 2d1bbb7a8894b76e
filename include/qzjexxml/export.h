// QZJEXXML_EXPORT: makes a class, function or variable visible outside the shared library.
#ifndef QZJEXXML_EXPORT_H
#define QZJEXXML_EXPORT_H

#define QZJEXXML_EXPORT __attribute__((visibility("default")))

#endif  // QZJEXXML_EXPORT_H
