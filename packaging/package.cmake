# What goes into the packages, and how CPack makes them:
#
#   qrvVNT-<version>-setup.exe    the plug-in and its help, put into a host's folder and registered
#   qrvVNT-<version>.zip          the same files, the documents, and the sandbox, ready to be started
#
# `./package.sh` builds both, qrvVNT-<version>-tests.zip (pack_tests.sh) and qrvVNT-<version>-symbols.zip. The component
# "plugin" is laid out below the host's base folder.
add_subdirectory(${CMAKE_SOURCE_DIR}/sandbox/samples ${CMAKE_BINARY_DIR}/sandbox/samples)
if(NOT WIN32)
  return()
endif()

set(PLUGIN_FOLDER Plugins/dlls/Vantor)

# The help book. Not part of "all", as it needs a compiler of its own that only packaging needs.
find_program(CHMCMD chmcmd)
set(HELP_SOURCES ${CMAKE_SOURCE_DIR}/docs/help)
set(HELP_BOOK ${CMAKE_BINARY_DIR}/bin/qrvVNT_help.chm)
file(GLOB HELP_FILES CONFIGURE_DEPENDS ${HELP_SOURCES}/*.html ${HELP_SOURCES}/*.css ${HELP_SOURCES}/images/*.png)
add_custom_command(
  OUTPUT ${HELP_BOOK}
  COMMAND ${CMAKE_COMMAND} -D SOURCES=${HELP_SOURCES} -D WORK=${CMAKE_BINARY_DIR}/help -D BOOK=${HELP_BOOK}
    -D CHMCMD=${CHMCMD} -P ${CMAKE_CURRENT_LIST_DIR}/help_book.cmake
  DEPENDS ${HELP_FILES} ${HELP_SOURCES}/contents.txt ${CMAKE_CURRENT_LIST_DIR}/help_book.cmake
  COMMENT "Compiling the help book" VERBATIM)
add_custom_target(help_book DEPENDS ${HELP_BOOK})

install(TARGETS qrvVNT RUNTIME DESTINATION ${PLUGIN_FOLDER} COMPONENT plugin)
install(FILES ${HELP_BOOK} DESTINATION ${PLUGIN_FOLDER} COMPONENT plugin)

# The installer puts the packet filter beside the plug-in when it is asked to; in the ZIP it has a folder of its own.
install(TARGETS qrvudpfw RUNTIME DESTINATION ${PLUGIN_FOLDER} COMPONENT filter)
install(TARGETS qrvudpfw RUNTIME DESTINATION filter COMPONENT extras)
install(FILES ${CMAKE_SOURCE_DIR}/filter/README.md DESTINATION filter COMPONENT extras)

install(FILES ${CMAKE_SOURCE_DIR}/README.md ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${CMAKE_SOURCE_DIR}/LICENSE
  DESTINATION . COMPONENT extras)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs DESTINATION . COMPONENT extras
  PATTERN "contents.txt" EXCLUDE PATTERN "*.sh" EXCLUDE)

# The sandbox is a host folder of its own, laid out as demo.sh does it.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/sandbox/demo/host/ DESTINATION sandbox COMPONENT extras)
install(TARGETS host console gameserver qrvudpfw sandbox_engine banlists RUNTIME DESTINATION sandbox COMPONENT extras)
install(TARGETS qrvMFM qrvGMF RUNTIME DESTINATION sandbox/helpers COMPONENT extras)
install(TARGETS qrvVNT RUNTIME DESTINATION sandbox/${PLUGIN_FOLDER} COMPONENT extras)
install(FILES ${HELP_BOOK} DESTINATION sandbox/${PLUGIN_FOLDER} COMPONENT extras)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/sandbox/samples/import DESTINATION sandbox/samples COMPONENT extras)
install(FILES ${CMAKE_SOURCE_DIR}/sandbox/samples/README.md DESTINATION sandbox/samples COMPONENT extras)
install(FILES ${CMAKE_SOURCE_DIR}/sandbox/README.md ${CMAKE_CURRENT_LIST_DIR}/register.cmd
  ${CMAKE_CURRENT_LIST_DIR}/unregister.cmd DESTINATION sandbox COMPONENT extras)
# The host reads its INI files as Windows programs write them, and so does the command interpreter its scripts.
install(CODE [[
  file(GLOB_RECURSE TEXTS "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/sandbox/*.ini"
    "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/sandbox/*.cmd" "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/sandbox/samples/*.txt")
  foreach(TEXT IN LISTS TEXTS)
    file(READ "${TEXT}" CONTENT)
    file(CONFIGURE OUTPUT "${TEXT}" CONTENT "${CONTENT}" @ONLY NEWLINE_STYLE CRLF)
  endforeach()]] COMPONENT extras)

# For the ZIP of the tests alone.
add_executable(limit ${CMAKE_CURRENT_LIST_DIR}/win32/limit.cpp)
target_link_libraries(limit PRIVATE vantor_flags)
target_link_options(limit PRIVATE -municode -s)
set_target_properties(limit PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

set(CPACK_GENERATOR ZIP NSIS)
set(CPACK_PACKAGE_NAME qrvVNT)
set(CPACK_PACKAGE_VENDOR "the Vantor authors")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_VERBATIM_VARIABLES ON)
# Our own NSIS template stands in for CPack's: the installer goes into somebody else's folder and must remove
# nothing from it but its own files.
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
set(CPACK_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/sign.cmake)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/generators.cmake)
include(CPack)

if(CMAKE_BUILD_TYPE STREQUAL Release)
  add_test(NAME symbols COMMAND ${CMAKE_CURRENT_LIST_DIR}/symbols_test.sh ${CMAKE_OBJDUMP} ${CMAKE_ADDR2LINE}
    $<TARGET_FILE:qrvVNT> ${CMAKE_BINARY_DIR}/symbols/qrvVNT.dll.debug)
endif()
# In a Wine prefix of its own. Skipped where the tools that make packages are not installed.
add_test(NAME packages COMMAND ${CMAKE_CURRENT_LIST_DIR}/install_test.sh ${CMAKE_BINARY_DIR} ${PROJECT_VERSION})
set_tests_properties(packages PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 300)
# With it every end-to-end test runs twice more: with floating-point exceptions unmasked, and as the ZIP's user has it.
add_test(NAME packages.tests COMMAND ${CMAKE_CURRENT_LIST_DIR}/tests_package_test.sh ${CMAKE_BINARY_DIR} ${PROJECT_VERSION})
set_tests_properties(packages.tests PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 900)
