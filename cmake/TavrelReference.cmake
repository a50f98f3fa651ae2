# The reference of the public headers as web pages: `cmake --build DIR --target reference`. A warning is an error.
find_program(TAVREL_DOXYGEN doxygen)
if(TAVREL_DOXYGEN)
  set(TAVREL_REFERENCE_INPUT "")
  foreach(folder ScenarioTemplateDb TavrelScenarioTemplateDb core/include environment/include checking/include
      simulation/include variation/include)
    string(APPEND TAVREL_REFERENCE_INPUT " ${PROJECT_SOURCE_DIR}/${folder}")
  endforeach()
  configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
  add_custom_target(reference
    COMMAND ${TAVREL_DOXYGEN} ${PROJECT_BINARY_DIR}/Doxyfile
    COMMENT "Reference of the public headers" VERBATIM)
endif()
