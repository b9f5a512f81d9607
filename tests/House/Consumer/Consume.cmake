# Uses the library the way a project of somebody else does, with the programs of examples/.
# In: WAY (Deb, Package, PkgConfig, Subfolder), SOURCE_DIR, BUILD_DIR, SCRATCH_DIR, CC, CXX, CPACK, VERSION.

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

# expect(<regular expression> <program> <argument>...): the program ends well and prints this.
function(expect expected)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output MATCHES "${expected}")
    message(FATAL_ERROR "Expected of ${ARGN}: ${expected}\nIt printed: ${output}")
  endif()
endfunction()

# Library, headers and tool as they are installed, in `prefix`, and moved after that: nothing in them may depend on where
# it was. The folder has a blank in its name, as home folders of people do.
function(install_to prefix)
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH_DIR}/first)
  file(RENAME ${SCRATCH_DIR}/first ${prefix})
endfunction()

# The same from a package, without the rights to install it.
function(unpack_to prefix)
  run(${CPACK} -G DEB --config ${BUILD_DIR}/CPackConfig.cmake -B ${SCRATCH_DIR}/packed)
  file(GLOB package ${SCRATCH_DIR}/packed/km-mesh_${VERSION}_*.deb)
  expect("^km-mesh\n$" dpkg-deb --show --showformat=\${Package}\\n ${package})
  expect("^${VERSION}\n$" dpkg-deb --field ${package} Version)
  expect("libc6 \\(>= .*libstdc\\+\\+6 \\(>= " dpkg-deb --field ${package} Depends)
  run(dpkg-deb --extract ${package} ${SCRATCH_DIR}/unpacked)
  if(NOT EXISTS ${SCRATCH_DIR}/unpacked/usr/share/doc/km-mesh/copyright)
    message(FATAL_ERROR "The package has no copyright")
  endif()
  file(RENAME ${SCRATCH_DIR}/unpacked/usr ${prefix})
endfunction()

# The tool finds the library from where it lies, and manual page and completions lie where man and bash look for them.
function(check_tool prefix)
  if(NOT EXISTS ${prefix}/bin/kmmesh)
    return()  # built without it
  endif()
  expect("^kmmesh ${VERSION}\n$" ${prefix}/bin/kmmesh --version)
  expect("\n  triangles +47732\n" ${prefix}/bin/kmmesh info ${SOURCE_DIR}/samples/bearing-bracket.stl)
  expect("^42\n$" ${prefix}/bin/kmmesh eval "6 * 7")
  expect("complete -F _kmmesh kmmesh\n$" bash --norc -c
    ". '${prefix}/share/bash-completion/completions/kmmesh' && complete -p kmmesh")
  foreach(page fish/vendor_completions.d/kmmesh.fish man/man1/kmmesh.1 zsh/vendor-completions/_kmmesh)
    if(NOT EXISTS ${prefix}/share/${page})
      message(FATAL_ERROR "${page} is not installed")
    endif()
  endforeach()
endfunction()

# A host in C, which needs no more than the header of the host services.
function(check_c_host prefix)
  file(GLOB_RECURSE library ${prefix}/*/libkm.so)
  run(${CC} -std=c11 -I ${prefix}/include/km ${SOURCE_DIR}/examples/c_host/main.c -o ${SCRATCH_DIR}/c_host -ldl)
  expect("\n8 points: .*\nall freed\n$" ${SCRATCH_DIR}/c_host ${library})
endfunction()

# A project that finds the library with `find_package` or has its tree as a subfolder.
function(build_project folder)
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/House/Consumer/${folder} -B ${SCRATCH_DIR}/build
    -D CMAKE_CXX_COMPILER=${CXX} -D KM_PROGRAM=${program} ${ARGN})
  run(${CMAKE_COMMAND} --build ${SCRATCH_DIR}/build -j2)
endfunction()

set(prefix "${SCRATCH_DIR}/the prefix")
set(program ${SOURCE_DIR}/examples/first/main.cpp)
set(consumer ${SCRATCH_DIR}/build/consumer)
file(REMOVE_RECURSE ${SCRATCH_DIR})
file(MAKE_DIRECTORY ${SCRATCH_DIR})
set(ENV{HOME} ${SCRATCH_DIR})

if(WAY STREQUAL "Subfolder")
  build_project(Subfolder -D KM_SOURCE_DIR=${SOURCE_DIR})
elseif(WAY STREQUAL "PkgConfig")
  install_to(${prefix})
  file(GLOB_RECURSE packages ${prefix}/*/km.pc)
  cmake_path(GET packages PARENT_PATH folder)
  set(ENV{PKG_CONFIG_PATH} ${folder})
  execute_process(COMMAND pkg-config --cflags --libs km OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags UNIX_COMMAND ${flags})
  cmake_path(GET folder PARENT_PATH libraries)
  set(consumer ${SCRATCH_DIR}/consumer)
  run(${CXX} -std=c++20 ${program} -o ${consumer} ${flags})
  set(ENV{LD_LIBRARY_PATH} ${libraries})
else()
  if(WAY STREQUAL "Deb")
    unpack_to(${prefix})
  else()
    install_to(${prefix})
  endif()
  check_tool(${prefix})
  check_c_host(${prefix})
  build_project(Package -D CMAKE_PREFIX_PATH=${prefix})
endif()

expect("^4 nodes, 12 edges, 1 strips in 7 words\n$" ${consumer})
