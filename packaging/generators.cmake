# Read by CPack once for each package that it makes: which components go in, and what it is called.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 BUILD_FOLDER)
# The installer and the uninstaller that it holds are signed by the compiler of the installer.
set(CPACK_VANTOR_SIGN_LINES "")
if(DEFINED ENV{VANTOR_SIGN})
  set(CPACK_VANTOR_SIGN_LINES "!uninstfinalize '$ENV{VANTOR_SIGN} \"%1\"'\n!finalize '$ENV{VANTOR_SIGN} \"%1\"'")
endif()
if(CPACK_GENERATOR STREQUAL "NSIS")
  set(CPACK_PACKAGE_FILE_NAME ${CPACK_PACKAGE_NAME}-${CPACK_PACKAGE_VERSION}-setup)
  set(CPACK_INSTALL_CMAKE_PROJECTS ${BUILD_FOLDER} Vantor plugin / ${BUILD_FOLDER} Vantor filter /)
else()
  set(CPACK_PACKAGE_FILE_NAME ${CPACK_PACKAGE_NAME}-${CPACK_PACKAGE_VERSION})
  set(CPACK_INSTALL_CMAKE_PROJECTS ${BUILD_FOLDER} Vantor plugin / ${BUILD_FOLDER} Vantor extras /)
endif()
