// File throughput through the storage module, against java.nio's FileChannel on the same folder in the same
// run: a 64 MiB file written and read in blocks of 64 KiB, from Java, both ways.
//
//   storage_write_baseline / storage_write_bridge   FileChannel.write / xdof_strg_storageio_write
//   storage_read_baseline / storage_read_bridge     FileChannel.read / xdof_strg_storageio_read
//
// The program prints, after Google Benchmark's table, each path's throughput as a share of the baseline's
// (goal: at least 0.8). The simulated device's call log, which a device does not keep, is cleared outside the
// timed part.
#include <benchmark/benchmark.h>
#include <jni.h>

#include <cstdio>
#include <string>

#include "bench/bench_ratio.h"
#include "core/cjvm.h"
#include "jbrg_sim/control.h"
#include "tests/harness/jvm_boot.h"

namespace {

JNIEnv* env = nullptr;
constexpr jint kBlocks = 1024;  // 64 MiB
constexpr int kArea = 45;       // area 0 of the hard disk

// Runs one static method of jbrg.test.storage.StorageBench per iteration; it moves the whole file.
void run(benchmark::State& state, const char* method, bool with_folder) {
    jclass bench = env->FindClass("jbrg/test/storage/StorageBench");
    jmethodID id = env->GetStaticMethodID(bench, method, with_folder ? "(Ljava/lang/String;I)J" : "(I)J");
    jstring folder = env->NewStringUTF(jbrg_sim::area_folder(kArea).c_str());
    for (auto _ : state) {
        const jlong moved = with_folder ? env->CallStaticLongMethod(bench, id, folder, kBlocks)
                                        : env->CallStaticLongMethod(bench, id, kBlocks);
        if (env->ExceptionCheck() || moved != static_cast<jlong>(kBlocks) * 65536) {
            env->ExceptionDescribe();
            state.SkipWithError("the file did not move whole");
            break;
        }
        state.PauseTiming();
        jbrg_sim::clear_calls();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(kBlocks) * 65536);
    env->DeleteLocalRef(folder);
    env->DeleteLocalRef(bench);
}

void storage_write_baseline(benchmark::State& state) { run(state, "writeChannel", true); }
void storage_write_bridge(benchmark::State& state) { run(state, "writeBridge", false); }
void storage_read_baseline(benchmark::State& state) { run(state, "readChannel", true); }
void storage_read_bridge(benchmark::State& state) { run(state, "readBridge", false); }

}  // namespace

// Writes first, so that each read finds the file its path wrote. Each path runs five times and its median
// counts: on a shared machine one run may differ from the next by a tenth.
#define JBRG_STORAGE_BENCHMARK(name) \
    BENCHMARK(name)->Unit(benchmark::kMillisecond)->MinTime(1.0)->Repetitions(5)->ReportAggregatesOnly(true)
JBRG_STORAGE_BENCHMARK(storage_write_baseline);
JBRG_STORAGE_BENCHMARK(storage_write_bridge);
JBRG_STORAGE_BENCHMARK(storage_read_baseline);
JBRG_STORAGE_BENCHMARK(storage_read_bridge);

int main(int argc, char** argv) {
    JavaVM* vm = jbrg_bench::boot_with_bridge(&env);
    if (vm == nullptr) return 1;
    // A medium with room for the file twice over.
    jbrg_sim::load_scenario(R"({"storage": {"areas": [{"id": 45}],
        "statfs": {"block_size": 4096, "blocks": 262144, "free": 262144, "available": 262144}}})");
    benchmark::Initialize(&argc, argv);
    jbrg_bench::ratio_reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratios("throughput as a share of FileChannel's in the same run (goal: at least 0.8):",
                          {"storage_write", "storage_read"}, true);
    benchmark::Shutdown();
    vm->DestroyJavaVM();
    return 0;
}
