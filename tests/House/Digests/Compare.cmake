# Builds the library with each compiler at each level of optimisation, and compares what the digest program prints.
# In: SOURCE_DIR, SCRATCH_DIR. The builds are kept, so the next run compiles only what has changed. Warnings belong to the
# other builds; here GCC would give false ones, of what is precompiled.

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

set(variants "")
foreach(compilers "gcc g++" "clang clang++")
  separate_arguments(compilers)
  list(GET compilers 0 c)
  list(GET compilers 1 cxx)
  foreach(level O0 O3)
    set(variant ${cxx}-${level})
    set(build ${SCRATCH_DIR}/${variant})
    run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${build}
      -D CMAKE_C_COMPILER=${c} -D CMAKE_CXX_COMPILER=${cxx} -D CMAKE_BUILD_TYPE=None
      -D CMAKE_C_FLAGS=-${level} "-DCMAKE_CXX_FLAGS=-${level} -w"
      -D KM_BUILD_DIGESTS=ON -D KM_BUILD_TESTS=OFF -D KM_BUILD_APPS=OFF
      -D KM_BUILD_EXAMPLES=OFF -D KM_WARNINGS_AS_ERRORS=OFF -D KM_PRECOMPILE=ON)
    run(${CMAKE_COMMAND} --build ${build} -j2 --target km_digests)
    execute_process(COMMAND ${build}/tests/House/Digests/km_digests ${SOURCE_DIR}/samples
      OUTPUT_FILE ${SCRATCH_DIR}/${variant}.txt COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND variants ${variant})
  endforeach()
endforeach()

list(POP_FRONT variants first)
file(STRINGS ${SCRATCH_DIR}/${first}.txt expected)
list(LENGTH expected lines)
if(lines LESS 100)
  message(FATAL_ERROR "${first} printed ${lines} digests only")
endif()
foreach(variant IN LISTS variants)
  file(STRINGS ${SCRATCH_DIR}/${variant}.txt actual)
  foreach(line other IN ZIP_LISTS expected actual)
    if(NOT line STREQUAL other)
      message(SEND_ERROR "${first}: ${line}\n${variant}: ${other}")
    endif()
  endforeach()
endforeach()
message("${lines} digests, the same in ${first};${variants}")
