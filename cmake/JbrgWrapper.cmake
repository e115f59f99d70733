# Generated wrapper modules.
#
# jbrg_wrapper_modules(<target> <descriptions...>) generates the exports of module descriptions
# (wrapper/<package path>/<module>.wrap) and compiles them into <target>:
#   1. for each module, tools/wrapgen/wrapgen.py writes <module>_wrap.cpp, the Java class <module>JNI, the
#      manifest (manifests/<package path>/<module>.exports), the names Java applications link against as stated
#      (<module>.stated beside it) and the table of exports the hostile-argument probe calls (<module>.probe);
#      the custom target jbrg_wrap_<package path with underscores>_<module> stands for these files;
#   2. one javac -h run compiles the Java classes of all the target's modules into JBRG_WRAPPER_CLASSES and
#      writes the C headers of their natives (the custom target jbrg_javac_<target>); a header is replaced only
#      when it changed;
#   3. each C++ file is compiled against its module's header, with -Wmissing-declarations, so an export whose
#      name or signature differs from what Java resolves does not build.
# The module and package are those of the file's name and folder; the generator checks that the
# description says the same. Names carry the package, so modules of the same name in two packages coexist.

find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(JBRG_WRAPGEN "${CMAKE_SOURCE_DIR}/tools/wrapgen/wrapgen.py")
set(JBRG_WRAPPER_OUT "${CMAKE_BINARY_DIR}/wrapper")
set(JBRG_WRAPPER_CLASSES "${JBRG_WRAPPER_OUT}/classes")
set(JBRG_WRAPPER_HEADERS "${JBRG_WRAPPER_OUT}/include")
set(JBRG_WRAPPER_MANIFESTS "${JBRG_WRAPPER_OUT}/manifests")

function(jbrg_wrapper_modules target)
  set(javas "")
  set(headers "")
  set(module_targets "")
  set(staged_headers "")
  # javac writes every header anew; only those that changed are copied where the C++ files include them, so
  # that a change to one module recompiles that module's exports only.
  set(staging "${JBRG_WRAPPER_OUT}/javac-h/${target}")
  foreach(description ${ARGN})
    get_filename_component(desc "${description}" ABSOLUTE)
    get_filename_component(module "${desc}" NAME_WE)
    get_filename_component(dir "${desc}" DIRECTORY)
    # The package path is the folder below the nearest "wrapper" folder.
    string(REGEX REPLACE ".*/wrapper/" "" package_path "${dir}/")
    string(REGEX REPLACE "/$" "" package_path "${package_path}")
    string(REPLACE "/" "." package "${package_path}")
    string(REPLACE "/" "_" package_id "${package_path}")

    set(java "${JBRG_WRAPPER_OUT}/java/orvane/qsf/wrapper/${package_path}/${module}JNI.java")
    set(cpp "${JBRG_WRAPPER_OUT}/${package_path}/${module}_wrap.cpp")
    set(manifest "${JBRG_WRAPPER_MANIFESTS}/${package_path}/${module}.exports")
    set(stated "${JBRG_WRAPPER_MANIFESTS}/${package_path}/${module}.stated")
    set(probe "${JBRG_WRAPPER_MANIFESTS}/${package_path}/${module}.probe")
    # javac -h names the header after the class, with underscores for its dots.
    string(REPLACE "/" "_" header_name "orvane/qsf/wrapper/${package_path}/${module}JNI")
    set(header "${JBRG_WRAPPER_HEADERS}/${header_name}.h")
    set(staged_header "${staging}/${header_name}.h")

    add_custom_command(
      OUTPUT "${cpp}" "${java}" "${manifest}" "${stated}" "${probe}"
      COMMAND Python3::Interpreter "${JBRG_WRAPGEN}" "${desc}" --module "${module}" --package "${package}"
              --cpp "${cpp}" --java-root "${JBRG_WRAPPER_OUT}/java" --manifest "${manifest}"
              --stated "${stated}" --probe "${probe}" --depfile "${cpp}.d"
      DEPENDS "${desc}" "${JBRG_WRAPGEN}"
      # The shared parts (wrapper/shared/*.wrapi) the description uses: a change to one regenerates every
      # module that uses it.
      DEPFILE "${cpp}.d"
      COMMENT "wrapgen ${package}.${module}"
      VERBATIM)
    set(module_target "jbrg_wrap_${package_id}_${module}")
    add_custom_target(${module_target} DEPENDS "${cpp}" "${java}" "${manifest}" "${stated}" "${probe}")
    list(APPEND module_targets ${module_target})
    list(APPEND javas "${java}")
    list(APPEND headers "${header}")
    list(APPEND staged_headers "${staged_header}")

    target_sources(${target} PRIVATE "${cpp}")
    set_source_files_properties("${cpp}" PROPERTIES
      OBJECT_DEPENDS "${header}"
      COMPILE_OPTIONS "-Wmissing-declarations")
    set_property(GLOBAL APPEND PROPERTY JBRG_WRAPPER_MANIFEST_FILES "${manifest}")
  endforeach()
  if(NOT javas)
    return()
  endif()

  # One javac for all the modules of the target: starting the compiler costs more than compiling a module.
  list(LENGTH javas count)
  # The stamp says when javac last ran; the headers, kept when unchanged, say what changed.
  set(stamp "${staging}.stamp")
  add_custom_command(
    OUTPUT "${stamp}"
    BYPRODUCTS ${headers}
    COMMAND "${JBRG_JAVAC}" --release 17 -Xlint:all -Werror -encoding UTF-8
            -h "${staging}" -d "${JBRG_WRAPPER_CLASSES}" ${javas}
    COMMAND ${CMAKE_COMMAND} -E make_directory "${JBRG_WRAPPER_HEADERS}"
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${staged_headers} "${JBRG_WRAPPER_HEADERS}"
    COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
    DEPENDS ${javas}
    COMMENT "javac -h: the natives of the ${count} modules of ${target}"
    VERBATIM)
  set(javac_target "jbrg_javac_${target}")
  add_custom_target(${javac_target} DEPENDS "${stamp}")
  # The module targets first, so that no generator other than Ninja runs a module's wrapgen twice.
  add_dependencies(${javac_target} ${module_targets})
  add_dependencies(${target} ${javac_target})
  target_include_directories(${target} PRIVATE "${JBRG_WRAPPER_HEADERS}")
  set_property(GLOBAL APPEND PROPERTY JBRG_WRAPPER_TARGETS ${javac_target})
endfunction()
