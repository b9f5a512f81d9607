# What `cmake --install` gives: headers, libraries, the tool, a CMake package and a pkg-config file. The pages of the tool
# install themselves where they are made.
include(CMakePackageConfigHelpers)

install(TARGETS km kmhost EXPORT KMTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(KM_BUILD_APPS)
  install(TARGETS kmmesh RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(DIRECTORY pin/inc/ tools/inc/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/km FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_BINARY_DIR}/inc/KmVersion.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/km)
install(EXPORT KMTargets NAMESPACE KM:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KM)

configure_package_config_file(cmake/KMConfig.cmake.in ${PROJECT_BINARY_DIR}/KMConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KM)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KMConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KMConfig.cmake ${PROJECT_BINARY_DIR}/KMConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KM)

# The pkg-config file finds the prefix from where it lies, as the CMake package does, so the tree can be moved.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE km_libdir)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE km_prefix)
configure_file(cmake/km.pc.in ${PROJECT_BINARY_DIR}/km.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/km.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
