# The installed package: libraries, headers, command, sample installation, and the two ways to find them.
include(CMakePackageConfigHelpers)

set_target_properties(tavrel-environment TavrelScenarioTemplateDb tavrel-checking PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS ScenarioTemplateDb tavrel-environment TavrelScenarioTemplateDb tavrel-checking
  EXPORT TavrelScenarioTemplateDb
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

foreach(folder ScenarioTemplateDb TavrelScenarioTemplateDb)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE)
endforeach()
foreach(folder core/include environment/include checking/include)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.h")
endforeach()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/TavrelScenarioTemplateDb)
install(EXPORT TavrelScenarioTemplateDb NAMESPACE Tavrel:: DESTINATION ${package_folder} COMPONENT development
  FILE TavrelScenarioTemplateDbTargets.cmake)
configure_package_config_file(cmake/TavrelScenarioTemplateDbConfig.cmake.in
  ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfig.cmake
  ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDbConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

# The paths in the file stand relative to its own place, so that a copied tree still answers right.
file(RELATIVE_PATH up_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" up_from_pc "${up_from_pc}")
set(PC_PREFIX "\${pcfiledir}/${up_from_pc}")
configure_file(cmake/TavrelScenarioTemplateDb.pc.in ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDb.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/TavrelScenarioTemplateDb.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/installation DESTINATION ${CMAKE_INSTALL_DATADIR}/tavrel
  COMPONENT tools PATTERN ".gitattributes" EXCLUDE)
file(RELATIVE_PATH library_from_command ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(tavrel PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_command}")
install(TARGETS tavrel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
