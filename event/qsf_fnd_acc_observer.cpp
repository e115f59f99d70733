#include "event/qsf_fnd_acc_observer.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "core/jni_scoped.h"
#include "core/jni_text.h"
#include "event/observer_support.h"

namespace orvane {

namespace {

constexpr const char kAccProxy[] = "orvane/qsf/controller/event/proxy/AccProxy";
constexpr const char kICCardInfo[] = "orvane/qsf/controller/event/device/ICCardInfo";
constexpr const char kSystemData[] = "orvane/qsf/controller/event/device/SystemData";

// Java sees a card type as one bit of a byte.
struct card_type_bit {
    ENV_AUTH_IC_CARD_TYPE type;
    jbyte bit;
};
constexpr card_type_bit kCardTypeBits[] = {
    {ENV_AUTH_IC_CARD_TYPE_A, 1},    {ENV_AUTH_IC_CARD_TYPE_B, 2},    {ENV_AUTH_IC_CARD_TYPE_C, 4},
    {ENV_AUTH_IC_CARD_TYPE_V, 8},    {ENV_AUTH_IC_CARD_TYPE_PROX, 16}, {ENV_AUTH_IC_CARD_TYPE_LEGIC, 32},
};

// The card data, read byte by byte; every read checks what is left.
bool read_u8(const uint8_t** cursor, dev_ulong* left, unsigned* value) {
    if (*left < 1) return false;
    *value = **cursor;
    *cursor += 1;
    *left -= 1;
    return true;
}

// A 16-bit value of the card data: first byte high.
bool read_u16(const uint8_t** cursor, dev_ulong* left, unsigned* value) {
    if (*left < 2) return false;
    *value = static_cast<unsigned>((*cursor)[0]) * 256u + (*cursor)[1];
    *cursor += 2;
    *left -= 2;
    return true;
}

}  // namespace

qsf_fnd_acc_observer::qsf_fnd_acc_observer() : reader_info_(), card_info_() {}

qsf_fnd_acc_observer::~qsf_fnd_acc_observer() {
    release_classes(jvm_, {&jcls_acc_proxy_, &jcls_iccard_info_, &jcls_system_data_});
}

bool qsf_fnd_acc_observer::init() {
    JBRG_TRACE("START");
    if (find_vm(jvm_) != JNI_OK || jvm_ == nullptr) {
        JBRG_TRACE("ERROR : could not get JVM.");
        JBRG_TRACE("END");
        return false;
    }
    event_attach scope;
    if (!thread_attach(scope)) {
        JBRG_TRACE("ERROR : could not attach JVM.");
        JBRG_TRACE("END");
        return false;
    }
    const trace_site site = JBRG_TRACE_SITE;
    const bool found = look_up_chain(
        scope.env(), &site,
        {
            {&jcls_acc_proxy_, kAccProxy, "ERROR : could not find AccProxy class ID."},
            {&jcls_iccard_info_, kICCardInfo, "ERROR : could not find ICCardInfo class ID."},
            {&jcls_system_data_, kSystemData, "ERROR : could not find SystemData class ID."},
        },
        {
            {&mid_fire_iccard_event_, "fireICCardEvent", "(Lorvane/qsf/controller/event/device/ICCardInfo;)V",
             "ERROR : could not get fireICCardEvent() ID."},
            {&mid_fire_iccard_error_event_, "fireICCardErrorEvent", "(I)V",
             "ERROR : could not get fireICCardErrorEvent() ID."},
            {&mid_fire_iccard_device_event_, "fireICCardDeviceEvent", "(IIZB)V",
             "ERROR : could not get fireICCardDeviceEvent() ID."},
        });
    thread_detach(scope);
    JBRG_TRACE("END");
    return found;
}

bool qsf_fnd_acc_observer::thread_attach(event_attach& scope) {
    JBRG_TRACE("START");
    if (jvm_ == nullptr) {
        JBRG_TRACE("ERROR : could not called init() method.");
        return false;
    }
    const bool attached = scope.attach(jvm_);
    if (!attached) JBRG_TRACE("ERROR : AttachCurrentThread() : %d", static_cast<int>(scope.result()));
    JBRG_TRACE("END : %d", attached ? 1 : 0);
    return attached;
}

void qsf_fnd_acc_observer::thread_detach(event_attach& scope) {
    JBRG_TRACE("START");
    if (jvm_ == nullptr) {
        JBRG_TRACE("ERROR : could not called init() method.");
    } else {
        scope.detach();
    }
    JBRG_TRACE("END");
}

bool qsf_fnd_acc_observer::initialised() const {
    return jvm_ != nullptr && jcls_acc_proxy_ != nullptr && jcls_iccard_info_ != nullptr &&
           jcls_system_data_ != nullptr && mid_fire_iccard_event_ != nullptr &&
           mid_fire_iccard_error_event_ != nullptr && mid_fire_iccard_device_event_ != nullptr;
}

void qsf_fnd_acc_observer::smart_card_detected(const XDC_COM_STD_SMART_CARD_INFO& card_info) {
    JBRG_TRACE("START");
    card_info_ = card_info;
    // The id is used only up to the end of its field, terminated or not.
    char card_id[XDC_COM_STD_CARD_ID_SIZE + 1] = {};
    std::memcpy(card_id, card_info_.card_id, sizeof card_info_.card_id);
    JBRG_TRACE("card_info.card_type = %lu", dev_lx(static_cast<uint32_t>(card_info_.card_type)));
    JBRG_TRACE("card_info.card_id = %s", card_id);
    JBRG_TRACE("card_info.card_id_size = %d", static_cast<int>(card_info_.card_id_size));
    JBRG_TRACE("card_info.service_data_exist = %04x", static_cast<unsigned>(card_info_.service_data_exist));
    JBRG_TRACE("card_info.service_data_size = %lu", dev_lx(card_info_.service_data_size));
    if (!initialised()) {
        JBRG_TRACE("ERROR : could not called init() method.");
        JBRG_TRACE("END");
        return;
    }
    event_attach scope;
    if (!thread_attach(scope)) {
        JBRG_TRACE("ERROR : could not attach JVM.");
        JBRG_TRACE("END");
        return;
    }
    JNIEnv* env = scope.env();
    jobject info = create_iccard_info_obj(env);
    if (info == nullptr) {
        JBRG_TRACE("ERROR : could not create iccard_info_obj.");
    } else if (!set_iccard_id(env, info, card_id)) {
        JBRG_TRACE("ERROR : could not set iccard_id_obj.");
    } else if (!set_iccard_type(env, info, card_info_.card_type)) {
        // set_iccard_type traced why.
    } else {
        // Data are there only when the reader says so; never more than its area holds.
        const int count = card_info_.service_data_exist != 0 ? card_info_.service_data_count : 0;
        dev_ulong size = card_info_.service_data_size;
        if (size > sizeof card_info_.service_data) size = sizeof card_info_.service_data;
        if (!set_iccard_data(env, info, count, size, card_info_.service_data, card_info_.card_type)) {
            JBRG_TRACE("ERROR : could not set joarr_system_data.");
        } else {
            env->CallStaticVoidMethod(jcls_acc_proxy_, mid_fire_iccard_event_, info);
        }
    }
    thread_detach(scope);
    JBRG_TRACE("END");
}

jobject qsf_fnd_acc_observer::create_iccard_info_obj(JNIEnv* env) {
    jmethodID ctor = env->GetMethodID(jcls_iccard_info_, "<init>", "()V");
    if (ctor == nullptr) {
        drop_exception(env);
        JBRG_TRACE("ERROR : could not get ICCardInfo#ICCardInfo() method ID.");
        return nullptr;
    }
    jobject info = env->NewObject(jcls_iccard_info_, ctor);
    if (info == nullptr) {
        drop_exception(env);
        JBRG_TRACE("ERROR : could not create iccard_info object.");
    }
    return info;
}

bool qsf_fnd_acc_observer::set_iccard_id(JNIEnv* env, jobject info, const char* id) {
    if (info == nullptr || id == nullptr) {
        JBRG_TRACE("ERROR : parameter error.");
        return false;
    }
    jmethodID set_card_id = env->GetMethodID(jcls_iccard_info_, "setCardId", "(Ljava/lang/String;)V");
    if (set_card_id == nullptr) {
        drop_exception(env);
        JBRG_TRACE("ERROR : could not get ICCardInfo#:setCardId() method ID.");
        return false;
    }
    jstring text = ::orvane::jni::new_string(env, id);
    if (text == nullptr) {
        drop_exception(env);
        JBRG_TRACE("ERROR : could not create string object");
        return false;
    }
    env->CallVoidMethod(info, set_card_id, text);
    const bool thrown = env->ExceptionCheck();
    drop_exception(env);
    env->DeleteLocalRef(text);
    return !thrown;
}

bool qsf_fnd_acc_observer::set_iccard_type(JNIEnv* env, jobject info, ENV_AUTH_IC_CARD_TYPE type) {
    if (info == nullptr) {
        JBRG_TRACE("ERROR : parameter error (card_info).");
        return false;
    }
    jmethodID set_card_type = env->GetMethodID(jcls_iccard_info_, "setCardType", "(B)V");
    if (set_card_type == nullptr) {
        drop_exception(env);
        JBRG_TRACE("ERROR : could not get ICCardInfo#setCardType() method ID.");
        return false;
    }
    jbyte bit = 0;
    bool known = false;
    for (const card_type_bit& entry : kCardTypeBits) {
        if (entry.type == type) {
            bit = entry.bit;
            known = true;
            break;
        }
    }
    if (!known) JBRG_TRACE("WARNING : parameter error (card_type).");
    env->CallVoidMethod(info, set_card_type, bit);
    const bool thrown = env->ExceptionCheck();
    drop_exception(env);
    return !thrown;
}

jbyteArray qsf_fnd_acc_observer::block_data(JNIEnv* env, const trace_site& site, unsigned blocks, const uint8_t** cursor,
                                            dev_ulong* left) {
    const dev_ulong length = static_cast<dev_ulong>(blocks) * XDC_COM_STD_BLOCK_SIZE;
    if (*left < length) {
        trace_at(site, "ERROR : card data too short.");
        return nullptr;
    }
    jni::local_ref<jbyteArray> array(env, env->NewByteArray(static_cast<jsize>(length)));
    if (!array) {
        drop_exception(env);
        trace_at(site, "ERROR : could not create block data array.");
        return nullptr;
    }
    {
        jni::pinned_array<jbyte> elements(env, array.get());
        if (!elements) {
            drop_exception(env);
            trace_at(site, "ERROR : could not get block data element.");
            return nullptr;
        }
        for (dev_ulong i = 0; i < length; ++i) elements[i] = static_cast<jbyte>((*cursor)[i]);
        elements.commit();
    }
    *cursor += length;
    *left -= length;
    return array.release();
}

bool qsf_fnd_acc_observer::call_setter(JNIEnv* env, jobject entry, jmethodID setter, jobject value) {
    env->CallVoidMethod(entry, setter, value);
    const bool thrown = env->ExceptionCheck();
    drop_exception(env);
    return !thrown;
}

bool qsf_fnd_acc_observer::set_keyed_blocks(JNIEnv* env, const trace_site& site, jobject entry, const keyed_blocks& kind,
                                            unsigned count, const uint8_t** cursor, dev_ulong* left) {
    jni::local_ref<jintArray> keys(env, env->NewIntArray(static_cast<jsize>(count)));
    if (!keys) {
        drop_exception(env);
        trace_at(site, "%s", kind.keys_array_error);
        return false;
    }
    jni::local_ref<jobjectArray> blocks(
        env, env->NewObjectArray(static_cast<jsize>(count), kind.byte_array_class, nullptr));
    if (!blocks) {
        drop_exception(env);
        trace_at(site, "%s", kind.blocks_array_error);
        return false;
    }
    {
        jni::pinned_array<jint> elements(env, keys.get());
        if (!elements) {
            drop_exception(env);
            trace_at(site, "%s", kind.keys_elements_error);
            return false;
        }
        for (unsigned i = 0; i < count; ++i) {
            unsigned key = 0;
            unsigned block_count = 0;
            const bool key_read = kind.wide_keys ? read_u16(cursor, left, &key) : read_u8(cursor, left, &key);
            if (!key_read || !read_u8(cursor, left, &block_count)) {
                trace_at(site, "ERROR : card data too short.");
                return false;
            }
            elements[i] = static_cast<jint>(key);
            jni::local_ref<jbyteArray> data(env, block_data(env, site, block_count, cursor, left));
            if (!data) return false;
            env->SetObjectArrayElement(blocks.get(), static_cast<jsize>(i), data.get());
        }
        elements.commit();
    }
    return call_setter(env, entry, kind.set_keys, keys.get()) && call_setter(env, entry, kind.set_block_data, blocks.get());
}

jobject qsf_fnd_acc_observer::build_sector_entry(JNIEnv* env, const trace_site& site, jclass byte_array_class, jmethodID ctor,
                                                 jmethodID set_sector_num, jmethodID set_block_data,
                                                 const uint8_t** cursor, dev_ulong* left) {
    unsigned sectors = 0;
    if (!read_u8(cursor, left, &sectors)) {
        trace_at(site, "ERROR : card data too short.");
        return nullptr;
    }
    jni::local_ref<jobject> entry(env, env->NewObject(jcls_system_data_, ctor));
    if (!entry) {
        drop_exception(env);
        trace_at(site, "ERROR : could not create system data object.");
        return nullptr;
    }
    // A type A card: sector numbers, each with its blocks.
    const keyed_blocks sectors_kind{byte_array_class,
                                    set_sector_num,
                                    set_block_data,
                                    false,
                                    "ERROR : could not create jobjectArray.",
                                    "env->GetIntArrayElements(jiarr_sector_num, NULL) obj = NULL",
                                    "ERROR : could not create jobjectArray."};
    if (!set_keyed_blocks(env, site, entry.get(), sectors_kind, sectors, cursor, left)) return nullptr;
    return entry.release();
}

jobject qsf_fnd_acc_observer::build_system_entry(JNIEnv* env, const trace_site& site, jclass byte_array_class, jmethodID ctor,
                                                 jmethodID set_system_code, jmethodID set_service_code,
                                                 jmethodID set_block_data, const uint8_t** cursor,
                                                 dev_ulong* left) {
    unsigned system_code = 0;
    unsigned services = 0;
    if (!read_u16(cursor, left, &system_code) || !read_u8(cursor, left, &services)) {
        trace_at(site, "ERROR : card data too short.");
        return nullptr;
    }
    jni::local_ref<jobject> entry(env, env->NewObject(jcls_system_data_, ctor));
    if (!entry) {
        drop_exception(env);
        trace_at(site, "ERROR : could not create system data object.");
        return nullptr;
    }
    env->CallVoidMethod(entry.get(), set_system_code, static_cast<jint>(system_code));
    const bool thrown = env->ExceptionCheck();
    drop_exception(env);
    if (thrown) return nullptr;
    // A FeliCa card's system: service codes, each with its blocks.
    const keyed_blocks services_kind{byte_array_class,
                                     set_service_code,
                                     set_block_data,
                                     true,
                                     "ERROR : could not create service code array.",
                                     "ERROR : could not create service code element.",
                                     "ERROR : could not create felica block array."};
    if (!set_keyed_blocks(env, site, entry.get(), services_kind, services, cursor, left)) return nullptr;
    return entry.release();
}

bool qsf_fnd_acc_observer::set_iccard_data(JNIEnv* env, jobject info, int count, dev_ulong size, void* data,
                                           ENV_AUTH_IC_CARD_TYPE type) {
    const bool type_a = type == ENV_AUTH_IC_CARD_TYPE_A;
    if (type_a) {
        JBRG_TRACE("card_type == TYPE_A ");
    } else {
        JBRG_TRACE("card_type != TYPE_A ");
    }
    if (info == nullptr || count < 0 || (data == nullptr && count > 0)) {
        JBRG_TRACE("ERROR : parameter error.");
        return false;
    }

    struct method_lookup {
        jclass cls;
        jmethodID* mid;
        const char* name;
        const char* signature;
        const char* error;
    };
    jmethodID ctor = nullptr;
    jmethodID set_system_code = nullptr;
    jmethodID set_service_code = nullptr;
    jmethodID set_sector_num = nullptr;
    jmethodID set_block_data = nullptr;
    jmethodID set_system_data = nullptr;
    const method_lookup type_a_methods[] = {
        {jcls_system_data_, &ctor, "<init>", "()V", "ERROR : could not get SystemData#SystemData() method ID."},
        {jcls_system_data_, &set_sector_num, "setSectorNum", "([I)V",
         "ERROR : could not get SystemData#setSectorNum() method ID."},
        {jcls_system_data_, &set_block_data, "setBlockData", "([[B)V",
         "ERROR : could not get SystemData#setBlockData() method ID."},
        {jcls_iccard_info_, &set_system_data, "setSystemData", "([Lorvane/qsf/controller/event/device/SystemData;)V",
         "ERROR : could not get ICCardInfo#setSystemData() method ID."},
    };
    const method_lookup system_methods[] = {
        {jcls_system_data_, &ctor, "<init>", "()V", "ERROR : could not get SystemData#SystemData() method ID."},
        {jcls_system_data_, &set_system_code, "setSystemCode", "(I)V",
         "ERROR : could not get SystemData#setSystemCode() method ID."},
        {jcls_system_data_, &set_service_code, "setServiceCode", "([I)V",
         "ERROR : could not get SystemData#setServiceCode() method ID."},
        {jcls_system_data_, &set_block_data, "setBlockData", "([[B)V",
         "ERROR : could not get SystemData#setBlockData() method ID."},
        {jcls_iccard_info_, &set_system_data, "setSystemData", "([Lorvane/qsf/controller/event/device/SystemData;)V",
         "ERROR : could not get ICCardInfo#setSystemData() method ID."},
    };
    const method_lookup* first = type_a ? type_a_methods : system_methods;
    const std::size_t lookups = type_a ? std::size(type_a_methods) : std::size(system_methods);
    for (std::size_t i = 0; i < lookups; ++i) {
        *first[i].mid = env->GetMethodID(first[i].cls, first[i].name, first[i].signature);
        if (*first[i].mid == nullptr) {
            drop_exception(env);
            JBRG_TRACE("%s", first[i].error);
            return false;
        }
    }

    jclass byte_array_class = env->FindClass("[B");
    if (byte_array_class == nullptr) {
        drop_exception(env);
        JBRG_TRACE("ERROR : could not find byte[][] class.");
        return false;
    }
    jobjectArray entries = env->NewObjectArray(static_cast<jsize>(count), jcls_system_data_, nullptr);
    if (entries == nullptr) {
        drop_exception(env);
        JBRG_TRACE("ERROR : could not create system data array.");
        env->DeleteLocalRef(byte_array_class);
        return false;
    }

    const trace_site site = JBRG_TRACE_SITE;
    const uint8_t* cursor = static_cast<const uint8_t*>(data);
    dev_ulong left = size;
    bool ok = true;
    for (int i = 0; ok && i < count; ++i) {
        jobject entry = type_a ? build_sector_entry(env, site, byte_array_class, ctor, set_sector_num, set_block_data,
                                                    &cursor, &left)
                               : build_system_entry(env, site, byte_array_class, ctor, set_system_code,
                                                    set_service_code, set_block_data, &cursor, &left);
        if (entry == nullptr) {
            ok = false;
            break;
        }
        env->SetObjectArrayElement(entries, static_cast<jsize>(i), entry);
        env->DeleteLocalRef(entry);
    }
    if (ok) {
        env->CallVoidMethod(info, set_system_data, entries);
        ok = !env->ExceptionCheck();
        drop_exception(env);
    }
    env->DeleteLocalRef(entries);
    env->DeleteLocalRef(byte_array_class);
    return ok;
}

void qsf_fnd_acc_observer::smart_card_lost() {
    JBRG_TRACE("START");
    std::memset(&card_info_, 0, sizeof card_info_);
    JBRG_TRACE("WARNING : The notification event is not defined.");
    JBRG_TRACE("END");
}

void qsf_fnd_acc_observer::smart_card_error_detected(const XDC_COM_STD_SMART_CARD_ERROR_INFO& error_info) {
    JBRG_TRACE("START");
    if (!initialised()) {
        JBRG_TRACE("ERROR : could not called init() method.");
    } else if (event_attach scope; !thread_attach(scope)) {
        JBRG_TRACE("ERROR : could not connect JVM.");
    } else {
        // Java receives the first 32-bit word of the error information: the error code.
        int32_t first_word = 0;
        std::memcpy(&first_word, &error_info, sizeof first_word);
        scope.env()->CallStaticVoidMethod(jcls_acc_proxy_, mid_fire_iccard_error_event_,
                                          static_cast<jint>(first_word));
        thread_detach(scope);
    }
    JBRG_TRACE("END");
}

void qsf_fnd_acc_observer::fire_device_event(JNIEnv* env, jboolean added) {
    // The card types go to Java as the signed byte at offset 8 of the record: the low byte of the card-type
    // bits on the little-endian device.
    int8_t card_types = 0;
    std::memcpy(&card_types, reinterpret_cast<const char*>(&reader_info_) + 8, sizeof card_types);
    env->CallStaticVoidMethod(jcls_acc_proxy_, mid_fire_iccard_device_event_,
                                  static_cast<jint>(reader_info_.vendor), static_cast<jint>(reader_info_.product_id),
                                  added, static_cast<jint>(static_cast<jbyte>(card_types)));
}

void qsf_fnd_acc_observer::smart_card_reader_added(const XDC_COM_STD_SMART_CARD_READER_INFO& reader_info) {
    JBRG_TRACE("START");
    if (!initialised()) {
        JBRG_TRACE("ERROR : could not called init() method.");
    } else if (event_attach scope; !thread_attach(scope)) {
        JBRG_TRACE("ERROR : could not connect JVM.");
    } else {
        reader_info_ = reader_info;
        fire_device_event(scope.env(), JNI_TRUE);
        thread_detach(scope);
    }
    JBRG_TRACE("END");
}

// A removed reader is reported with what the last added reader said about itself (zero when none was added).
void qsf_fnd_acc_observer::smart_card_reader_removed() {
    JBRG_TRACE("START");
    if (!initialised()) {
        JBRG_TRACE("ERROR : could not called init() method.");
    } else if (event_attach scope; !thread_attach(scope)) {
        JBRG_TRACE("ERROR : could not connect JVM.");
    } else {
        fire_device_event(scope.env(), JNI_FALSE);
        thread_detach(scope);
    }
    JBRG_TRACE("END");
}

}  // namespace orvane
