# Three Debian packages by CPack, a component each: the libraries, what builds against them, the command. Made by the
# preset "package", whose prefix is /usr, so that the files lie where Debian has them.
set(runtimePackage libqorwflinterop${PROJECT_VERSION_MAJOR})
set(developmentPackage libqorwflinterop-dev)
set(toolPackage qorwfl)

set(QORWFL_PACKAGE_CONTACT "QorWflInterop developers <developers@qorwflinterop.invalid>"
    CACHE STRING "Who stands behind the packages: name <address>")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qorwflinterop)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR QorWflInterop)
set(CPACK_PACKAGE_CONTACT ${QORWFL_PACKAGE_CONTACT})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own, the first line of its description
set(CPACK_COMPONENTS_ALL runtime development tool)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The command's libraries are those of the package beside it, on which it depends by name and version.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(sameRuntime "${runtimePackage} (= ${PROJECT_VERSION})")

set(whatItDoes
"Turns the workflow actions of a product-data-management server into XPDL 0.02
documents, reads the documents that come back, and builds and parses the URLs
of actions, contexts and objects.
")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtimePackage})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/shlibs
    ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "workflow interoperation for PDM servers, libraries
${whatItDoes}
This package holds the shared libraries that a host loads.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${developmentPackage})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${sameRuntime}, libxerces-c-dev (>= 3.2)")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "workflow interoperation for PDM servers, development files
${whatItDoes}
This package holds the headers, the CMake package and the pkg-config files.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ${toolPackage})
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${sameRuntime}")
set(CPACK_DEBIAN_TOOL_DESCRIPTION "workflow interoperation for PDM servers, command
${whatItDoes}
This package holds the command qorwfl, which does so with files.")

# Which package has the libraries: for the packages of hosts.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/debian/shlibs @ONLY NEWLINE_STYLE UNIX CONTENT
"libBexFramework @PROJECT_VERSION_MAJOR@ @runtimePackage@ (>= @PROJECT_VERSION@)
libQorWflInteropUtil @PROJECT_VERSION_MAJOR@ @runtimePackage@ (>= @PROJECT_VERSION@)
")

# What every Debian package has in its documents. The date is that of the build, or of SOURCE_DATE_EPOCH.
string(TIMESTAMP packageDate "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/debian/changelog.in ${PROJECT_BINARY_DIR}/debian/changelog @ONLY)
execute_process(COMMAND ${QORWFL_GZIP} -9nc ${PROJECT_BINARY_DIR}/debian/changelog
                OUTPUT_FILE ${PROJECT_BINARY_DIR}/debian/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN ITEMS runtime development tool)
  install(FILES cmake/debian/copyright ${PROJECT_BINARY_DIR}/debian/changelog.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${${component}Package} COMPONENT ${component})
endforeach()
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${developmentPackage}
        COMPONENT development)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${developmentPackage} COMPONENT development
        PATTERN Doxyfile EXCLUDE REGEX "examples/CMakeLists\\.txt$" EXCLUDE
        PATTERN *.sh PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

include(CPack)
