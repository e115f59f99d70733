#include "tests/harness/jvm_boot.h"

int main(int argc, char** argv) { return jbrg_test::run_test_program(argc, argv); }
