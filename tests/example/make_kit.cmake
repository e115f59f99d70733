# Lays out a kit from a build, as the install does, and runs the example application's tests on it:
#   cmake -DBUILD_DIR=<build> -DKIT_DIR=<kit> -DJAVA_HOME=<jdk> -DEXAMPLE_DIR=<kit/example>
#         "-DCLASS_DIRS=<class folders>" -P make_kit.cmake
# The kit holds lib/ (the bridge, the simulated device, its control library) and java/jbrg-kit.jar (every class
# folder given, in one jar).
file(REMOVE_RECURSE "${KIT_DIR}")
file(MAKE_DIRECTORY "${KIT_DIR}/lib" "${KIT_DIR}/java")
foreach(library jbrgCMT jbrgsim jbrgsimctl)
  file(COPY "${BUILD_DIR}/lib/lib${library}.so" DESTINATION "${KIT_DIR}/lib" FOLLOW_SYMLINK_CHAIN)
endforeach()
set(jar_args "")
foreach(dir ${CLASS_DIRS})
  list(APPEND jar_args -C "${dir}" .)
endforeach()
execute_process(COMMAND "${JAVA_HOME}/bin/jar" cf "${KIT_DIR}/java/jbrg-kit.jar" ${jar_args}
                RESULT_VARIABLE jar_result)
if(NOT jar_result EQUAL 0)
  message(FATAL_ERROR "jar failed: ${jar_result}")
endif()
set(ENV{JAVA_HOME} "${JAVA_HOME}")
execute_process(COMMAND sh "${EXAMPLE_DIR}/run-tests.sh" "${KIT_DIR}"
                RESULT_VARIABLE test_result)
if(NOT test_result EQUAL 0)
  message(FATAL_ERROR "the example's tests failed: ${test_result}")
endif()
