// The natives of jbrg.simulator.SimulatedDevice: the simulated device's C++ control surface (jbrg_sim/*.h),
// called from Java.
//
// Each native turns its Java arguments into the control surface's, calls it, and hands the answer back as
// Java values: numbers, texts, or rows of texts (String[][]) that the Java side turns into its value classes.
// The Java side checks ranges and nulls of what it passes; a native still never dereferences a null it is
// given (null text: NullPointerException), and a C++ exception becomes a Java exception instead of crossing
// the JNI boundary: std::runtime_error (a scenario that does not read) IllegalArgumentException, anything else
// IllegalStateException. A native that raised a Java exception returns a zero value, which Java never sees.
#include <jni.h>

#include <cstdint>
#include <cstring>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/jni_scoped.h"
#include "core/jni_text.h"
#include "jbrg_sim/address_book.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/auth.h"
#include "jbrg_sim/box.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/esm.h"
#include "jbrg_sim/job.h"
#include "jbrg_sim/jobinfo.h"
#include "jbrg_sim/panel.h"
#include "jbrg_sim/smart_card.h"
#include "jbrg_sim/system_info.h"
#include "jbrg_sim/webservice.h"
#include "jbrg_simulator_SimulatedDevice.h"

namespace {

using orvane::jni::local_ref;
using orvane::jni::utf_chars;
using rows = std::vector<std::vector<std::string>>;

// Thrown inside a native once a Java exception is pending: unwinds to the native's edge, which returns.
struct java_pending {};

void throw_java(JNIEnv* env, const char* cls, const std::string& message) {
    local_ref<jclass> c(env, env->FindClass(cls));
    if (c) env->ThrowNew(c.get(), message.c_str());
    throw java_pending{};
}

// Runs the body of a native; C++ exceptions become Java exceptions and the native returns `fallback`.
template <class R, class F>
R guarded(JNIEnv* env, R fallback, F&& body) {
    try {
        return body();
    } catch (const java_pending&) {
    } catch (const std::runtime_error& e) {
        if (!env->ExceptionCheck()) {
            local_ref<jclass> c(env, env->FindClass("java/lang/IllegalArgumentException"));
            if (c) env->ThrowNew(c.get(), e.what());
        }
    } catch (const std::exception& e) {
        if (!env->ExceptionCheck()) {
            local_ref<jclass> c(env, env->FindClass("java/lang/IllegalStateException"));
            if (c) env->ThrowNew(c.get(), e.what());
        }
    }
    return fallback;
}

template <class F>
void guarded_void(JNIEnv* env, F&& body) {
    guarded(env, 0, [&] {
        body();
        return 0;
    });
}

// The characters of a Java text that must not be null.
std::string text(JNIEnv* env, jstring s, const char* name) {
    if (s == nullptr) throw_java(env, "java/lang/NullPointerException", name);
    utf_chars chars(env, s);
    if (!chars) throw java_pending{};  // OutOfMemoryError pending
    return std::string(chars.get(), static_cast<std::size_t>(env->GetStringUTFLength(s)));
}

// The same for a text that may be null.
std::optional<std::string> optional_text(JNIEnv* env, jstring s) {
    if (s == nullptr) return std::nullopt;
    return text(env, s, "text");
}

jstring java_string(JNIEnv* env, const std::string& s) {
    jstring out = orvane::jni::new_string(env, s.data(), s.size());
    if (out == nullptr) throw java_pending{};
    return out;
}

jobjectArray string_array(JNIEnv* env, const std::vector<std::string>& texts) {
    local_ref<jclass> string_class(env, env->FindClass("java/lang/String"));
    if (!string_class) throw java_pending{};
    local_ref<jobjectArray> array(
        env, env->NewObjectArray(static_cast<jsize>(texts.size()), string_class.get(), nullptr));
    if (!array) throw java_pending{};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        local_ref<jstring> s(env, java_string(env, texts[i]));
        env->SetObjectArrayElement(array.get(), static_cast<jsize>(i), s.get());
    }
    return array.release();
}

jobjectArray string_rows(JNIEnv* env, const rows& table) {
    local_ref<jclass> row_class(env, env->FindClass("[Ljava/lang/String;"));
    if (!row_class) throw java_pending{};
    local_ref<jobjectArray> array(env, env->NewObjectArray(static_cast<jsize>(table.size()), row_class.get(), nullptr));
    if (!array) throw java_pending{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        local_ref<jobjectArray> row(env, string_array(env, table[i]));
        env->SetObjectArrayElement(array.get(), static_cast<jsize>(i), row.get());
    }
    return array.release();
}

