# Writes the header OUTPUT, with the name of the RELEASE, and of the commit where SOURCE is a checkout of git. Configuring and
# every build run it; the header changes only when they do.
cmake_minimum_required(VERSION 3.25)
if(EXISTS ${SOURCE}/.git)
  execute_process(COMMAND git -C ${SOURCE} describe --always --exclude=* --abbrev=12 --dirty
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(commit)
    string(APPEND RELEASE " (${commit})")
  endif()
endif()
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "inline constexpr char release[] = \"${RELEASE}\";\n")
