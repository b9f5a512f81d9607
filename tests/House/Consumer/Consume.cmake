# Uses the library the way a project of somebody else does, with the program that README shows.
# In: WAY (Package, PkgConfig, Subfolder), SOURCE_DIR, BUILD_DIR, SCRATCH_DIR, CXX.

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

# The scratch folder has a blank in its name, as home folders of people do.
set(prefix "${SCRATCH_DIR}/the prefix")
set(program ${SOURCE_DIR}/examples/first/main.cpp)
file(REMOVE_RECURSE ${SCRATCH_DIR})
file(MAKE_DIRECTORY ${SCRATCH_DIR})

if(WAY STREQUAL "Subfolder")
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/House/Consumer/Subfolder -B ${SCRATCH_DIR}/build
    -D CMAKE_CXX_COMPILER=${CXX} -D KM_SOURCE_DIR=${SOURCE_DIR} -D KM_PROGRAM=${program})
  run(${CMAKE_COMMAND} --build ${SCRATCH_DIR}/build -j2)
  set(consumer ${SCRATCH_DIR}/build/consumer)
else()
  # Moved once more after it was installed: nothing in it may depend on where that was.
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH_DIR}/first)
  file(RENAME ${SCRATCH_DIR}/first ${prefix})
endif()

if(WAY STREQUAL "Package")
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/House/Consumer/Package -B ${SCRATCH_DIR}/build
    -D CMAKE_CXX_COMPILER=${CXX} -D CMAKE_PREFIX_PATH=${prefix} -D KM_PROGRAM=${program})
  run(${CMAKE_COMMAND} --build ${SCRATCH_DIR}/build)
  set(consumer ${SCRATCH_DIR}/build/consumer)
endif()

# The tool finds the library from where it lies.
file(GLOB tool ${prefix}/bin/kmmesh)
if(tool)
  run(${tool} --version)
endif()

if(WAY STREQUAL "PkgConfig")
  file(GLOB_RECURSE packages ${prefix}/*/km.pc)
  cmake_path(GET packages PARENT_PATH folder)
  set(ENV{PKG_CONFIG_PATH} ${folder})
  execute_process(COMMAND pkg-config --cflags --libs km OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags UNIX_COMMAND ${flags})
  cmake_path(GET folder PARENT_PATH libraries)
  set(consumer ${SCRATCH_DIR}/consumer)
  run(${CXX} -std=c++20 ${program} -o ${consumer} ${flags})
  set(ENV{LD_LIBRARY_PATH} ${libraries})
endif()

execute_process(COMMAND ${consumer} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output STREQUAL "4 nodes, 12 edges, 1 strips in 7 words\n")
  message(FATAL_ERROR "The program printed: ${output}")
endif()
