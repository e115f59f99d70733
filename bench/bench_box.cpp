// The cost per listed document of a box listing, against a baseline in the same run:
//
//   document_listing_baseline  the bare JNI work of building the same Java objects for each document, with the
//                              lookups the box module's describers make (class and fields per object, the
//                              enumeration constants and the calendar per value), appended to an ArrayList
//   document_listing_bridge    qsf_fnd_user_box_manager::qsf_fnd_get_document_list of a box of the same
//                              documents on the simulated device: the platform's listing, one document a get,
//                              the trace lines, the describers
//
// Both read 10,000 documents an iteration; the program prints the ratio of the bridge to the baseline.
#include <benchmark/benchmark.h>
#include <jni.h>

#include <cstdio>
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include "box/qsf_fnd_user_box_manager.h"
#include "bench/bench_ratio.h"
#include "bench/listing_builders.h"
#include "core/cjvm.h"
#include "emw_services.h"
#include "jbrg_sim/box.h"
#include "jbrg_sim/control.h"
#include "tests/harness/jvm_boot.h"
#include "xsi_pbfs_box.h"

namespace {

constexpr int kDocuments = 10000;

JNIEnv* env = nullptr;
uint32_t box_id = 0;
std::vector<XSI_PBFS_BOX_DOC_INFO> records;

void document_listing_baseline(benchmark::State& state) {
    for (auto _ : state) {
        jmethodID add = nullptr;
        jobject list = jbrg_bench::new_array_list(env, &add);
        for (const auto& r : records) jbrg_bench::append_document(env, list, add, r, box_id);
        env->DeleteLocalRef(list);
    }
    state.SetItemsProcessed(state.iterations() * kDocuments);
}

void document_listing_bridge(benchmark::State& state) {
    auto& manager = *orvane::qsf_fnd_user_box_manager::qsf_fnd_get_instance();
    for (auto _ : state) {
        jmethodID add = nullptr;
        jobject list = jbrg_bench::new_array_list(env, &add);
        if (manager.qsf_fnd_get_document_list(box_id, "", list) != 0) state.SkipWithError("listing failed");
        env->DeleteLocalRef(list);
        // The simulated device keeps every call and trace line for the tests; a device keeps neither.
        state.PauseTiming();
        jbrg_sim::clear_traces();
        jbrg_sim::clear_calls();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kDocuments);
}


}  // namespace

BENCHMARK(document_listing_baseline)->Unit(benchmark::kMillisecond);
BENCHMARK(document_listing_bridge)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    JavaVM* vm = jbrg_test::boot_jvm(&env, false);
    orvane::CJvm::CreateJVM();
    // A box of 10,000 documents on the simulated device, and the same records for the baseline.
    XSI_PBFS_BOX_DETAIL_INFO box{};
    box.box_common_info.box_num = 1;
    xsi_pbfs_box_facade::xsi_pbfs_box_get_instance()->xsi_pbfs_box_add_box(box);
    box_id = jbrg_sim::box::boxes().at(0).box_id;
    for (int i = 0; i < kDocuments; ++i) {
        jbrg_sim::box::document d;
        d.name = "document-" + std::to_string(i);
        d.date = 1700000000 + i;
        d.data_size = 4096;
        jbrg_sim::box::store_document(box_id, d);
    }
    const auto stored = jbrg_sim::box::box(box_id);
    for (const auto& d : stored->documents) {
        XSI_PBFS_BOX_DOC_INFO r{};
        std::snprintf(r.doc_name, sizeof r.doc_name, "%s", d.name.c_str());
        r.page_count = d.pages;
        r.date = d.date;
        r.data_size = d.data_size;
        r.doc_id = d.doc_id;
        records.push_back(r);
    }
    benchmark::Initialize(&argc, argv);
    jbrg_bench::ratio_reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    auto base = reporter.times.find("document_listing_baseline");
    auto bridge = reporter.times.find("document_listing_bridge");
    if (base != reporter.times.end() && bridge != reporter.times.end() && base->second > 0) {
        std::printf("\nratio to the baseline of the same run (lower is faster; goal: at most 1.20):\n");
        std::printf("  %-18s %6.2f  (%.2f us a document)\n", "document_listing", bridge->second / base->second,
                    bridge->second * 1000.0 / kDocuments);
    }
    benchmark::Shutdown();
    vm->DestroyJavaVM();
    return 0;
}
