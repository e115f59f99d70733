// Benchmarks of the bridge core, each against a baseline measured in the same run:
//
//   object_creation   building a Java object through the identifier cache, against looking its class and
//                     constructor up on every call (CJvm::CreateJavaObject)
//   trace_line        a trace line through JBRG_TRACE, against handing the printer a ready message
//   export_call       a generated native (cmt_time getter) called from Java, against a plain Java method
//
// The program prints, after Google Benchmark's table, the ratio of each bridge path to its baseline.
#include <benchmark/benchmark.h>
#include <jni.h>

#include <cstdio>
#include <map>
#include <string>

#include "bench/bench_ratio.h"
#include "core/cjvm.h"
#include "core/jni_cache.h"
#include "core/trace.h"
#include "emw_services.h"
#include "jbrg_sim/control.h"
#include "tests/harness/jvm_boot.h"

namespace {

JNIEnv* env = nullptr;

orvane::jni::class_id jcls_plain{"jbrg/test/Plain"};
orvane::jni::method_id mid_plain{jcls_plain, "<init>", "()V"};

void object_creation_baseline(benchmark::State& state) {
    for (auto _ : state) {
        // Creation by name leaves the class reference in the caller's frame: one frame per object.
        env->PushLocalFrame(4);
        benchmark::DoNotOptimize(orvane::CJvm::CreateJavaObject("jbrg/test/Plain"));
        env->PopLocalFrame(nullptr);
    }
}

void object_creation_bridge(benchmark::State& state) {
    for (auto _ : state) {
        env->PushLocalFrame(4);
        benchmark::DoNotOptimize(orvane::jni::create_object(JBRG_TRACE_SITE, mid_plain));
        env->PopLocalFrame(nullptr);
    }
}

void trace_line_baseline(benchmark::State& state) {
    for (auto _ : state) {
        emwGENTrcPrintf(orvane::kTraceModule, orvane::kTraceLevel, 0, orvane::kTraceFormat, "bench_core.cpp", 1,
                        "trace_line", "[Enter]. box_id=(7), passwd=(secret)");
    }
    jbrg_sim::clear_traces();
}

void trace_line_bridge(benchmark::State& state) {
    for (auto _ : state) {
        JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s)", 7UL, "secret");
    }
    jbrg_sim::clear_traces();
}

void export_call(benchmark::State& state, const char* method) {
    jclass bench = env->FindClass("jbrg/test/Bench");
    jmethodID run = env->GetStaticMethodID(bench, method, "(I)I");
    for (auto _ : state) {
        benchmark::DoNotOptimize(env->CallStaticIntMethod(bench, run, 1000));
        if (env->ExceptionCheck()) {
            env->ExceptionDescribe();
            state.SkipWithError("Java threw");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
void export_call_baseline(benchmark::State& state) { export_call(state, "plainCalls"); }
void export_call_bridge(benchmark::State& state) { export_call(state, "nativeCalls"); }


}  // namespace

BENCHMARK(object_creation_baseline);
BENCHMARK(object_creation_bridge);
BENCHMARK(trace_line_baseline);
BENCHMARK(trace_line_bridge);
BENCHMARK(export_call_baseline);
BENCHMARK(export_call_bridge);

int main(int argc, char** argv) {
    JavaVM* vm = jbrg_bench::boot_with_bridge(&env);
    if (vm == nullptr) return 1;
    benchmark::Initialize(&argc, argv);
    jbrg_bench::ratio_reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratios("ratio to the baseline of the same run (lower is faster):",
                          {"object_creation", "trace_line", "export_call"});
    benchmark::Shutdown();
    vm->DestroyJavaVM();
    return 0;
}
