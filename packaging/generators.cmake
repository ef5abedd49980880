# Read by CPack once for each package that it makes: which components go in, and what it is called.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 BUILD_FOLDER)
if(CPACK_GENERATOR STREQUAL "NSIS")
  set(CPACK_PACKAGE_FILE_NAME ${CPACK_PACKAGE_NAME}-${CPACK_PACKAGE_VERSION}-setup)
  set(CPACK_INSTALL_CMAKE_PROJECTS ${BUILD_FOLDER} Vantor plugin / ${BUILD_FOLDER} Vantor filter /)
else()
  set(CPACK_PACKAGE_FILE_NAME ${CPACK_PACKAGE_NAME}-${CPACK_PACKAGE_VERSION})
  set(CPACK_INSTALL_CMAKE_PROJECTS ${BUILD_FOLDER} Vantor plugin / ${BUILD_FOLDER} Vantor extras /)
endif()
