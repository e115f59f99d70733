# The kit for Java application developers: what `cmake --install` lays out (docs/kit.md).
#
#   lib/                     libjbrgCMT.so, libjbrgsim.so (and libjbrgsimctl.so), RPATH $ORIGIN: they find
#                            each other wherever the kit lands
#   bin/                     jbrg-scenario-load (loads scenario files into the simulated device, as a test
#                            would) and jbrg-scenario-validate (checks them against the schema, in Python)
#   java/                    jbrg-kit.jar (and jbrg-kit-<version>.jar): the generated *JNI classes of the
#                            library's modules, the Java classes the library builds, the event proxies it calls
#                            back, and the simulated device's Java control API; jbrg-kit-sources.jar
#   share/jbrg/              scenario.schema.json and examples/*.json
#   share/doc/jbrg/          GUIDE.md, simulator-java.md and the example application
#
# The jar is built with everything else (target jbrg_kit_jar), so the install copies files only.

set(JBRG_KIT_OUT "${CMAKE_BINARY_DIR}/kit")
set(JBRG_KIT_JAR "${JBRG_KIT_OUT}/jbrg-kit.jar")
set(JBRG_KIT_SOURCES_JAR "${JBRG_KIT_OUT}/jbrg-kit-sources.jar")
set(JBRG_JAR "${JBRG_JAVA_HOME}/bin/jar")

