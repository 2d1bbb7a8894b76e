# Writes the header OUTPUT with the RELEASE, and with the commit if SOURCE is a git checkout. Runs at each configuration
# and at each build; the header is rewritten only if its text changes.
cmake_minimum_required(VERSION 3.25)
if(EXISTS ${SOURCE}/.git)
  execute_process(COMMAND git -C ${SOURCE} describe --always --exclude=* --abbrev=12 --dirty
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(commit)
    string(APPEND RELEASE " (${commit})")
  endif()
endif()
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "inline constexpr char release[] = \"${RELEASE}\";\n")
