# docs: the reference as HTML, with the pages of docs/ and their drawings, and as man pages of the
# headers, in the build's folder reference/. A warning of Doxygen is an error. KEST_BUILD_DOCS makes it
# part of the build and installs it.
set(DOCS_OUTPUT ${PROJECT_BINARY_DIR}/reference)
set(DOCS_DRAWINGS ${PROJECT_SOURCE_DIR}/docs/drawings) # scripts/docs makes them
file(GLOB_RECURSE pages CONFIGURE_DEPENDS docs/*.md)
file(GLOB pictures CONFIGURE_DEPENDS docs/drawings/*.svg)
file(GLOB headers CONFIGURE_DEPENDS include/kest/*.h)

list(JOIN headers " " DOXYGEN_HEADERS)
list(JOIN pages " " DOXYGEN_PAGES)
set(DOXYGEN_RUN "INPUT = ${PROJECT_SOURCE_DIR}/README.md ${DOXYGEN_PAGES} ${DOXYGEN_HEADERS}
USE_MDFILE_AS_MAINPAGE = ${PROJECT_SOURCE_DIR}/README.md
GENERATE_MAN = NO")
configure_file(docs/Doxyfile.in ${DOCS_OUTPUT}/html.doxyfile @ONLY)
set(DOXYGEN_RUN "INPUT = ${DOXYGEN_HEADERS}
GENERATE_HTML = NO
GENERATE_MAN = YES
MAN_LINKS = YES")
configure_file(docs/Doxyfile.in ${DOCS_OUTPUT}/man.doxyfile @ONLY)

set(EXPORTED_NAMES ${PROJECT_SOURCE_DIR}/tests/abi/exported.txt)
set(STAMP ${DOCS_OUTPUT}/stamp)
add_custom_command(OUTPUT ${STAMP}
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${DOCS_OUTPUT}/html ${DOCS_OUTPUT}/man
  COMMAND doxygen ${DOCS_OUTPUT}/html.doxyfile
  COMMAND doxygen ${DOCS_OUTPUT}/man.doxyfile
  COMMAND bash ${PROJECT_SOURCE_DIR}/cmake/prune_man_pages.sh ${DOCS_OUTPUT}/man/man3 ${EXPORTED_NAMES}
  COMMAND ${CMAKE_COMMAND} -E touch ${STAMP}
  DEPENDS README.md ${pages} ${headers} ${pictures} ${EXPORTED_NAMES}
          ${DOCS_OUTPUT}/html.doxyfile ${DOCS_OUTPUT}/man.doxyfile cmake/prune_man_pages.sh
  VERBATIM)

if(KEST_BUILD_DOCS)
  add_custom_target(docs ALL DEPENDS ${STAMP})
  install(DIRECTORY ${DOCS_OUTPUT}/man/man3 DESTINATION ${CMAKE_INSTALL_MANDIR}
    COMPONENT development)
  install(DIRECTORY ${DOCS_OUTPUT}/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libkest-utils-dev
    COMPONENT development)
else()
  add_custom_target(docs DEPENDS ${STAMP})
endif()