# The Java class folders and source folders the jar holds. The wrapper's class folder also holds the test
# suite's probe modules: the staging script takes only the modules named by the library's manifests.
set(kit_class_dirs "${JBRG_JAVA_CLASSES}" "${JBRG_RECORDING_CLASSES}")
set(kit_source_dirs "${CMAKE_SOURCE_DIR}/java/src" "${CMAKE_SOURCE_DIR}/java/recording")
file(GLOB_RECURSE kit_java_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/java/src/*.java"
     "${CMAKE_SOURCE_DIR}/java/recording/*.java")
set(kit_depends ${kit_java_sources} ${JBRG_LIBRARY_MANIFESTS})
get_property(kit_jni_targets GLOBAL PROPERTY JBRG_WRAPPER_TARGETS)
set(kit_targets jbrg_java jbrg_java_recording ${kit_jni_targets})
if(TARGET jbrg_simctl_java)
  list(APPEND kit_class_dirs "${JBRG_SIMCTL_CLASSES}")
  list(APPEND kit_source_dirs "${CMAKE_SOURCE_DIR}/sim/java/src")
  file(GLOB_RECURSE kit_simctl_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/sim/java/src/*.java")
  list(APPEND kit_depends ${kit_simctl_sources})
  list(APPEND kit_targets jbrg_simctl_java)
endif()
# The generated Java sources, of the library's modules only, as the manifests name them.
set(kit_wrapper_javas "")
foreach(manifest ${JBRG_LIBRARY_MANIFESTS})
  file(RELATIVE_PATH rel "${JBRG_WRAPPER_MANIFESTS}" "${manifest}")
  string(REGEX REPLACE "\\.exports$" "" rel "${rel}")
  list(APPEND kit_wrapper_javas "${JBRG_WRAPPER_OUT}/java/orvane/qsf/wrapper/${rel}JNI.java")
endforeach()
list(APPEND kit_depends ${kit_wrapper_javas})

set(kit_manifest "${JBRG_KIT_OUT}/MANIFEST.MF")
file(MAKE_DIRECTORY "${JBRG_KIT_OUT}")
file(WRITE "${kit_manifest}.in" "Implementation-Title: jbrg\nImplementation-Version: ${PROJECT_VERSION}\n"
  "Implementation-Vendor: jbrg\nX-Jbrg-Target: ${CMAKE_SYSTEM_PROCESSOR}\n")
configure_file("${kit_manifest}.in" "${kit_manifest}" COPYONLY)

list(JOIN kit_class_dirs "|" kit_class_arg)
list(JOIN kit_source_dirs "|" kit_source_arg)
list(JOIN JBRG_LIBRARY_MANIFESTS "|" kit_manifest_arg)
add_custom_command(
  OUTPUT "${JBRG_KIT_JAR}" "${JBRG_KIT_SOURCES_JAR}"
  COMMAND ${CMAKE_COMMAND}
          "-DCLASS_DIRS=${kit_class_arg}" "-DSOURCE_DIRS=${kit_source_arg}" "-DMANIFESTS=${kit_manifest_arg}"
          "-DMANIFEST_ROOT=${JBRG_WRAPPER_MANIFESTS}" "-DWRAPPER_CLASSES=${JBRG_WRAPPER_CLASSES}"
          "-DWRAPPER_JAVA=${JBRG_WRAPPER_OUT}/java" "-DOUT=${JBRG_KIT_OUT}" "-DJAR=${JBRG_JAR}"
          "-DJAR_MANIFEST=${kit_manifest}"
          -P "${CMAKE_SOURCE_DIR}/cmake/jbrg_kit_jar.cmake"
  DEPENDS ${kit_depends} "${kit_manifest}" "${CMAKE_SOURCE_DIR}/cmake/jbrg_kit_jar.cmake" ${kit_targets}
  COMMENT "jar jbrg-kit.jar"
  VERBATIM)
add_custom_target(jbrg_kit_jar ALL DEPENDS "${JBRG_KIT_JAR}" "${JBRG_KIT_SOURCES_JAR}")
add_dependencies(jbrg_kit_jar ${kit_targets})

# Everything the install copies, built alone by `./jbrg kit`.
add_custom_target(jbrg_kit)
set(kit_libraries jbrgCMT jbrgsim)
if(TARGET jbrgsimctl)
  list(APPEND kit_libraries jbrgsimctl)
endif()
add_dependencies(jbrg_kit ${kit_libraries} jbrg_kit_jar jbrg_scenario_load)

# ---- Install ----------------------------------------------------------------------------------------------

set_target_properties(${kit_libraries} PROPERTIES INSTALL_RPATH "\$ORIGIN")
set_target_properties(jbrg_scenario_load PROPERTIES INSTALL_RPATH "\$ORIGIN/../lib")
install(TARGETS ${kit_libraries} LIBRARY DESTINATION lib COMPONENT kit)
install(TARGETS jbrg_scenario_load RUNTIME DESTINATION bin COMPONENT kit)
install(PROGRAMS "${CMAKE_SOURCE_DIR}/tools/scenario_validate.py" DESTINATION bin
        RENAME jbrg-scenario-validate COMPONENT kit)
install(FILES "${JBRG_KIT_JAR}" "${JBRG_KIT_SOURCES_JAR}" DESTINATION java COMPONENT kit)
install(FILES "${JBRG_KIT_JAR}" DESTINATION java RENAME "jbrg-kit-${PROJECT_VERSION}.jar" COMPONENT kit)
install(FILES "${CMAKE_SOURCE_DIR}/sim/schema/scenario.schema.json" DESTINATION share/jbrg COMPONENT kit)
file(GLOB kit_examples CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/sim/scenarios/*.json")
install(FILES ${kit_examples} DESTINATION share/jbrg/examples COMPONENT kit)
install(FILES "${CMAKE_SOURCE_DIR}/docs/kit.md" DESTINATION share/doc/jbrg RENAME GUIDE.md COMPONENT kit)
install(FILES "${CMAKE_SOURCE_DIR}/docs/simulator-java.md" DESTINATION share/doc/jbrg COMPONENT kit)
# The example application, when the tree has it (taken at install time, whenever it appeared).
install(DIRECTORY "${CMAKE_SOURCE_DIR}/kit/example/" DESTINATION share/doc/jbrg/example COMPONENT kit
        USE_SOURCE_PERMISSIONS OPTIONAL)

# ---- Tests ------------------------------------------------------------------------------------------------

if(JBRG_BUILD_TESTS)
  # The installed kit, loaded by a plain Java VM of the target: the build machine's, or for a cross build the
  # target's under the emulator. Not for a sanitized build, whose libraries a plain VM cannot load.
  if(NOT JBRG_SANITIZE AND (NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR))
    add_test(NAME jbrg_kit COMMAND "${Python3_EXECUTABLE}" "${CMAKE_SOURCE_DIR}/tests/kit/test_kit.py")
    list(JOIN JBRG_LIBRARY_MANIFESTS ":" kit_test_manifests)
    list(JOIN kit_class_dirs ":" kit_test_class_dirs)
    set(kit_test_environment "JBRG_BUILD=${CMAKE_BINARY_DIR}" "JBRG_VERSION=${PROJECT_VERSION}"
      "JBRG_JAVA_HOME=${JBRG_JAVA_HOME}" "JBRG_MANIFEST_ROOT=${JBRG_WRAPPER_MANIFESTS}"
      "JBRG_MANIFESTS=${kit_test_manifests}" "JBRG_CLASS_DIRS=${kit_test_class_dirs}")
    if(CMAKE_CROSSCOMPILING)
      # The target's programs run under the emulator (words separated by "|").
      list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "|" kit_emulator)
      list(APPEND kit_test_environment "JBRG_TARGET_RUN=${kit_emulator}"
        "JBRG_TARGET_JAVA=${JBRG_TARGET_JAVA_HOME}/bin/java")
    endif()
    set_tests_properties(jbrg_kit PROPERTIES TIMEOUT 600 ENVIRONMENT "${kit_test_environment}")
  endif()
endif()
