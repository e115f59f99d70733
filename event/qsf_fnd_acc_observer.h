// The IC card observer: the smart card reader's events, forwarded to Java.
//
// Registered with xdc_com_std_facade by the event manager. A card that was read becomes an
// orvane.qsf.controller.event.device.ICCardInfo carrying SystemData entries with the card's data and goes
// to AccProxy.fireICCardEvent; read errors and readers added or removed go to AccProxy's other static
// methods; a lost card reaches nobody. Every step is traced; every failure is traced and ends the event with
// nothing sent to Java. The reader's events answer nothing.
//
// The reader's thread is held attached for each event (observer_support.h); the environment goes from the
// event to the builders as an argument and is never kept.
#ifndef JBRG_EVENT_QSF_FND_ACC_OBSERVER_H
#define JBRG_EVENT_QSF_FND_ACC_OBSERVER_H

#include <jni.h>

#include "core/trace.h"
#include "event/observer_support.h"
#include "plat_types.h"
#include "xdc_com_std.h"

namespace orvane {

class qsf_fnd_acc_observer : public xdc_com_std_smart_card_observer {
public:
    qsf_fnd_acc_observer();
    // Deletes the class references through the destroying thread's own environment.
    ~qsf_fnd_acc_observer() override;

    // Finds the VM and, attached, the three Java classes and AccProxy's three methods. False at the first
    // one missing (traced).
    bool init();
    // The event's attach and its end, each traced; `scope` holds the thread's environment in between.
    bool thread_attach(event_attach& scope);
    void thread_detach(event_attach& scope);

    void smart_card_detected(const XDC_COM_STD_SMART_CARD_INFO& card_info) override;
    void smart_card_lost() override;
    void smart_card_error_detected(const XDC_COM_STD_SMART_CARD_ERROR_INFO& error_info) override;
    void smart_card_reader_added(const XDC_COM_STD_SMART_CARD_READER_INFO& reader_info) override;
    void smart_card_reader_removed() override;

    // The builders of a card's Java object, through the environment of the attached thread. Each traces its
    // own failures.
    jobject create_iccard_info_obj(JNIEnv* env);
    bool set_iccard_id(JNIEnv* env, jobject info, const char* id);
    bool set_iccard_type(JNIEnv* env, jobject info, ENV_AUTH_IC_CARD_TYPE type);
    bool set_iccard_data(JNIEnv* env, jobject info, int count, dev_ulong size, void* data,
                         ENV_AUTH_IC_CARD_TYPE type);

protected:
    // Filled by init().
    JavaVM* jvm_ = nullptr;
    jclass jcls_acc_proxy_ = nullptr;
    jclass jcls_iccard_info_ = nullptr;
    jclass jcls_system_data_ = nullptr;
    jmethodID mid_fire_iccard_event_ = nullptr;
    jmethodID mid_fire_iccard_error_event_ = nullptr;
    jmethodID mid_fire_iccard_device_event_ = nullptr;

private:
    bool initialised() const;
    // Sends the reader information with `added` to Java (the thread is attached).
    void fire_device_event(JNIEnv* env, jboolean added);
    // One SystemData entry read from the card data at `*cursor` (at most `*left` bytes), or null; failures
    // are traced at `site`, the builder's own line.
    jobject build_sector_entry(JNIEnv* env, const trace_site& site, jclass byte_array_class, jmethodID ctor, jmethodID set_sector_num,
                               jmethodID set_block_data, const uint8_t** cursor, dev_ulong* left);
    jobject build_system_entry(JNIEnv* env, const trace_site& site, jclass byte_array_class, jmethodID ctor, jmethodID set_system_code,
                               jmethodID set_service_code, jmethodID set_block_data, const uint8_t** cursor,
                               dev_ulong* left);
    // One sector's or service's blocks as a new byte[] (16 bytes per block), or null (traced).
    jbyteArray block_data(JNIEnv* env, const trace_site& site, unsigned blocks, const uint8_t** cursor, dev_ulong* left);

    // How one entry's keys (a type A card's sector numbers or a FeliCa system's service codes) and their
    // blocks are read and handed to the entry, with the messages of the two card kinds.
    struct keyed_blocks {
        jclass byte_array_class;
        jmethodID set_keys;
        jmethodID set_block_data;
        bool wide_keys;  // 16-bit keys (service codes) rather than 8-bit ones (sector numbers)
        const char* keys_array_error;
        const char* keys_elements_error;
        const char* blocks_array_error;
    };
    // Reads `count` keys with their blocks into a new int[] and byte[][] and passes them to the entry's two
    // setters. False when the data end early, an array cannot be made or a setter throws (traced at `site`).
    bool set_keyed_blocks(JNIEnv* env, const trace_site& site, jobject entry, const keyed_blocks& kind, unsigned count,
                          const uint8_t** cursor, dev_ulong* left);
    // Calls a setter of one object argument; false (the exception cleared) when it throws.
    bool call_setter(JNIEnv* env, jobject entry, jmethodID setter, jobject value);

    XDC_COM_STD_SMART_CARD_READER_INFO reader_info_;
    XDC_COM_STD_SMART_CARD_INFO card_info_;
};

}  // namespace orvane

#endif  // JBRG_EVENT_QSF_FND_ACC_OBSERVER_H