jbyteArray byte_array(JNIEnv* env, const void* data, std::size_t size) {
    local_ref<jbyteArray> array(env, env->NewByteArray(static_cast<jsize>(size)));
    if (!array) throw java_pending{};
    env->SetByteArrayRegion(array.get(), 0, static_cast<jsize>(size), static_cast<const jbyte*>(data));
    return array.release();
}

jlongArray long_array(JNIEnv* env, const std::vector<jlong>& values) {
    local_ref<jlongArray> array(env, env->NewLongArray(static_cast<jsize>(values.size())));
    if (!array) throw java_pending{};
    env->SetLongArrayRegion(array.get(), 0, static_cast<jsize>(values.size()), values.data());
    return array.release();
}

// The elements of a Java long array that must not be null, `count` of them at least.
std::vector<jlong> longs(JNIEnv* env, jlongArray a, std::size_t count) {
    if (a == nullptr) throw_java(env, "java/lang/NullPointerException", "words");
    std::vector<jlong> out(static_cast<std::size_t>(env->GetArrayLength(a)));
    env->GetLongArrayRegion(a, 0, static_cast<jsize>(out.size()), out.data());
    if (out.size() < count) throw_java(env, "java/lang/IllegalArgumentException", "too few words");
    return out;
}

std::vector<uint8_t> bytes(JNIEnv* env, jbyteArray a) {
    if (a == nullptr) throw_java(env, "java/lang/NullPointerException", "bytes");
    std::vector<uint8_t> out(static_cast<std::size_t>(env->GetArrayLength(a)));
    env->GetByteArrayRegion(a, 0, static_cast<jsize>(out.size()), reinterpret_cast<jbyte*>(out.data()));
    return out;
}

// The byte arrays of a byte[][] (its elements must not be null).
std::vector<std::vector<uint8_t>> byte_rows(JNIEnv* env, jobjectArray a) {
    if (a == nullptr) throw_java(env, "java/lang/NullPointerException", "blocks");
    std::vector<std::vector<uint8_t>> out;
    jsize n = env->GetArrayLength(a);
    for (jsize i = 0; i < n; ++i) {
        local_ref<jbyteArray> row(env, static_cast<jbyteArray>(env->GetObjectArrayElement(a, i)));
        out.push_back(bytes(env, row.get()));
    }
    return out;
}

std::vector<unsigned> codes(JNIEnv* env, jintArray a, std::size_t expected) {
    if (a == nullptr) throw_java(env, "java/lang/NullPointerException", "codes");
    std::vector<jint> elements(static_cast<std::size_t>(env->GetArrayLength(a)));
    env->GetIntArrayRegion(a, 0, static_cast<jsize>(elements.size()), elements.data());
    std::vector<unsigned> out(elements.begin(), elements.end());
    if (out.size() != expected) throw_java(env, "java/lang/IllegalArgumentException", "codes and blocks differ");
    return out;
}

void check_entry_counts(JNIEnv* env, const std::vector<std::vector<uint8_t>>& blocks) {
    if (blocks.size() > 255) throw_java(env, "java/lang/IllegalArgumentException", "at most 255 per entry");
    for (const auto& b : blocks) {
        if (b.size() % 16 != 0 || b.size() / 16 > 255) {
            throw_java(env, "java/lang/IllegalArgumentException", "card data is 0 to 255 blocks of 16 bytes");
        }
    }
}

rows call_rows(const std::vector<jbrg_sim::call>& calls) {
    rows out;
    for (const auto& c : calls) {
        std::vector<std::string> row{c.op};
        row.insert(row.end(), c.args.begin(), c.args.end());
        out.push_back(std::move(row));
    }
    return out;
}

std::string number(long long v) { return std::to_string(v); }

}  // namespace

