# What `cmake --install` gives, in three components, and the Debian packages that CPack makes of
# them: libkest-utils3, libkest-utils-dev and kest-tools.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)
set(CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/kest_utils)
set(PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS kest_utils EXPORT kest_utils
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/kest DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

# The package has no dependencies, so its targets are all that its file has to name.
install(EXPORT kest_utils NAMESPACE kest_utils:: FILE kest_utils-config.cmake
  DESTINATION ${CMAKE_DIR} COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kest_utils-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kest_utils-config-version.cmake
  DESTINATION ${CMAKE_DIR} COMPONENT development)

# The prefix is known when the library is installed: `cmake --install` may be given another one.
foreach(dir INCLUDEDIR LIBDIR)
  set(PC_${dir} \${prefix}/${CMAKE_INSTALL_${dir}})
  if(IS_ABSOLUTE ${CMAKE_INSTALL_${dir}})
    set(PC_${dir} ${CMAKE_INSTALL_${dir}})
  endif()
endforeach()
set(PC_PREFIX @PC_PREFIX@)
configure_file(cmake/kest_utils.pc.in kest_utils.pc.in @ONLY)
install(CODE "
  set(PC_PREFIX \${CMAKE_INSTALL_PREFIX})
  configure_file(${PROJECT_BINARY_DIR}/kest_utils.pc.in ${PROJECT_BINARY_DIR}/kest_utils.pc @ONLY)"
  COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/kest_utils.pc DESTINATION ${PC_DIR} COMPONENT development)

if(NOT KEST_ALONE)
  return()
endif()

# In the build's folder the library stands as far from `kest` as where both are installed. So one path
# from the one to the other is all that `kest` knows.
file(RELATIVE_PATH LIBRARIES_FROM_BIN ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(BUILT_BIN ${PROJECT_BINARY_DIR}/bin)
get_filename_component(BUILT_LIBRARIES ${BUILT_BIN}/${LIBRARIES_FROM_BIN} ABSOLUTE)
set_target_properties(kest_utils PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${BUILT_LIBRARIES})

install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libkest-utils-dev/examples
  COMPONENT development FILES_MATCHING PATTERN "*.[ch]")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kest-utils)
set(CPACK_PACKAGE_CONTACT "kest_utils developers <kest-utils@localhost>")
set(CPACK_SET_DESTDIR ON) # so that the prefix in kest_utils.pc is that of the package
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has a description of its own
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/compress.cmake)
set(LIBRARY_PACKAGE libkest-utils${PROJECT_VERSION_MAJOR})
set(SAME_VERSION "${LIBRARY_PACKAGE} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
if(CMAKE_CROSSCOMPILING) # dpkg-shlibdeps would name the packages of the cross compiler
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${DEBIAN_ARCHITECTURE})
  set(C_LIBRARY "libc6 (>= 2.34)")
  set(CXX_LIBRARY ", ${C_LIBRARY}, libgcc-s1 (>= 3.5), libstdc++6 (>= 12)")
else()
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${BUILT_LIBRARIES}) # for the library itself
endif()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${LIBRARY_PACKAGE})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "${C_LIBRARY}")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "utility library of a cellular device's modem software
Short messages, cell broadcast, USSD strings and answers of a SIM as a modem
exchanges them, to and from text. Beside that a debug log, a work queue and
helpers for sockets, processes and strings.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkest-utils-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${SAME_VERSION}, libc6-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "headers and reference of libkest_utils
What a host in C or C++ needs: the headers, what pkg-config and CMake need to
find the library, its reference as man pages and HTML, and examples.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME kest-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${SAME_VERSION}${CXX_LIBRARY}")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "short messages at a desk
The program kest takes the octets of short messages, cell broadcast, USSD
strings and answers of a SIM apart, and encodes messages as a modem takes them.")
include(CPack)

foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} COMPONENT)
  install(FILES cmake/debian/changelog RENAME changelog.Debian COMPONENT ${component}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME}
    EXCLUDE_FROM_ALL)
endforeach()
