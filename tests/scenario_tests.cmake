# quorvantis_scenario_tests(TOOL): the scenarios, good and bad, played by the given quorvantis-push target.
function(quorvantis_scenario_tests tool)
  find_program(QUORVANTIS_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)
  foreach(name scenarios bad_scenarios)
    add_test(NAME ${name}
      COMMAND "${QUORVANTIS_PYTHON}" "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/run_${name}.py"
        $<TARGET_FILE:${tool}>)
    set_tests_properties(${name} PROPERTIES TIMEOUT 1200)
  endforeach()
endfunction()
