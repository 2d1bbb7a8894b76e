#include <qzjexxml/qzjexxml.h>

// The build defines both macros from the project's version.
const char* libqzjexxml_version = VERSION;
const char* libqzjexxml_build_date = VERSION_DATE;
