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

jobject constant(const char* enum_class, const char* name) {
    jclass type = env->FindClass(enum_class);
    std::string signature = std::string("L") + enum_class + ";";
    jobject value = env->GetStaticObjectField(type, env->GetStaticFieldID(type, name, signature.c_str()));
    env->DeleteLocalRef(type);
    return value;
}

jobject date(time_t seconds) {
    struct tm local {};
    emwCLBLocalTime_r(&seconds, &local);
    jclass calendar = env->FindClass("java/util/Calendar");
    jobject c = env->CallStaticObjectMethod(
        calendar, env->GetStaticMethodID(calendar, "getInstance", "()Ljava/util/Calendar;"));
    env->CallVoidMethod(c, env->GetMethodID(calendar, "set", "(IIIIII)V"), local.tm_year + 1900, local.tm_mon,
                        local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    jobject d = env->CallObjectMethod(c, env->GetMethodID(calendar, "getTime", "()Ljava/util/Date;"));
    env->DeleteLocalRef(c);
    env->DeleteLocalRef(calendar);
    return d;
}

void set_object(jobject o, jfieldID f, jobject v) {
    env->SetObjectField(o, f, v);
    env->DeleteLocalRef(v);
}

// One document, as bare JNI builds it with the describers' lookups.
void build_document(jobject list, jmethodID add, const XSI_PBFS_BOX_DOC_INFO& r) {
    jclass ic = env->FindClass("orvane/qsf/box/document/DocumentInfoImpl");
    jfieldID name = env->GetFieldID(ic, "docname", "Ljava/lang/String;");
    jfieldID pages = env->GetFieldID(ic, "pagecount", "J");
    jfieldID reso = env->GetFieldID(ic, "resolution", "Lorvane/box/document/attribute/Resolution;");
    jfieldID size = env->GetFieldID(ic, "storingsize", "Lorvane/box/document/attribute/StoringSize;");
    jfieldID color = env->GetFieldID(ic, "color", "Lorvane/box/document/attribute/ColorMode;");
    jfieldID when = env->GetFieldID(ic, "date", "Ljava/util/Date;");
    jfieldID data = env->GetFieldID(ic, "datasize", "J");
    jobject info = env->NewObject(ic, env->GetMethodID(ic, "<init>", "()V"));
    set_object(info, name, env->NewStringUTF(r.doc_name));
    env->SetLongField(info, pages, r.page_count);
    set_object(info, reso, constant("orvane/box/document/attribute/Resolution", "R600x600"));
    set_object(info, size, constant("orvane/box/document/attribute/StoringSize", "A4"));
    set_object(info, color, constant("orvane/box/document/attribute/ColorMode", "MONOCHROME"));
    set_object(info, when, date(r.date));
    env->SetLongField(info, data, r.data_size);

    jclass dc = env->FindClass("orvane/qsf/box/document/DocumentImpl");
    jfieldID id = env->GetFieldID(dc, "docid", "J");
    jfieldID info_field = env->GetFieldID(dc, "info", "Lorvane/qsf/box/document/DocumentInfoImpl;");
    jfieldID box = env->GetFieldID(dc, "boxid", "J");
    jfieldID pw = env->GetFieldID(dc, "passwd", "Ljava/lang/String;");
    env->GetFieldID(dc, "certid", "J");
    jobject doc = env->NewObject(dc, env->GetMethodID(dc, "<init>", "()V"));
    env->SetLongField(doc, id, r.doc_id);
    env->SetObjectField(doc, info_field, info);
    env->SetLongField(doc, box, box_id);
    set_object(doc, pw, env->NewStringUTF(""));
    env->CallBooleanMethod(list, add, doc);
    env->DeleteLocalRef(doc);
    env->DeleteLocalRef(info);
    env->DeleteLocalRef(dc);
    env->DeleteLocalRef(ic);
}

jobject new_list(jmethodID* add) {
    jclass c = env->FindClass("java/util/ArrayList");
    *add = env->GetMethodID(c, "add", "(Ljava/lang/Object;)Z");
    jobject list = env->NewObject(c, env->GetMethodID(c, "<init>", "()V"));
    env->DeleteLocalRef(c);
    return list;
}

void document_listing_baseline(benchmark::State& state) {
    for (auto _ : state) {
        jmethodID add = nullptr;
        jobject list = new_list(&add);
        for (const auto& r : records) build_document(list, add, r);
        env->DeleteLocalRef(list);
    }
    state.SetItemsProcessed(state.iterations() * kDocuments);
}

void document_listing_bridge(benchmark::State& state) {
    auto& manager = *orvane::qsf_fnd_user_box_manager::qsf_fnd_get_instance();
    for (auto _ : state) {
        jmethodID add = nullptr;
        jobject list = new_list(&add);
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
