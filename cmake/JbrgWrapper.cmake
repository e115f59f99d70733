# Generated wrapper modules.
#
# jbrg_wrapper_module(<target> <description>) generates the exports of one module description
# (wrapper/<package path>/<module>.wrap) and compiles them into <target>:
#   1. tools/wrapgen/wrapgen.py writes <module>_wrap.cpp, the Java class <module>JNI, the manifest, the
#      names Java applications link against as stated (<module>.stated) and the table of exports the
#      hostile-argument probe calls (<module>.probe);
#   2. javac -h compiles the Java class into JBRG_WRAPPER_CLASSES and writes the C header of its natives;
#   3. the C++ file is compiled against that header, with -Wmissing-declarations, so an export whose name
#      or signature differs from what Java resolves does not build.
# The module and package are those of the file's name and folder; the generator checks that the
# description says the same.

find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(JBRG_WRAPGEN "${CMAKE_SOURCE_DIR}/tools/wrapgen/wrapgen.py")
set(JBRG_WRAPPER_OUT "${CMAKE_BINARY_DIR}/wrapper")
set(JBRG_WRAPPER_CLASSES "${JBRG_WRAPPER_OUT}/classes")
set(JBRG_WRAPPER_HEADERS "${JBRG_WRAPPER_OUT}/include")
set(JBRG_WRAPPER_MANIFESTS "${JBRG_WRAPPER_OUT}/manifests")

function(jbrg_wrapper_module target description)
  get_filename_component(desc "${description}" ABSOLUTE)
  get_filename_component(module "${desc}" NAME_WE)
  get_filename_component(dir "${desc}" DIRECTORY)
  # The package path is the folder below the nearest "wrapper" folder.
  string(REGEX REPLACE ".*/wrapper/" "" package_path "${dir}/")
  string(REGEX REPLACE "/$" "" package_path "${package_path}")
  string(REPLACE "/" "." package "${package_path}")

  set(java_rel "orvane/qsf/wrapper/${package_path}/${module}JNI.java")
  set(java "${JBRG_WRAPPER_OUT}/java/${java_rel}")
  set(cpp "${JBRG_WRAPPER_OUT}/${package_path}/${module}_wrap.cpp")
  set(manifest "${JBRG_WRAPPER_MANIFESTS}/${module}.exports")
  set(stated "${JBRG_WRAPPER_MANIFESTS}/${module}.stated")
  set(probe "${JBRG_WRAPPER_MANIFESTS}/${module}.probe")
  # javac -h names the header after the class, with underscores for its dots.
  string(REPLACE "/" "_" header_name "orvane/qsf/wrapper/${package_path}/${module}JNI")
  set(header "${JBRG_WRAPPER_HEADERS}/${header_name}.h")

  add_custom_command(
    OUTPUT "${cpp}" "${java}" "${manifest}" "${stated}" "${probe}"
    COMMAND Python3::Interpreter "${JBRG_WRAPGEN}" "${desc}" --module "${module}" --package "${package}"
            --cpp "${cpp}" --java-root "${JBRG_WRAPPER_OUT}/java" --manifest "${manifest}"
            --stated "${stated}" --probe "${probe}"
    DEPENDS "${desc}" "${JBRG_WRAPGEN}"
    COMMENT "wrapgen ${module}"
    VERBATIM)
  add_custom_command(
    OUTPUT "${header}"
    COMMAND "${JBRG_JAVAC}" --release 17 -Xlint:all -Werror -encoding UTF-8
            -h "${JBRG_WRAPPER_HEADERS}" -d "${JBRG_WRAPPER_CLASSES}" "${java}"
    DEPENDS "${java}"
    COMMENT "javac -h ${module}JNI"
    VERBATIM)
  add_custom_target(${module}_jni DEPENDS "${header}" "${manifest}" "${stated}" "${probe}")
  add_dependencies(${target} ${module}_jni)
  target_sources(${target} PRIVATE "${cpp}")
  set_source_files_properties("${cpp}" PROPERTIES
    OBJECT_DEPENDS "${header}"
    COMPILE_OPTIONS "-Wmissing-declarations")
  target_include_directories(${target} PRIVATE "${JBRG_WRAPPER_HEADERS}")
  set_property(GLOBAL APPEND PROPERTY JBRG_WRAPPER_MANIFEST_FILES "${manifest}")
  set_property(GLOBAL APPEND PROPERTY JBRG_WRAPPER_TARGETS ${module}_jni)
endfunction()
