#include <qzjexxml/qzjexxml.h>

const char* libqzjexxml_version = "7.1.0.144";
const char* libqzjexxml_build_date = "July 26, 2005";
