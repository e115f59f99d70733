// What every benchmark program shares: a reporter that keeps each benchmark's time, so that the program can
// print the ratio of each bridge path to its baseline of the same run.
#ifndef JBRG_BENCH_BENCH_RATIO_H
#define JBRG_BENCH_BENCH_RATIO_H

#include <benchmark/benchmark.h>
#include <jni.h>

#include <cstdio>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "core/cjvm.h"
#include "tests/harness/jvm_boot.h"

namespace jbrg_bench {

// A Java VM with the bridge found by the library and loaded for the Java side, as an application loads it;
// null when the bridge cannot be loaded.
inline JavaVM* boot_with_bridge(JNIEnv** env) {
    JavaVM* vm = jbrg_test::boot_jvm(env, false);
    orvane::CJvm::CreateJVM();
    JNIEnv* e = *env;
    jclass loader = e->FindClass("jbrg/test/Loader");
    jmethodID load = e->GetStaticMethodID(loader, "load", "(Ljava/lang/String;)V");
    e->CallStaticVoidMethod(loader, load, e->NewStringUTF(JBRG_TEST_BRIDGE_LIBRARY));
    if (e->ExceptionCheck()) {
        e->ExceptionDescribe();
        return nullptr;
    }
    return vm;
}

// Keeps each benchmark's time per iteration, to print the ratios at the end.
class ratio_reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        // By the benchmark's function name, without the options Google Benchmark adds to it ("/min_time:2");
        // of a benchmark run several times, its median.
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median") continue;
            times[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }
    std::map<std::string, double> times;

    // One line per benchmark pair `<name>_baseline` / `<name>_bridge` that ran: the bridge's time over the
    // baseline's, or (`throughput`) the baseline's over the bridge's.
    void print_ratios(const char* heading, std::initializer_list<const char*> names, bool throughput = false) const {
        std::printf("\n%s\n", heading);
        for (const char* name : names) {
            auto base = times.find(std::string(name) + "_baseline");
            auto bridge = times.find(std::string(name) + "_bridge");
            if (base == times.end() || bridge == times.end() || base->second <= 0 || bridge->second <= 0) continue;
            std::printf("  %-16s %6.2f\n", name, throughput ? base->second / bridge->second : bridge->second / base->second);
        }
    }
};

}  // namespace jbrg_bench

#endif  // JBRG_BENCH_BENCH_RATIO_H
