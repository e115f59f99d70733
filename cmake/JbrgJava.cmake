# The JDK of the build machine (headers, javac) and the Java runtime of the target (libjvm for the tests).

if(NOT JBRG_JAVA_HOME)
  if(DEFINED ENV{JAVA_HOME} AND EXISTS "$ENV{JAVA_HOME}/bin/javac")
    set(_home "$ENV{JAVA_HOME}")
  else()
    find_program(_javac javac REQUIRED)
    file(REAL_PATH "${_javac}" _javac_real)
    cmake_path(GET _javac_real PARENT_PATH _bin)
    cmake_path(GET _bin PARENT_PATH _home)
  endif()
  set(JBRG_JAVA_HOME "${_home}" CACHE PATH "JDK on the build machine" FORCE)
endif()
if(NOT EXISTS "${JBRG_JAVA_HOME}/include/jni.h")
  message(FATAL_ERROR "No JDK at ${JBRG_JAVA_HOME} (jni.h missing): install openjdk-17-jdk-headless")
endif()

set(JBRG_JAVAC "${JBRG_JAVA_HOME}/bin/javac")
set(JBRG_JNI_INCLUDE_DIRS "${JBRG_JAVA_HOME}/include" "${JBRG_JAVA_HOME}/include/linux")

if(NOT JBRG_TARGET_JAVA_HOME)
  if(JBRG_ARMHF_JAVA_HOME)
    # The armhf runtime that the ARM toolchain file prepared.
    set(JBRG_TARGET_JAVA_HOME "${JBRG_ARMHF_JAVA_HOME}" CACHE PATH "Java runtime of the target" FORCE)
  elseif(NOT CMAKE_CROSSCOMPILING)
    set(JBRG_TARGET_JAVA_HOME "${JBRG_JAVA_HOME}" CACHE PATH "Java runtime of the target" FORCE)
  endif()
endif()
set(JBRG_TARGET_LIBJVM "${JBRG_TARGET_JAVA_HOME}/lib/server/libjvm.so")

# jbrg_java_classes(<target> OUTPUT <dir> SOURCES <files...> [CLASSPATH <dirs...>] [HEADERS <dir>] [DEPENDS ...])
# Compiles Java sources into <dir> (for Java 17) as the custom target <target>; with HEADERS, javac also writes
# the C headers of the classes' native methods there.
function(jbrg_java_classes target)
  cmake_parse_arguments(ARG "" "OUTPUT;HEADERS" "SOURCES;CLASSPATH;DEPENDS" ${ARGN})
  set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${target}.stamp")
  set(cp_args "")
  if(ARG_CLASSPATH)
    list(JOIN ARG_CLASSPATH ":" cp)
    set(cp_args -classpath "${cp}")
  endif()
  set(header_args "")
  if(ARG_HEADERS)
    set(header_args -h "${ARG_HEADERS}")
  endif()
  add_custom_command(
    OUTPUT "${stamp}"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${ARG_OUTPUT}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${ARG_OUTPUT}"
    COMMAND "${JBRG_JAVAC}" --release 17 -Xlint:all -Werror -encoding UTF-8 ${cp_args} ${header_args}
            -d "${ARG_OUTPUT}" ${ARG_SOURCES}
    COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
    DEPENDS ${ARG_SOURCES} ${ARG_DEPENDS}
    COMMENT "javac ${target}"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS "${stamp}")
endfunction()
