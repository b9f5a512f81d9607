# What `cpack -G DEB` packs: all that `cmake --install` gives, as one package.
find_program(KM_FILE file)
find_program(KM_SHLIBDEPS dpkg-shlibdeps)
mark_as_advanced(KM_FILE KM_SHLIBDEPS)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME km-mesh)
set(CPACK_PACKAGE_VENDOR "KM Mesh")
set(CPACK_PACKAGE_CONTACT "KM Mesh maintainers <maintainers@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "surface meshes for CAD/CAM: library, headers and tool")
set(CPACK_PACKAGE_DESCRIPTION "KM Mesh makes connected meshes of loose triangles, edits, analyses, divides
and closes them, and gives them back as strips, levels of detail and STL
files. The package has the library, its headers for C and C++, files for
CMake and pkg-config, and the tool kmmesh with its manual page.")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)

# Folders of a distribution, whatever prefix this build would be installed to.
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cmake, g++, pkg-config")
# With the versions that these binaries need, where Debian's tools can tell them.
if(KM_FILE AND KM_SHLIBDEPS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
else()
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libgcc-s1, libstdc++6")
endif()
include(CPack)

install(FILES cmake/copyright CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_PACKAGE_NAME})
