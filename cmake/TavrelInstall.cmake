# The installed package: libraries, headers, command, sample installation, documents, and the two ways to find them.
# The driver's two roots of headers bear its name; all others have short names, and stand below one folder of their own.
include(CMakePackageConfigHelpers)
set(TAVREL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/tavrel)

# tavrel_install_library(TARGET HEADER_FOLDER...)
# A shared library with its headers; what stands in a folder "internal" is not for others.
function(tavrel_install_library target)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${target} EXPORT TavrelScenarioTemplateDb
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  foreach(folder IN LISTS ARGN)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}/ DESTINATION ${TAVREL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
  endforeach()
endfunction()

install(TARGETS ScenarioTemplateDb EXPORT TavrelScenarioTemplateDb)
foreach(folder ScenarioTemplateDb TavrelScenarioTemplateDb)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE)
endforeach()
tavrel_install_library(tavrel-environment environment/include)
tavrel_install_library(TavrelScenarioTemplateDb core/include)
tavrel_install_library(tavrel-checking checking/include)
foreach(room simulation variation)
  if(TARGET tavrel-${room})
    tavrel_install_library(tavrel-${room} ${room}/include)
  endif()
endforeach()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/TavrelScenarioTemplateDb)
install(EXPORT TavrelScenarioTemplateDb NAMESPACE Tavrel:: DESTINATION ${package_folder}
  FILE TavrelScenarioTemplateDbTargets.cmake)
configure_package_config_file(cmake/TavrelScenarioTemplateDbConfig.cmake.in
  ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfig.cmake
  ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfigVersion.cmake
  DESTINATION ${package_folder})

# The paths in these files stand relative to their own place, so that a copied tree still answers right.
file(RELATIVE_PATH up_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" up_from_pc "${up_from_pc}")
set(PC_PREFIX "\${pcfiledir}/${up_from_pc}")
# tavrel_pkgconfig(NAME LIBRARIES DESCRIPTION [NEEDED])
function(tavrel_pkgconfig name libraries description)
  set(PC_NAME ${name})
  set(PC_LIBRARIES ${libraries})
  set(PC_DESCRIPTION ${description})
  set(PC_NEEDED ${ARGN})
  configure_file(cmake/tavrel.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
tavrel_pkgconfig(TavrelScenarioTemplateDb "-lTavrelScenarioTemplateDb -ltavrel-environment" "${PROJECT_DESCRIPTION}")
tavrel_pkgconfig(tavrel-checking -ltavrel-checking "Every fault of a scenario, script or root model at its place"
  TavrelScenarioTemplateDb)
if(TARGET tavrel-simulation)
  tavrel_pkgconfig(tavrel-simulation -ltavrel-simulation "Runs of scenario scripts, their traces and verdicts"
    TavrelScenarioTemplateDb)
endif()
if(TARGET tavrel-variation)
  tavrel_pkgconfig(tavrel-variation -ltavrel-variation "Variants of scenarios by plans, and campaigns of their runs"
    tavrel-simulation)
endif()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/installation DESTINATION ${CMAKE_INSTALL_DATADIR}/tavrel
  PATTERN ".gitattributes" EXCLUDE)
file(RELATIVE_PATH library_from_command ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(tavrel PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_command}")
install(TARGETS tavrel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(document_folder ${CMAKE_INSTALL_DATADIR}/doc/libtavrelscenariotemplatedb-doc)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${document_folder}
  FILES_MATCHING PATTERN "*.md" PATTERN "*.svg")
install(DIRECTORY ${PROJECT_BINARY_DIR}/reference/html DESTINATION ${document_folder} OPTIONAL)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/hosts DESTINATION ${document_folder}/examples)
