# The warnings that all code of this project is free of, headers included.
add_library(QorWflWarnings INTERFACE)
target_compile_options(QorWflWarnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                       $<$<BOOL:${QORWFL_WARNINGS_AS_ERRORS}>:-Werror>)
