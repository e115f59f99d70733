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
# "qemu-arm -L <runtime>/sysroot <program>", so add_test() and ctest run them
# without binfmt_misc. The armhf Java runtime and the qemu library prefix are
# not made here: a toolchain file only describes the toolchain. They are
# prepared by tools/armhf-runtime.sh <dir> (./jbrg test arm runs it before it
# configures), and this file only names where they are:
#
#   JBRG_ARMHF_RUNTIME_DIR   what the script was given (default:
#                            <build>/armhf-runtime)
#   JBRG_ARMHF_JAVA_HOME     the armhf JDK; libjvm.so is in lib/server
#   JBRG_ARMHF_SYSROOT       the qemu library prefix (QEMU_LD_PREFIX)
#
# A build that never runs anything needs neither.

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
# The layout tools/armhf-runtime.sh makes (it prints the same two paths).
set(JBRG_ARMHF_SYSROOT "${JBRG_ARMHF_RUNTIME_DIR}/sysroot")
set(JBRG_ARMHF_JAVA_HOME "${JBRG_ARMHF_RUNTIME_DIR}/root/usr/lib/jvm/java-17-openjdk-armhf")

# -L sets the prefix qemu loads the ARM dynamic loader and libraries from
# (same as QEMU_LD_PREFIX); the JVM finds its home from the location of
# libjvm.so, so no JAVA_HOME is needed at run time.
set(CMAKE_CROSSCOMPILING_EMULATOR "${JBRG_QEMU_ARM};-L;${JBRG_ARMHF_SYSROOT}")

# The unpacked runtime holds ARM libraries (libjvm.so, libz.so.1), so
# find_library() may look there as well.
list(APPEND CMAKE_FIND_ROOT_PATH "${JBRG_ARMHF_RUNTIME_DIR}/root")

