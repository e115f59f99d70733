# Cross build for 32-bit ARM Linux (armhf: ARMv7, hard-float EABI) with the
# Debian cross toolchain, running the results under qemu-user.
#
#   cmake -S . -B build/armhf -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-armhf.cmake
#   or, in CMakePresets.json:
#     "toolchainFile": "${sourceDir}/cmake/toolchain-armhf.cmake"
#
# Host packages: g++-arm-linux-gnueabihf, qemu-user.
#
# Executables are run through CMAKE_CROSSCOMPILING_EMULATOR, i.e.
# "qemu-arm -L <runtime>/sysroot <program>", so add_test(), ctest and
# gtest_discover_tests() run them without binfmt_misc. The library prefix and
# the armhf Java runtime are prepared by tools/armhf-runtime.sh in
# JBRG_ARMHF_RUNTIME_DIR (default: <build>/armhf-runtime). With
# JBRG_ARMHF_PREPARE_RUNTIME on (the default) this file runs that script on
# every configure (a no-op once everything is in place) and sets:
#
#   JBRG_ARMHF_JAVA_HOME     the armhf JDK; libjvm.so is in lib/server
#   JBRG_ARMHF_SYSROOT       the qemu library prefix (QEMU_LD_PREFIX)
#
# Turn it off to prepare the runtime yourself (or not at all, for a build
# that never runs anything).

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(JBRG_ARMHF_TRIPLE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER ${JBRG_ARMHF_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${JBRG_ARMHF_TRIPLE}-g++)
# GCC notes on every std::vector<double> iterator etc. that its argument
# passing changed in GCC 7.1. Only matters when linking against code built
# by GCC < 7.1, which nothing here is; the notes drown real warnings.
set(CMAKE_C_FLAGS_INIT "-Wno-psabi")
set(CMAKE_CXX_FLAGS_INIT "-Wno-psabi")

# The Debian cross toolchain keeps its target headers and libraries in
# /usr/arm-linux-gnueabihf. Search only there for libraries, headers and
# packages, so that nothing from the x86-64 host (/usr/lib/x86_64-linux-gnu,
# the host JDK, ...) ends up in an ARM link. Programs (javac, python, ...)
# are still host programs.
set(CMAKE_FIND_ROOT_PATH /usr/${JBRG_ARMHF_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Never let pkg-config report host flags.
set(ENV{PKG_CONFIG_LIBDIR} "/usr/lib/${JBRG_ARMHF_TRIPLE}/pkgconfig:/usr/share/pkgconfig")
set(ENV{PKG_CONFIG_SYSROOT_DIR} "")

# ---------------------------------------------------------------------------
# Running ARM binaries.

find_program(JBRG_QEMU_ARM NAMES qemu-arm qemu-arm-static
  DOC "qemu-user emulator used to run armhf programs")
if(NOT JBRG_QEMU_ARM)
  message(FATAL_ERROR "qemu-arm not found; install it with: apt-get install qemu-user")
endif()

set(JBRG_ARMHF_RUNTIME_DIR "${CMAKE_BINARY_DIR}/armhf-runtime" CACHE PATH
  "Where tools/armhf-runtime.sh keeps the armhf Java runtime and the qemu library prefix")
option(JBRG_ARMHF_PREPARE_RUNTIME
  "Run tools/armhf-runtime.sh at configure time to fetch the armhf Java runtime" ON)

set(JBRG_ARMHF_SYSROOT "${JBRG_ARMHF_RUNTIME_DIR}/sysroot")
set(JBRG_ARMHF_JAVA_HOME "${JBRG_ARMHF_RUNTIME_DIR}/root/usr/lib/jvm/java-17-openjdk-armhf")

# -L sets the prefix qemu loads the ARM dynamic loader and libraries from
# (same as QEMU_LD_PREFIX); the JVM finds its home from the location of
# libjvm.so, so no JAVA_HOME is needed at run time.
set(CMAKE_CROSSCOMPILING_EMULATOR "${JBRG_QEMU_ARM};-L;${JBRG_ARMHF_SYSROOT}")

# Nested try_compile() projects read this file again; they need neither the
# runtime nor another run of the script. The top-level configure reads it
# more than once too, hence the global property: one run per cmake call.
get_property(_jbrg_in_try_compile GLOBAL PROPERTY IN_TRY_COMPILE)
if(JBRG_ARMHF_PREPARE_RUNTIME AND NOT _jbrg_in_try_compile)
  get_property(_jbrg_out GLOBAL PROPERTY JBRG_ARMHF_RUNTIME_OUTPUT)
  if(NOT _jbrg_out)
    execute_process(
      COMMAND bash "${CMAKE_CURRENT_LIST_DIR}/../tools/armhf-runtime.sh" "${JBRG_ARMHF_RUNTIME_DIR}"
      RESULT_VARIABLE _jbrg_rc
      OUTPUT_VARIABLE _jbrg_out
      OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT _jbrg_rc EQUAL 0)
      message(FATAL_ERROR "tools/armhf-runtime.sh failed (see above). "
        "Configure with -DJBRG_ARMHF_PREPARE_RUNTIME=OFF to skip it.")
    endif()
    set_property(GLOBAL PROPERTY JBRG_ARMHF_RUNTIME_OUTPUT "${_jbrg_out}")
  endif()
  # Take the paths the script reports rather than assuming its layout.
  string(REGEX MATCH "JAVA_HOME=([^\n]*)" _jbrg_match "${_jbrg_out}")
  set(JBRG_ARMHF_JAVA_HOME "${CMAKE_MATCH_1}")
  string(REGEX MATCH "QEMU_LD_PREFIX=([^\n]*)" _jbrg_match "${_jbrg_out}")
  set(JBRG_ARMHF_SYSROOT "${CMAKE_MATCH_1}")
  set(CMAKE_CROSSCOMPILING_EMULATOR "${JBRG_QEMU_ARM};-L;${JBRG_ARMHF_SYSROOT}")
endif()

# The unpacked runtime holds ARM libraries (libjvm.so, libz.so.1), so
# find_library() may look there as well.
list(APPEND CMAKE_FIND_ROOT_PATH "${JBRG_ARMHF_RUNTIME_DIR}/root")

unset(_jbrg_in_try_compile)
unset(_jbrg_out)
unset(_jbrg_rc)
unset(_jbrg_match)
