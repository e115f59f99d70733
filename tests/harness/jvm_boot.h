// Starting the Java VM inside a test program.
//
// The test programs embed a real Java VM (the host's, or the 32-bit ARM one under emulation), started once
// with -Xcheck:jni and with its console captured through the "vfprintf" hook, so that the suite can count
// the VM's JNI warnings: a test that provokes one on purpose declares it, and any other one fails the run.
#ifndef JBRG_TESTS_HARNESS_JVM_BOOT_H
#define JBRG_TESTS_HARNESS_JVM_BOOT_H

#include <jni.h>

#include <string>

namespace jbrg_test {

// Runs the GoogleTest program (InitGoogleMock, RUN_ALL_TESTS) on a thread with a large stack, and returns
// its exit code. The VM is created on that thread: native code on the process's first thread gets only
// the VM's -Xss of stack once a VM runs there, which the 32-bit ARM VM keeps small.
int run_test_program(int argc, char** argv);

// Creates the VM with the test class path, or aborts the program with the VM's reason. `checked` runs it
// with -Xcheck:jni (the tests); the benchmarks measure the VM as the device runs it, unchecked.
JavaVM* boot_jvm(JNIEnv** env, bool checked = true);

// Everything the VM printed on its console so far.
std::string jvm_console();

// JNI warnings the VM printed so far ("WARNING in native method: ..." and the like).
int jni_warnings_seen();

}  // namespace jbrg_test

#endif  // JBRG_TESTS_HARNESS_JVM_BOOT_H
