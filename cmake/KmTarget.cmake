# km_target(<target>): what every target of this tree has in common. The flags stay on the targets, so that a project
# which takes this tree as a subfolder keeps its own.
#
# Results are the same bits with every compiler and at every level of optimisation; that is why contraction of a
# multiplication and an addition is off and no -march is set. GCC's vectorising of straight-line code is off because GCC 12
# takes `double(float(x))` on two values side by side for x itself, and so loses the rounding.
function(km_target target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
    -ffp-contract=off
    $<$<CXX_COMPILER_ID:GNU>:-fno-tree-slp-vectorize>
    $<$<BOOL:${KM_WARNINGS_AS_ERRORS}>:-Werror>)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    C_STANDARD 11
    CXX_VISIBILITY_PRESET hidden
    C_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  if(KM_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${KM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${KM_SANITIZE})
  endif()
endfunction()
