// The listing natives of jbrg.bench.Baseline: filling the simulated device, and the two baselines of a
// listing.
//
//   build(kind)     the bare JNI work of building the listing's Java objects (bench/listing_builders.h) from
//                   the records the device gave once (keep(kind)): what a listing cannot avoid on the Java side
//   platform(kind)  the device's listing alone, read as the bridge reads it (the same number of records a get)
//                   and nothing built: the device's own part of a listing's time
#include <jni.h>

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/listing_builders.h"
#include "core/jni_scoped.h"
#include "emw_services.h"
#include "jbrg_bench_Baseline.h"
#include "jbrg_sim/box.h"
#include "jbrg_sim/control.h"
#include "xsi_pbfs_address_book.h"
#include "xsi_pbfs_box.h"
#include "xsi_pbfs_user.h"

namespace {

// The listings, as jbrg.bench.Listings numbers them.
enum kind : jint { kUsers = 0, kBoxes = 1, kDocuments = 2, kAddresses = 3 };

// Records a get of each listing, as the bridge asks for them.
constexpr unsigned kAddressesPerGet = 20;

std::vector<XSI_PBFS_USERINFO_RECORD> g_users;
std::vector<XSI_PBFS_BOX_LIST_INFO> g_boxes;
std::vector<XSI_PBFS_BOX_DOC_INFO> g_documents;
std::vector<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS> g_addresses;
uint32_t g_document_box = 0;

// Reads a whole listing: prepare, get until `total` records were handed back (or a get hands back none),
// finish. Each record goes to `keep` when it is given one.
template <class Record, class Handle, class Prepare, class Get, class Finish>
std::size_t read_listing(unsigned per_get, Prepare prepare, Get get, Finish finish, std::vector<Record>* keep) {
    Handle handle = 0;
    Handle total = 0;
    if (prepare(per_get, handle, total) != 0) return 0;
    auto* buffer = static_cast<Record*>(emwOSWSubAllocMem(per_get * sizeof(Record)));
    std::size_t read = 0;
    while (read < total) {
        Handle got = 0;
        if (get(handle, got, buffer) != 0 || got == 0) break;
        if (keep != nullptr) keep->insert(keep->end(), buffer, buffer + got);
        read += got;
    }
    emwOSWOrgFreeMemPart(0, buffer);
    finish(handle);
    return read;
}

std::size_t read_kind(jint k, bool keep) {
    auto* users = xsi_pbfs_user_facade::xsi_pbfs_user_get_instance();
    auto* boxes = xsi_pbfs_box_facade::xsi_pbfs_box_get_instance();
    auto* book = xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_instance();
    switch (k) {
        case kUsers:
            if (keep) g_users.clear();
            return read_listing<XSI_PBFS_USERINFO_RECORD, dev_ulong>(
                1,
                [&](unsigned n, dev_ulong& h, dev_ulong& t) {
                    return users->xsi_pbfs_user_get_local_user_list_prepare(n, h, t);
                },
                [&](dev_ulong h, dev_ulong& g, XSI_PBFS_USERINFO_RECORD* r) {
                    return users->xsi_pbfs_user_get_local_user_list(h, g, r);
                },
                [&](dev_ulong h) { return users->xsi_pbfs_user_get_local_user_list_finish(h); },
                keep ? &g_users : nullptr);
        case kBoxes:
            if (keep) g_boxes.clear();
            return read_listing<XSI_PBFS_BOX_LIST_INFO, unsigned>(
                1,
                [&](unsigned n, unsigned& h, unsigned& t) { return boxes->xsi_pbfs_box_get_box_info_prepare(n, h, t); },
                [&](unsigned h, unsigned& g, XSI_PBFS_BOX_LIST_INFO* r) {
                    return boxes->xsi_pbfs_box_get_box_list_info(h, g, r);
                },
                [&](unsigned h) { return boxes->xsi_pbfs_box_get_box_info_finish(h); }, keep ? &g_boxes : nullptr);
        case kDocuments:
            if (keep) g_documents.clear();
            return read_listing<XSI_PBFS_BOX_DOC_INFO, unsigned>(
                1,
                [&](unsigned n, unsigned& h, unsigned& t) {
                    return boxes->xsi_pbfs_box_get_document_info_prepare(g_document_box, "", n, h, t);
                },
                [&](unsigned h, unsigned& g, XSI_PBFS_BOX_DOC_INFO* r) {
                    return boxes->xsi_pbfs_box_get_document_info(h, g, r);
                },
                [&](unsigned h) { return boxes->xsi_pbfs_box_get_document_info_finish(h); },
                keep ? &g_documents : nullptr);
        case kAddresses:
            if (keep) g_addresses.clear();
            return read_listing<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, unsigned>(
                kAddressesPerGet,
                [&](unsigned n, unsigned& h, unsigned& t) {
                    return book->xsi_pbfs_address_book_get_personal_address_list_prepare(n, h, t);
                },
                [&](unsigned h, unsigned& g, XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS* r) {
                    return book->xsi_pbfs_address_book_get_personal_address_list(h, g, r);
                },
                [&](unsigned h) { return book->xsi_pbfs_address_book_get_personal_address_list_finish(h); },
                keep ? &g_addresses : nullptr);
        default:
            return 0;
    }
}

}  // namespace

extern "C" {

JNIEXPORT void JNICALL Java_jbrg_bench_Baseline_loadScenario(JNIEnv* env, jclass, jstring json) {
    try {
        orvane::jni::utf_chars text(env, json);
        jbrg_sim::load_scenario(text.get() == nullptr ? "" : text.get());
    } catch (const std::exception& e) {
        orvane::jni::local_ref<jclass> type(env, env->FindClass("java/lang/IllegalArgumentException"));
        env->ThrowNew(type.get(), e.what());
    }
}

JNIEXPORT jint JNICALL Java_jbrg_bench_Baseline_keep(JNIEnv*, jclass, jint k) {
    if (k == kDocuments) {
        const auto boxes = jbrg_sim::box::boxes();
        g_document_box = 0;
        for (const auto& b : boxes) {
            if (!b.documents.empty()) g_document_box = b.box_id;
        }
    }
    return static_cast<jint>(read_kind(k, true));
}

JNIEXPORT jlong JNICALL Java_jbrg_bench_Baseline_documentBox(JNIEnv*, jclass) { return g_document_box; }

JNIEXPORT jobject JNICALL Java_jbrg_bench_Baseline_build(JNIEnv* env, jclass, jint k) {
    if (k == kAddresses) return jbrg_bench::personal_addresses(env, g_addresses);
    jmethodID add = nullptr;
    jobject list = jbrg_bench::new_array_list(env, &add);
    switch (k) {
        case kUsers: {
            const jbrg_bench::user_builder users(env);
            for (const auto& r : g_users) users.append(list, add, r);
            break;
        }
        case kBoxes:
            for (const auto& r : g_boxes) jbrg_bench::append_user_box(env, list, add, r);
            break;
        case kDocuments:
            for (const auto& r : g_documents) jbrg_bench::append_document(env, list, add, r, g_document_box);
            break;
        default:
            break;
    }
    return list;
}

JNIEXPORT jint JNICALL Java_jbrg_bench_Baseline_platform(JNIEnv*, jclass, jint k) {
    return static_cast<jint>(read_kind(k, false));
}

JNIEXPORT void JNICALL Java_jbrg_bench_Baseline_clearLogs(JNIEnv*, jclass) {
    jbrg_sim::clear_calls();
    jbrg_sim::clear_traces();
}

}  // extern "C"
