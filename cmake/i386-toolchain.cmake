# 32-bit x86 Linux: Debian's cross compiler, and a 32-bit system in build/i386-sysroot, which script/setup makes. The
# dynamic loader of that system runs the programs, or qemu-user does.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)

get_filename_component(i386_root ${CMAKE_CURRENT_LIST_DIR}/../build/i386-sysroot ABSOLUTE)
get_filename_component(i386_runner_file ${CMAKE_CURRENT_LIST_DIR}/../build/i386-runner ABSOLUTE)
if(NOT EXISTS ${i386_root}/packages OR NOT EXISTS ${i386_runner_file})
  message(FATAL_ERROR "There is no 32-bit system in ${i386_root}: run script/setup i386")
endif()
set(CMAKE_SYSROOT ${i386_root})
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# iconv loads its encodings from GCONV_PATH. script/setup chooses how programs run.
set(i386_libraries ${i386_root}/usr/lib/i386-linux-gnu)
file(STRINGS ${i386_runner_file} i386_runner)
if(i386_runner STREQUAL qemu-user)
  set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/qemu-i386 -L ${i386_root} -E GCONV_PATH=/usr/lib/i386-linux-gnu/gconv
    -E EMULATED=1)
else()
  set(CMAKE_CROSSCOMPILING_EMULATOR
      /usr/bin/env GCONV_PATH=${i386_libraries}/gconv
      ${i386_root}/lib/ld-linux.so.2 --library-path ${i386_root}/lib/i386-linux-gnu:${i386_libraries})
endif()
