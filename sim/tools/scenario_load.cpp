// jbrg-scenario-load FILE...: loads each scenario file into the simulated device, as a test or the
// JBRG_SIM_SCENARIO variable would, and prints "FILE: ok" or why the device refuses it (the JSON pointer of the
// offending value). Exit status 1 when any is refused.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "jbrg_sim/control.h"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s SCENARIO.json...\n", argv[0]);
        return 2;
    }
    // Each file alone is judged: not the scenario the environment names for the device's start.
    ::unsetenv("JBRG_SIM_SCENARIO");
    int status = 0;
    for (int i = 1; i < argc; ++i) {
        try {
            jbrg_sim::load_scenario_file(argv[i]);
            std::printf("%s: ok\n", argv[i]);
        } catch (const std::exception& e) {
            std::fprintf(stderr, "%s: %s\n", argv[i], e.what());
            status = 1;
        }
    }
    return status;
}
