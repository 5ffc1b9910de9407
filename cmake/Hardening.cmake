# What makes a fault in the code harder to exploit, in builds that are meant to be used. Sanitizers watch the same places
# themselves, and the checks of the C library need an optimizing compiler.
option(QORWFL_HARDEN "Build with checked library calls, guarded stacks and read-only relocations" ON)

if(QORWFL_HARDEN AND NOT QORWFL_SANITIZE)
  set(optimized $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  # A distribution's compiler may set another level, hence the -U.
  add_compile_options($<${optimized}:-U_FORTIFY_SOURCE> $<${optimized}:-D_FORTIFY_SOURCE=2>
                      $<${optimized}:-fstack-protector-strong>)
  add_link_options($<${optimized}:LINKER:-z,relro,-z,now>)
endif()
