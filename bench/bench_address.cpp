// The cost per listed entry of the address book's personal address listing, against a baseline in the same
// run:
//
//   personal_listing_baseline  the bare JNI work of building the same Java objects for each address (its name
//                              and e-mail destination), with the lookups the describers make once per query,
//                              into an object array
//   personal_listing_bridge    cmt_address_book::get_all_personal_address of a book of the same addresses on
//                              the simulated device: the platform's listing, 20 records a get, the trace lines,
//                              the describers
//   personal_listing_platform  the platform's listing alone, as the bridge reads it (the same buffers and gets)
//                              and nothing built: the device's own part of the bridge's time
//
// Each reads 10,000 addresses an iteration. The program prints the ratio of the bridge to the baseline, and of
// the bridge's own part (its time less the platform's) to the baseline: the platform copies 2,704 bytes a
// record, which is the device's work, not the bridge's.
#include <benchmark/benchmark.h>
#include <jni.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "address/cmt_address_book.h"
#include "bench/bench_ratio.h"
#include "bench/listing_builders.h"
#include "core/cjvm.h"
#include "emw_services.h"
#include "jbrg_sim/address_book.h"
#include "jbrg_sim/control.h"
#include "tests/harness/jvm_boot.h"
#include "xsi_pbfs_address_book.h"

namespace {

constexpr int kAddresses = 10000;

JNIEnv* env = nullptr;
std::vector<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS> records;

void personal_listing_baseline(benchmark::State& state) {
    for (auto _ : state) env->DeleteLocalRef(jbrg_bench::personal_addresses(env, records));
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

void personal_listing_bridge(benchmark::State& state) {
    orvane::cmt_address_book book;
    for (auto _ : state) {
        jobjectArray array = book.get_all_personal_address();
        if (array == nullptr) state.SkipWithError("listing failed");
        env->DeleteLocalRef(array);
        // The simulated device keeps every call and trace line for the tests; a device keeps neither.
        state.PauseTiming();
        jbrg_sim::clear_traces();
        jbrg_sim::clear_calls();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

void personal_listing_platform(benchmark::State& state) {
    auto& book = *xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_instance();
    for (auto _ : state) {
        unsigned int handle = 0;
        unsigned int total = 0;
        book.xsi_pbfs_address_book_get_personal_address_list_prepare(20, handle, total);
        for (unsigned int index = 0; index < total;) {
            auto* buffer = static_cast<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS*>(
                emwOSWSubAllocMem(20 * sizeof(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS)));
            unsigned int got = 0;
            book.xsi_pbfs_address_book_get_personal_address_list(handle, got, buffer);
            benchmark::DoNotOptimize(buffer[0].name[0]);
            emwOSWOrgFreeMemPart(0, buffer);
            if (got == 0) break;
            index += got;
        }
        book.xsi_pbfs_address_book_get_personal_address_list_finish(handle);
        state.PauseTiming();
        jbrg_sim::clear_calls();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kAddresses);
}

}  // namespace

BENCHMARK(personal_listing_baseline)->Unit(benchmark::kMillisecond);
BENCHMARK(personal_listing_bridge)->Unit(benchmark::kMillisecond);
BENCHMARK(personal_listing_platform)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    JavaVM* vm = jbrg_test::boot_jvm(&env, false);
    orvane::CJvm::CreateJVM();
    // A book of 10,000 addresses with an e-mail destination each, and the same records for the baseline.
    for (int i = 0; i < kAddresses; ++i) {
        XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS r{};
        std::snprintf(r.name, sizeof r.name, "Person %05d", i);
        std::snprintf(r.pronunciation, sizeof r.pronunciation, "person %05d", i);
        std::snprintf(r.email.mail_address, sizeof r.email.mail_address, "person%05d@example.com", i);
        r.destinations = XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
        r.number = jbrg_sim::address_book::add_personal(r);
        records.push_back(r);
    }
    benchmark::Initialize(&argc, argv);
    jbrg_bench::ratio_reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double base = reporter.times["personal_listing_baseline"];
    const double bridge = reporter.times["personal_listing_bridge"];
    const double platform = reporter.times["personal_listing_platform"];
    if (base > 0) {
        std::printf("\nratio to the baseline of the same run (lower is faster):\n");
        std::printf("  %-30s %6.2f  (%.2f us an address)\n", "personal_listing", bridge / base,
                    bridge * 1000.0 / kAddresses);
        std::printf("  %-30s %6.2f  (goal: at most 1.20; the platform's listing takes %.2f us an address)\n",
                    "personal_listing, bridge's own", (bridge - platform) / base, platform * 1000.0 / kAddresses);
    }
    benchmark::Shutdown();
    vm->DestroyJavaVM();
    return 0;
}
