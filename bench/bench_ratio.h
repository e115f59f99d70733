// What every benchmark program shares: a reporter that keeps each benchmark's time, so that the program can
// print the ratio of each bridge path to its baseline of the same run.
#ifndef JBRG_BENCH_BENCH_RATIO_H
#define JBRG_BENCH_BENCH_RATIO_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace jbrg_bench {

// Keeps each benchmark's time per iteration, to print the ratios at the end.
class ratio_reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        // By the benchmark's function name, without the options Google Benchmark adds to it ("/min_time:2").
        for (const Run& run : runs) times[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
    std::map<std::string, double> times;
};

}  // namespace jbrg_bench

#endif  // JBRG_BENCH_BENCH_RATIO_H
