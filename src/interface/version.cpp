#include <qzjexxml/qzjexxml.h>

// Both macros are the build's.
const char* libqzjexxml_version = VERSION;
const char* libqzjexxml_build_date = VERSION_DATE;
