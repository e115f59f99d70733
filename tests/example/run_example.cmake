# The example application as a developer runs it: the kit installed from a build into a folder of its own, then
# the example's own script, which compiles the application and its tests against the kit's jar alone and runs
# them against the kit's libraries:
#   cmake -DBUILD_DIR=<build> -DKIT_DIR=<kit> -DJAVA_HOME=<jdk> [-DJAVA_RUN=<the target's java>]
#         -DEXAMPLE_DIR=<kit/example> -P run_example.cmake
file(REMOVE_RECURSE "${KIT_DIR}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${KIT_DIR}"
                OUTPUT_QUIET RESULT_VARIABLE install_result)
if(NOT install_result EQUAL 0)
  message(FATAL_ERROR "the kit did not install: ${install_result}")
endif()
set(ENV{JAVA_HOME} "${JAVA_HOME}")
if(JAVA_RUN)
  set(ENV{JBRG_JAVA_RUN} "${JAVA_RUN}")
endif()
execute_process(COMMAND sh "${EXAMPLE_DIR}/run-tests.sh" "${KIT_DIR}" RESULT_VARIABLE test_result)
if(NOT test_result EQUAL 0)
  message(FATAL_ERROR "the example's tests failed: ${test_result}")
endif()