extern "C" {

// ---- Scenario, forcing, call log, traces ----------------------------------------------------------------

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_nativeLoadScenario(JNIEnv* env, jclass, jstring text_or_path,
                                                                              jboolean is_file) {
    guarded_void(env, [&] {
        std::string s = text(env, text_or_path, "scenario");
        if (is_file) {
            jbrg_sim::load_scenario_file(s);
        } else {
            jbrg_sim::load_scenario(s);
        }
    });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_reset(JNIEnv* env, jclass) {
    guarded_void(env, [] { jbrg_sim::reset(); });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_awaitIdle(JNIEnv* env, jclass) {
    // A job's run sends its job information from the job thread and waits for it, so the job thread comes first:
    // once an empty task has passed it, the runs before it and everything they sent have been delivered.
    guarded_void(env, [] {
        for (const char* service : {"job", "jobinfo", "panel", "esm", "smart_card", "xam_ads"}) {
            jbrg_sim::deliver(service, [] { return 0; });
        }
    });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_nativeForceResult(JNIEnv* env, jclass, jstring op, jint code,
                                                                             jint times) {
    guarded_void(env, [&] { jbrg_sim::force_result(text(env, op, "op"), code, times); });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_nativeForceOut(JNIEnv* env, jclass, jstring op, jstring out,
                                                                          jstring value, jint times) {
    guarded_void(env, [&] {
        jbrg_sim::force_out(text(env, op, "op"), text(env, out, "out"), text(env, value, "value"), times);
    });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_clearForcing(JNIEnv* env, jclass) {
    guarded_void(env, [] { jbrg_sim::clear_forcing(); });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeCalls(JNIEnv* env, jclass, jstring op) {
    return guarded(env, jobjectArray{}, [&] {
        std::optional<std::string> name = optional_text(env, op);
        return string_rows(env, call_rows(name ? jbrg_sim::calls_of(*name) : jbrg_sim::calls()));
    });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_clearCalls(JNIEnv* env, jclass) {
    guarded_void(env, [] { jbrg_sim::clear_calls(); });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeTraces(JNIEnv* env, jclass) {
    return guarded(env, jobjectArray{}, [&] {
        rows out;
        for (const auto& t : jbrg_sim::traces()) {
            out.push_back({number(t.module), number(t.level), number(t.flags), t.format, t.text});
        }
        return string_rows(env, out);
    });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_clearTraces(JNIEnv* env, jclass) {
    guarded_void(env, [] { jbrg_sim::clear_traces(); });
}

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_blocksInUse(JNIEnv* env, jclass) {
    return guarded(env, jlong{0}, [] { return static_cast<jlong>(jbrg_sim::blocks_in_use()); });
}

// ---- Users, boxes, address book, storage ----------------------------------------------------------------

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAddLocalUser(JNIEnv* env, jclass, jstring login,
                                                                                  jstring password, jstring name,
                                                                                  jstring email, jstring card,
                                                                                  jint rights) {
    return guarded(env, jboolean{JNI_FALSE}, [&] {
        jbrg_sim::auth::local_user user;
        user.login_name = text(env, login, "loginName");
        user.password = text(env, password, "password");
        user.user_name = text(env, name, "userName");
        user.email = text(env, email, "email");
        user.card = text(env, card, "card");
        user.rights = rights;
        return static_cast<jboolean>(jbrg_sim::auth::add_local_user(user) ? JNI_TRUE : JNI_FALSE);
    });
}

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_isLoggedIn(JNIEnv* env, jclass, jlong cert_id) {
    return guarded(env, jboolean{JNI_FALSE}, [&] {
        return static_cast<jboolean>(jbrg_sim::auth::logged_in(static_cast<uint32_t>(cert_id)) ? JNI_TRUE : JNI_FALSE);
    });
}

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAddBox(JNIEnv* env, jclass, jboolean fax,
                                                                         jlong box_number, jstring name,
                                                                         jstring owner_login_name, jstring password,
                                                                         jlong capacity) {
    return guarded(env, jlong{0}, [&] {
        jbrg_sim::box::box_info b;
        b.fax = fax == JNI_TRUE;
        b.number = static_cast<uint32_t>(box_number);
        b.name = text(env, name, "name");
        b.owner_login_name = text(env, owner_login_name, "ownerLoginName");
        b.password = text(env, password, "password");
        b.capacity = static_cast<uint32_t>(capacity);
        return static_cast<jlong>(jbrg_sim::box::add_box(b));
    });
}

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_nativeStoreDocument(JNIEnv* env, jclass, jlong box_id,
                                                                                jstring name, jlong pages,
                                                                                jlong data_size) {
    return guarded(env, jlong{0}, [&] {
        jbrg_sim::box::document d;
        d.name = text(env, name, "name");
        d.pages = static_cast<uint32_t>(pages);
        d.data_size = static_cast<uint32_t>(data_size);
        return static_cast<jlong>(jbrg_sim::box::store_document(static_cast<uint32_t>(box_id), d));
    });
}

JNIEXPORT jlongArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeBoxIds(JNIEnv* env, jclass, jboolean fax) {
    return guarded(env, jlongArray{}, [&] {
        std::vector<jlong> ids;
        for (const auto& b : fax ? jbrg_sim::box::fax_boxes() : jbrg_sim::box::boxes()) ids.push_back(b.box_id);
        return long_array(env, ids);
    });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeBox(JNIEnv* env, jclass, jlong box_id) {
    return guarded(env, jobjectArray{}, [&]() -> jobjectArray {
        if (box_id < 0 || box_id > UINT32_MAX) return nullptr;
        std::optional<jbrg_sim::box::box_info> b = jbrg_sim::box::box(static_cast<uint32_t>(box_id));
        if (!b) return nullptr;
        rows out{{number(b->box_id), b->fax ? "1" : "0", number(b->number), b->name, b->owner_login_name,
                  b->owner_name, b->password, number(b->share), number(b->capacity), number(b->used_size)}};
        for (const auto& d : b->documents) {
            out.push_back({number(d.doc_id), d.name, number(d.pages), number(d.resolution), number(d.pages_size),
                           number(d.size_code), number(d.color), number(d.date), number(d.data_size)});
        }
        return string_rows(env, out);
    });
}

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAddPersonal(JNIEnv* env, jclass, jstring name,
                                                                              jstring pronunciation, jstring email,
                                                                              jstring fax) {
    return guarded(env, jlong{0}, [&]() -> jlong {
        std::string n = text(env, name, "name");
        std::string p = text(env, pronunciation, "pronunciation");
        std::optional<std::string> mail = optional_text(env, email);
        std::optional<std::string> fax_number = optional_text(env, fax);
        XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS a;
        std::memset(&a, 0, sizeof a);
        auto fits = [](const std::string& s, std::size_t capacity) { return s.size() < capacity; };
        if (!fits(n, sizeof a.name) || !fits(p, sizeof a.pronunciation) ||
            (mail && !fits(*mail, sizeof a.email.mail_address)) || (fax_number && !fits(*fax_number, sizeof a.fax.fax_num))) {
            return 0;
        }
        std::memcpy(a.name, n.data(), n.size());
        std::memcpy(a.pronunciation, p.data(), p.size());
        if (mail) {
            a.destinations |= XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
            std::memcpy(a.email.mail_address, mail->data(), mail->size());
        }
        if (fax_number) {
            a.destinations |= XSI_PBFS_ADDRESSBOOK_DEST_FAX;
            std::memcpy(a.fax.fax_num, fax_number->data(), fax_number->size());
        }
        return static_cast<jlong>(jbrg_sim::address_book::add_personal(a));
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAddGroup(JNIEnv* env, jclass, jstring name,
                                                                          jstring pronunciation) {
    return guarded(env, jint{0}, [&] {
        return static_cast<jint>(
            jbrg_sim::address_book::add_group(text(env, name, "name"), text(env, pronunciation, "pronunciation")));
    });
}

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAddMember(JNIEnv* env, jclass, jlong group_id,
                                                                               jlong address_number, jint type) {
    return guarded(env, jboolean{JNI_FALSE}, [&] {
        bool added = type >= INT8_MIN && type <= INT8_MAX &&
                     jbrg_sim::address_book::add_member(static_cast<uint16_t>(group_id),
                                                        static_cast<uint32_t>(address_number), static_cast<int8_t>(type));
        return static_cast<jboolean>(added ? JNI_TRUE : JNI_FALSE);
    });
}

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_personalAddressCount(JNIEnv* env, jclass) {
    return guarded(env, jlong{0}, [] { return static_cast<jlong>(jbrg_sim::address_book::personal_count()); });
}

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_groupCount(JNIEnv* env, jclass) {
    return guarded(env, jlong{0}, [] { return static_cast<jlong>(jbrg_sim::address_book::group_count()); });
}

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_openAddressListings(JNIEnv* env, jclass) {
    return guarded(env, jlong{0}, [] { return static_cast<jlong>(jbrg_sim::address_book::open_listings()); });
}

JNIEXPORT jstring JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAreaFolder(JNIEnv* env, jclass, jint area) {
    return guarded(env, jstring{}, [&] { return java_string(env, jbrg_sim::area_folder(area)); });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAreaFiles(JNIEnv* env, jclass, jint area) {
    return guarded(env, jobjectArray{}, [&] { return string_array(env, jbrg_sim::area_files(area)); });
}

// ---- Jobs -----------------------------------------------------------------------------------------------

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_runJobs(JNIEnv* env, jclass, jboolean on) {
    guarded_void(env, [&] { jbrg_sim::job::run_jobs(on == JNI_TRUE); });
}

JNIEXPORT void JNICALL Java_jbrg_simulator_SimulatedDevice_nativeSetPages(JNIEnv* env, jclass, jint pages) {
    guarded_void(env, [&] { jbrg_sim::job::set_pages(static_cast<unsigned>(pages)); });
}

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_nativeFinish(JNIEnv* env, jclass, jlong user_job_id) {
    return guarded(env, jboolean{JNI_FALSE}, [&] {
        return static_cast<jboolean>(jbrg_sim::job::finish(static_cast<unsigned>(user_job_id)) ? JNI_TRUE : JNI_FALSE);
    });
}

JNIEXPORT jlongArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeUserJob(JNIEnv* env, jclass, jlong user_job_id) {
    return guarded(env, jlongArray{}, [&]() -> jlongArray {
        if (user_job_id < 0 || user_job_id > UINT32_MAX) return nullptr;
        std::optional<jbrg_sim::job::user_job_info> j = jbrg_sim::job::user_job(static_cast<unsigned>(user_job_id));
        if (!j) return nullptr;
        return long_array(env, {j->user_job_id, j->service_id, j->handler_id, j->category, j->cert_id, j->cancelled,
                                j->cancel_cert_id, j->cancel_bkg, j->continuous_read, j->stream_chunks,
                                j->stream_state, j->started, j->pages_done, j->pages, j->ended, j->end_result});
    });
}

JNIEXPORT jbyteArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeUserJobStream(JNIEnv* env, jclass,
                                                                                    jlong user_job_id) {
    return guarded(env, jbyteArray{}, [&]() -> jbyteArray {
        if (user_job_id < 0 || user_job_id > UINT32_MAX) return nullptr;
        std::optional<jbrg_sim::job::user_job_info> j = jbrg_sim::job::user_job(static_cast<unsigned>(user_job_id));
        if (!j) return nullptr;
        return byte_array(env, j->stream.data(), j->stream.size());
    });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeJobInfos(JNIEnv* env, jclass) {
    return guarded(env, jobjectArray{}, [&] {
        rows out;
        for (const auto& s : jbrg_sim::job::jobinfos()) {
            out.push_back({number(s.handler_id), number(s.category), number(s.cert_id), number(s.addresses), s.prepared});
        }
        return string_rows(env, out);
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeJobState(JNIEnv* env, jclass, jlongArray words,
                                                                          jstring user_name) {
    return guarded(env, jint{0}, [&] {
        std::vector<jlong> w = longs(env, words, 11);
        std::string name = text(env, user_name, "userName");
        XSI_AIS_JOB_STATE s;
        std::memset(&s, 0, sizeof s);
        s.state = static_cast<dev_ulong>(w[0]);
        s.user_job_id = static_cast<dev_ulong>(w[1]);
        s.result = static_cast<dev_ulong>(w[2]);
        s.job_mode = static_cast<uint16_t>(w[3]);
        std::size_t length = orvane::jni::utf8_prefix(name.data(), name.size(), sizeof s.user_name - 1);
        std::memcpy(s.user_name, name.data(), length);
        s.in_dev = static_cast<uint8_t>(w[4]);
        s.out_dev = static_cast<uint8_t>(w[5]);
        s.input_box_id = static_cast<dev_ulong>(w[6]);
        s.output_box_id = static_cast<dev_ulong>(w[7]);
        s.form_box_id = static_cast<dev_ulong>(w[8]);
        s.receipt_id = static_cast<dev_ulong>(w[9]);
        s.sys_info_user_job_id = static_cast<dev_ulong>(w[10]);
        return static_cast<jint>(jbrg_sim::job::notify_job_state_changed(s));
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeJob(JNIEnv* env, jclass, jint kind, jlong a, jlong b) {
    return guarded(env, jint{0}, [&]() -> jint {
        auto first = static_cast<unsigned>(a);
        switch (kind) {
            case 0: return jbrg_sim::job::notify_scan_count(first, static_cast<unsigned>(b));
            case 1: return jbrg_sim::job::notify_start_phb(first);
            case 2: return jbrg_sim::job::notify_disable_info(first);
            case 3: return jbrg_sim::job::notify_main_message(first);
            default: throw_java(env, "java/lang/IllegalArgumentException", "unknown job notification");
        }
        return 0;
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeJobInfo(JNIEnv* env, jclass, jint kind,
                                                                         jlongArray words, jstring name) {
    return guarded(env, jint{0}, [&]() -> jint {
        auto u = [](jlong v) { return static_cast<uint32_t>(v); };
        auto s = [](jlong v) { return static_cast<int32_t>(v); };
        switch (kind) {
            case 0: {
                std::vector<jlong> w = longs(env, words, 14);
                XSI_AIS_EVENT_PRINT_PAGE e{u(w[0]), u(w[1]), s(w[2]), s(w[3]),  s(w[4]),  s(w[5]),  s(w[6]),
                                           s(w[7]), s(w[8]), s(w[9]), s(w[10]), s(w[11]), s(w[12]), s(w[13])};
                return jbrg_sim::jobinfo::notify_print_page_info(e);
            }
            case 1: {
                std::vector<jlong> w = longs(env, words, 9);
                XSI_AIS_EVENT_SCAN_PAGE e{u(w[0]), u(w[1]), s(w[2]), s(w[3]), s(w[4]),
                                          s(w[5]), s(w[6]), s(w[7]), s(w[8])};
                return jbrg_sim::jobinfo::notify_scan_page_info(e);
            }
            case 2: {
                std::vector<jlong> w = longs(env, words, 2);
                return jbrg_sim::jobinfo::notify_fax_send_page_info(XSI_AIS_EVENT_SEND_PAGE{u(w[0]), u(w[1])});
            }
            case 3: {
                std::vector<jlong> w = longs(env, words, 2);
                return jbrg_sim::jobinfo::notify_job_update_log(XSI_AIS_EVENT_JOB_UPDATE_LOG{u(w[0]), u(w[1])});
            }
            case 4: {
                std::vector<jlong> w = longs(env, words, 3);
                std::optional<std::string> job_name = optional_text(env, name);
                XSI_AIS_EVENT_RENINT_START e{u(w[0]), job_name ? 1 : 0, u(w[1]), u(w[2])};
                return jbrg_sim::jobinfo::notify_renint_start_info(e, job_name ? job_name->c_str() : nullptr);
            }
            case 5: {
                std::vector<jlong> w = longs(env, words, 3);
                return jbrg_sim::jobinfo::notify_imagelog_create_status(
                    u(w[0]), u(w[1]), static_cast<XSI_AIS_IMAGELOG_CREATE_STATUS_VAL>(s(w[2])));
            }
            default: throw_java(env, "java/lang/IllegalArgumentException", "unknown job information notification");
        }
        return 0;
    });
}

// ---- Panel ----------------------------------------------------------------------------------------------

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativePanel(JNIEnv* env, jclass, jint kind, jstring app_id) {
    return guarded(env, jint{0}, [&]() -> jint {
        std::string app = text(env, app_id, "appId");
        switch (kind) {
            case 0: return jbrg_sim::panel::notify_auto_reset();
            case 1: return jbrg_sim::panel::notify_appl_start(app);
            case 2: return jbrg_sim::panel::notify_appl_stop(app);
            default: throw_java(env, "java/lang/IllegalArgumentException", "unknown panel notification");
        }
        return 0;
    });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativePanelTexts(JNIEnv* env, jclass, jint kind) {
    return guarded(env, jobjectArray{}, [&] {
        return string_array(env, kind == 0 ? jbrg_sim::panel::events() : jbrg_sim::panel::buzzes());
    });
}

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_expireResetTimer(JNIEnv* env, jclass) {
    return guarded(env, jboolean{JNI_FALSE}, [] {
        return static_cast<jboolean>(jbrg_sim::panel::reset_timer_expire() ? JNI_TRUE : JNI_FALSE);
    });
}

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_resetTimerRunning(JNIEnv* env, jclass) {
    return guarded(env, jboolean{JNI_FALSE}, [] {
        return static_cast<jboolean>(jbrg_sim::panel::reset_timer_running() ? JNI_TRUE : JNI_FALSE);
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_startLed(JNIEnv* env, jclass) {
    return guarded(env, jint{0}, [] { return static_cast<jint>(jbrg_sim::panel::start_led()); });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_panelScreen(JNIEnv* env, jclass) {
    return guarded(env, jint{0}, [] { return static_cast<jint>(jbrg_sim::panel::screen()); });
}

// ---- Device status --------------------------------------------------------------------------------------

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeEsm(JNIEnv* env, jclass, jint kind, jlong a, jlong b) {
    namespace esm = jbrg_sim::esm;
    return guarded(env, jint{0}, [&]() -> jint {
        auto u32 = static_cast<uint32_t>(a);
        auto u8 = static_cast<uint8_t>(a);
        switch (kind) {
            case 0: return esm::notify_sleep(static_cast<int32_t>(a));
            case 1: return esm::notify_logout(u32);
            case 2: return esm::notify_pbp_connection_error(static_cast<int32_t>(a));
            case 3: return esm::notify_usb_memory_status(u32);
            case 4: return esm::notify_toner_status(u8, static_cast<uint8_t>(b));
            case 5: return esm::notify_waste_toner_bottle_status(u8);
            case 6: return esm::notify_paper_rest_status(static_cast<uint16_t>(a), static_cast<uint8_t>(b));
            case 7: return esm::notify_cover_status(u32);
            case 8: return esm::notify_dp_cover_status(u8);
            case 9: return esm::notify_jam_status(u32);
            case 10: return esm::notify_dp_jam_status(u8);
            case 11: return esm::notify_coin_vender_status(u32);
            case 12: return esm::notify_key_card_status(u8);
            case 13: return esm::notify_key_counter_status(u32);
            case 14: return esm::notify_resident_app_state_changed(static_cast<int32_t>(a));
            default: throw_java(env, "java/lang/IllegalArgumentException", "unknown status notification");
        }
        return 0;
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_sleepState(JNIEnv* env, jclass) {
    return guarded(env, jint{0}, [] { return static_cast<jint>(jbrg_sim::esm::sleep_state()); });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_wakeUp(JNIEnv* env, jclass) {
    return guarded(env, jint{0}, [] { return static_cast<jint>(jbrg_sim::esm::wake_up()); });
}

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_energySavingProhibited(JNIEnv* env, jclass) {
    return guarded(env, jboolean{JNI_FALSE}, [] {
        return static_cast<jboolean>(jbrg_sim::esm::save_mode_prohibited() ? JNI_TRUE : JNI_FALSE);
    });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeDeepSleepSuspenders(JNIEnv* env, jclass) {
    return guarded(env, jobjectArray{}, [&] { return string_array(env, jbrg_sim::esm::deep_sleep_suspended_by()); });
}

// ---- IC card reader -------------------------------------------------------------------------------------

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeCardDetected(JNIEnv* env, jclass, jint card_type,
                                                                              jstring card_id, jobjectArray entries) {
    return guarded(env, jint{0}, [&] {
        std::string id = text(env, card_id, "cardId");
        std::vector<std::vector<uint8_t>> data = byte_rows(env, entries);
        return static_cast<jint>(jbrg_sim::smart_card::card_detected(jbrg_sim::smart_card::card(card_type, id, data)));
    });
}

JNIEXPORT jbyteArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeSectorEntry(JNIEnv* env, jclass,
                                                                                  jintArray numbers,
                                                                                  jobjectArray blocks) {
    return guarded(env, jbyteArray{}, [&] {
        std::vector<std::vector<uint8_t>> data = byte_rows(env, blocks);
        std::vector<unsigned> n = codes(env, numbers, data.size());
        check_entry_counts(env, data);
        std::vector<jbrg_sim::smart_card::sector> sectors;
        for (std::size_t i = 0; i < n.size(); ++i) sectors.push_back({n[i], data[i]});
        std::vector<uint8_t> entry = jbrg_sim::smart_card::sector_entry(sectors);
        return byte_array(env, entry.data(), entry.size());
    });
}

JNIEXPORT jbyteArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeSystemEntry(JNIEnv* env, jclass,
                                                                                  jint system_code, jintArray service_codes,
                                                                                  jobjectArray blocks) {
    return guarded(env, jbyteArray{}, [&] {
        std::vector<std::vector<uint8_t>> data = byte_rows(env, blocks);
        std::vector<unsigned> c = codes(env, service_codes, data.size());
        check_entry_counts(env, data);
        std::vector<jbrg_sim::smart_card::service> services;
        for (std::size_t i = 0; i < c.size(); ++i) services.push_back({c[i], data[i]});
        std::vector<uint8_t> entry = jbrg_sim::smart_card::system_entry(static_cast<unsigned>(system_code), services);
        return byte_array(env, entry.data(), entry.size());
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeCard(JNIEnv* env, jclass, jint kind, jint a, jlong b) {
    return guarded(env, jint{0}, [&]() -> jint {
        switch (kind) {
            case 0: return jbrg_sim::smart_card::card_lost();
            case 1: return jbrg_sim::smart_card::card_error(a, static_cast<uint32_t>(b));
            case 2: return jbrg_sim::smart_card::reader_removed();
            default: throw_java(env, "java/lang/IllegalArgumentException", "unknown card reader notification");
        }
        return 0;
    });
}

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeReaderAdded(JNIEnv* env, jclass, jlong vendor,
                                                                             jlong product_id, jlong card_types) {
    return guarded(env, jint{0}, [&] {
        XDC_COM_STD_SMART_CARD_READER_INFO info;
        std::memset(&info, 0, sizeof info);
        info.vendor = static_cast<uint16_t>(vendor);
        info.product_id = static_cast<uint16_t>(product_id);
        info.card_types = static_cast<uint32_t>(card_types);
        return static_cast<jint>(jbrg_sim::smart_card::reader_added(info));
    });
}

JNIEXPORT jboolean JNICALL Java_jbrg_simulator_SimulatedDevice_readerAttached(JNIEnv* env, jclass) {
    return guarded(env, jboolean{JNI_FALSE}, [] {
        return static_cast<jboolean>(jbrg_sim::smart_card::reader_attached() ? JNI_TRUE : JNI_FALSE);
    });
}

// ---- Application management -----------------------------------------------------------------------------

JNIEXPORT jint JNICALL Java_jbrg_simulator_SimulatedDevice_nativeApps(JNIEnv* env, jclass, jint kind, jstring app_id,
                                                                      jint value) {
    return guarded(env, jint{0}, [&]() -> jint {
        std::string app = text(env, app_id, "appId");
        switch (kind) {
            case 0: return jbrg_sim::apps::run_app(app);
            case 1: return jbrg_sim::apps::terminate_app(app);
            case 2: return jbrg_sim::apps::open_window(app);
            case 3: return jbrg_sim::apps::close_window(app);
            case 4: return jbrg_sim::apps::basis_control(value);
            case 5: return jbrg_sim::apps::is_enable_run_app();
            default: throw_java(env, "java/lang/IllegalArgumentException", "unknown application request");
        }
        return 0;
    });
}

JNIEXPORT jobjectArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeAppResults(JNIEnv* env, jclass) {
    return guarded(env, jobjectArray{}, [&] {
        rows out;
        for (const auto& r : jbrg_sim::apps::results()) out.push_back({r.request, r.app_id, number(r.code)});
        return string_rows(env, out);
    });
}

// ---- Device information ---------------------------------------------------------------------------------

JNIEXPORT jlong JNICALL Java_jbrg_simulator_SimulatedDevice_nativePageCount(JNIEnv* env, jclass, jint kind,
                                                                            jint paper_size, jint color) {
    return guarded(env, jlong{0}, [&] {
        return static_cast<jlong>(jbrg_sim::system_info::count(static_cast<uint32_t>(kind),
                                                               static_cast<uint32_t>(paper_size),
                                                               static_cast<uint32_t>(color)));
    });
}

JNIEXPORT jlongArray JNICALL Java_jbrg_simulator_SimulatedDevice_nativeSetting(JNIEnv* env, jclass, jint key) {
    return guarded(env, jlongArray{}, [&]() -> jlongArray {
        std::optional<uint32_t> v = jbrg_sim::system_info::setting(key);
        if (!v) return nullptr;
        return long_array(env, {static_cast<jlong>(*v)});
    });
}

JNIEXPORT jstring JNICALL Java_jbrg_simulator_SimulatedDevice_settingText(JNIEnv* env, jclass, jint key) {
    return guarded(env, jstring{}, [&]() -> jstring {
        std::optional<std::string> v = jbrg_sim::system_info::setting_text(key);
        return v ? java_string(env, *v) : nullptr;
    });
}

JNIEXPORT jstring JNICALL Java_jbrg_simulator_SimulatedDevice_webServiceReservedBy(JNIEnv* env, jclass, jint kind) {
    return guarded(env, jstring{}, [&] { return java_string(env, jbrg_sim::webservice::reserved_by(kind)); });
}

}  // extern "C"
