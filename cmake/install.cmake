# What is installed, how it is found there, and the Debian package.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/qzjexxml)
set(installed_libraries qzjexxml)
foreach(library nuvo qzkivbtcrypto)
  get_target_property(is_imported ${library} IMPORTED)
  if(NOT is_imported)
    list(APPEND installed_libraries ${library})
  endif()
endforeach()

install(TARGETS qzjexxml_tool)
install(TARGETS ${installed_libraries} EXPORT qzjexxml)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/qzjexxml TYPE INCLUDE)
install(FILES ${PROJECT_SOURCE_DIR}/tools/qzjexxml.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

install(EXPORT qzjexxml NAMESPACE qzjexxml:: FILE qzjexxml-config.cmake DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qzjexxml-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qzjexxml-config-version.cmake DESTINATION ${package_folder})

configure_file(${CMAKE_CURRENT_LIST_DIR}/qzjexxml.pc.in ${PROJECT_BINARY_DIR}/qzjexxml.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qzjexxml.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libqzjexxml)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "libqzjexxml maintainers <maintainers@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Reads the XML description files of the packaging tool chain")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "libc6 (>= 2.36), libstdc++6 (>= 12), libgcc-s1, libxerces-c3.2, libsodium23, libbsd0")
if(CMAKE_SYSTEM_PROCESSOR STREQUAL i686)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
endif()
include(CPack)
