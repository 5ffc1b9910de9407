# Installs what comes with the command from the folders man and completions of its sources. A manual page goes into the
# section that its ending names, a completion where its shell looks for it.
set(commandFolder ${PROJECT_SOURCE_DIR}/QorWorkflowInterop/QorWflInteropTool.m)

file(GLOB manualPages CONFIGURE_DEPENDS ${commandFolder}/man/*.[1-8])
find_program(QORWFL_GZIP gzip)
foreach(page IN LISTS manualPages)
  cmake_path(GET page EXTENSION LAST_ONLY section)
  string(SUBSTRING ${section} 1 1 section)
  if(QORWFL_DEBIAN_PACKAGES)  # which hold them compressed
    cmake_path(GET page FILENAME name)
    set(compressed ${PROJECT_BINARY_DIR}/man/${name}.gz)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/man)
    execute_process(COMMAND ${QORWFL_GZIP} -9nc ${page} OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page})
    set(page ${compressed})
  endif()
  install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT tool)
endforeach()

# install_completion(FOLDER NAME PATTERN...): the first file that matches.
function(install_completion folder name)
  list(TRANSFORM ARGN PREPEND ${commandFolder}/completions/ OUTPUT_VARIABLE patterns)
  file(GLOB found CONFIGURE_DEPENDS ${patterns})
  if(found)
    list(GET found 0 file)
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder} RENAME ${name} COMPONENT tool)
  endif()
endfunction()
install_completion(bash-completion/completions qorwfl qorwfl *.bash)
install_completion(zsh/vendor-completions _qorwfl _qorwfl *.zsh)
install_completion(fish/vendor_completions.d qorwfl.fish *.fish)
