// QZJEXXML_EXPORT: marks what a shared library lets others see.
#ifndef QZJEXXML_EXPORT_H
#define QZJEXXML_EXPORT_H

#define QZJEXXML_EXPORT __attribute__((visibility("default")))

#endif  // QZJEXXML_EXPORT_H
