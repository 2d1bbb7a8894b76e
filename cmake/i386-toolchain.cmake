# 32-bit x86 Linux: Debian's cross compiler, a 32-bit system in build/i386-sysroot (script/setup makes
# it), and that system's own dynamic loader to run what was built.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)

get_filename_component(i386_root ${CMAKE_CURRENT_LIST_DIR}/../build/i386-sysroot ABSOLUTE)
set(CMAKE_SYSROOT ${i386_root})
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# iconv loads its code pages from where GCONV_PATH says.
set(i386_libraries ${i386_root}/usr/lib/i386-linux-gnu)
set(CMAKE_CROSSCOMPILING_EMULATOR
    /usr/bin/env GCONV_PATH=${i386_libraries}/gconv
    ${i386_root}/lib/ld-linux.so.2 --library-path ${i386_root}/lib/i386-linux-gnu:${i386_libraries})
