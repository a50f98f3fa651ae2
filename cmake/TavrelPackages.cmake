# Debian packages: what a host needs to run, what its developer needs to build, the command, and the documents.
# `scripts/package` makes and tries them; the preset `package` sets what differs from an installation by hand.
option(TAVREL_PACKAGES "Install as Debian's packages want it: no search paths in binaries, documents per package" OFF)

set(runtime_package libtavrelscenariotemplatedb${PROJECT_VERSION_MAJOR})
set(development_package libtavrelscenariotemplatedb-dev)
set(tools_package tavrel)
set(documentation_package libtavrelscenariotemplatedb-doc)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${documentation_package}
  COMPONENT documentation FILES_MATCHING PATTERN "*.md" PATTERN "*.svg")
install(DIRECTORY ${PROJECT_BINARY_DIR}/reference/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${documentation_package}
  COMPONENT documentation OPTIONAL)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/hosts
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${documentation_package}/examples COMPONENT documentation)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavrelscenariotemplatedb)
set(CPACK_PACKAGE_CONTACT "Tavrel maintainers <tavrel@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Folders as the system has them, whatever umask the builder works under.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL runtime development tools documentation)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# tavrel_package(COMPONENT PACKAGE SECTION SUMMARY LINE...) : the lines are the paragraph below the summary.
macro(tavrel_package component package section summary)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(lines ${ARGN})
  list(JOIN lines "\n" paragraph)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${paragraph}")
  if(TAVREL_PACKAGES)
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright DESTINATION share/doc/${package} COMPONENT ${component})
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/changelog DESTINATION share/doc/${package}
      RENAME changelog.Debian COMPONENT ${component})
    install(CODE "execute_process(COMMAND gzip -9nf
      \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/share/doc/${package}/changelog.Debian\" COMMAND_ERROR_IS_FATAL ANY)"
      COMPONENT ${component})
  endif()
endmacro()

tavrel_package(runtime ${runtime_package} libs
  "scenario templates of a driving simulation, shared libraries"
  "Presents the scenarios of a Tavrel installation as a browsable database:"
  "versions, configurations, directories and scenario templates with nodes,"
  "typed parameters, scripts and declarations of what may vary.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_MULTIARCH same)

tavrel_package(development ${development_package} libdevel
  "scenario templates of a driving simulation, development files"
  "Headers, the CMake package TavrelScenarioTemplateDb and the pkg-config file"
  "for hosts that browse, edit or run scenarios.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${runtime_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

tavrel_package(tools ${tools_package} utils
  "browse, edit, check and run the scenarios of a driving simulation"
  "The command tavrel lists the scenarios of an installation, shows and edits"
  "their parameters, checks root models and scripts, and runs scenarios. A"
  "sample installation to try it on is included.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
  "${runtime_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
if(TAVREL_PACKAGES)
  install(CODE "file(GLOB pages \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/share/man/man1/*.1\")
    foreach(page IN LISTS pages)
      execute_process(COMMAND gzip -9nf \${page} COMMAND_ERROR_IS_FATAL ANY)
    endforeach()" COMPONENT tools)
endif()

tavrel_package(documentation ${documentation_package} doc
  "scenario templates of a driving simulation, documentation"
  "The formats of installations, scenario files and scripts by example, how"
  "scenarios run, what each failure text means, and the reference of the"
  "public headers as web pages.")
if(TAVREL_PACKAGES)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/doc-base DESTINATION share/doc-base
    RENAME ${documentation_package} COMPONENT documentation)
endif()
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)

include(CPack)
