# What a host finds after the installation: two shared libraries, flat headers, a CMake package, two pkg-config files. The
# components are "runtime" (the libraries), "development" (what builds against them) and "tool" (the command).
include(CMakePackageConfigHelpers)

set(headerDir ${CMAKE_INSTALL_INCLUDEDIR}/qorwflinterop)
set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/QorWflInterop)

install(TARGETS BexFramework QorWflInteropUtil EXPORT QorWflInteropTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
        FILE_SET HEADERS DESTINATION ${headerDir} COMPONENT development)
if(TARGET qorwfl)
  install(TARGETS qorwfl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
endif()
install(EXPORT QorWflInteropTargets NAMESPACE QorWflInterop:: DESTINATION ${packageDir} COMPONENT development)

configure_package_config_file(cmake/QorWflInteropConfig.cmake.in ${PROJECT_BINARY_DIR}/QorWflInteropConfig.cmake
                              INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QorWflInteropConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QorWflInteropConfig.cmake ${PROJECT_BINARY_DIR}/QorWflInteropConfigVersion.cmake
        DESTINATION ${packageDir} COMPONENT development)

# The pkg-config files find the tree by their own place, so they hold wherever the tree is installed.
file(RELATIVE_PATH PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(name IN ITEMS qorwflinterop qorwflinterop-dom)
  configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

# The command finds the libraries beside it wherever the tree is installed. Below /usr the system does, and a package must
# not say otherwise.
if(NOT QORWFL_DEBIAN_PACKAGES)
  set_target_properties(QorWflInteropUtil PROPERTIES INSTALL_RPATH "$ORIGIN")
  if(TARGET qorwfl)
    set_target_properties(qorwfl PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  endif()
endif()

# The manual pages and the completions of the command, as many as there are.
if(TARGET qorwfl)
  include(cmake/CommandDocuments.cmake)
endif()
