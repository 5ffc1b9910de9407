# The warnings that all code of this project is free of, headers included.
add_library(QorWflWarnings INTERFACE)
target_compile_options(QorWflWarnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                       $<$<BOOL:${QORWFL_WARNINGS_AS_ERRORS}>:-Werror>)
# GCC 12 takes `"text" + std::string(...)` for a copy between overlapping blocks, which it is not.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(QorWflWarnings INTERFACE -Wno-restrict)
endif()
# With a sanitizer GCC sees uninitialized values in the standard library where there are none, as its manual warns.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND QORWFL_SANITIZE)
  target_compile_options(QorWflWarnings INTERFACE -Wno-maybe-uninitialized)
endif()
