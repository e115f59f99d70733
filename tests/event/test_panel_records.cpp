// The operation panel's screen records through the event module: the Java side of the text groups runs in
// jbrg.test.event.PanelRecords; the array fields, whose bytes Java cannot see, are checked here.
#include <gtest/gtest.h>

#include <jni.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "core/handle.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_panel.h"

namespace {

using jbrg_test::env;
using orvane::to_handle;

class panel_records : public jbrg_test::bridge_test {
protected:
    // Sets the array field `field` of record `R` (at [offset, offset + size)) through the module's setter,
    // into a zeroed record followed by a guard. The source is the same field of a record the module made with
    // `new_`, filled with 0x5A bytes. Answers the bytes of the record and of the guard, one character each:
    // 'x' for 0x5A, '.' for 0, '?' for anything else.
    template <class R>
    std::string set_array(const std::string& record, const std::string& field, std::size_t offset,
                          std::size_t size, bool source_has_owner) {
        struct guarded {
            R record;
            unsigned char guard[64];
        };
        guarded target;
        std::memset(&target, 0, sizeof target);

        JNIEnv* e = env();
        jclass module = e->FindClass("orvane/qsf/wrapper/event/qsf_fnd_eventJNI");
        EXPECT_NE(nullptr, module) << take_exception();
        if (module == nullptr) return "";
        jmethodID make = e->GetStaticMethodID(module, ("new_" + record).c_str(), "()J");
        jmethodID drop = e->GetStaticMethodID(module, ("delete_" + record).c_str(), "(J)V");
        jmethodID setter = e->GetStaticMethodID(
            module, (record + "_" + field + "_set").c_str(),
            source_has_owner ? "(JLjava/lang/Object;JLjava/lang/Object;)V" : "(JLjava/lang/Object;J)V");
        EXPECT_TRUE(make != nullptr && drop != nullptr && setter != nullptr) << record << ": " << take_exception();
        if (make == nullptr || drop == nullptr || setter == nullptr) return "";

        const jlong made = e->CallStaticLongMethod(module, make);
        EXPECT_EQ("", take_exception()) << "new_" << record;
        auto* source = orvane::from_handle<unsigned char>(made) + offset;
        std::memset(source, 0x5A, size);
        const jlong into = to_handle(&target.record);
        if (source_has_owner) {
            e->CallStaticVoidMethod(module, setter, into, nullptr, to_handle(source), nullptr);
        } else {
            e->CallStaticVoidMethod(module, setter, into, nullptr, to_handle(source));
        }
        EXPECT_EQ("", take_exception()) << record << "." << field;
        e->CallStaticVoidMethod(module, drop, made);
        EXPECT_EQ("", take_exception()) << "delete_" << record;

        std::string seen;
        const auto* bytes = reinterpret_cast<const unsigned char*>(&target);
        for (std::size_t i = 0; i < sizeof target; ++i) seen += bytes[i] == 0x5A ? 'x' : bytes[i] == 0 ? '.' : '?';
        return seen;
    }

    // What set_array answers when exactly the field was written.
    template <class R>
    static std::string only(std::size_t offset, std::size_t size) {
        return std::string(offset, '.') + std::string(size, 'x') + std::string(sizeof(R) + 64 - offset - size, '.');
    }
};

TEST_F(panel_records, texts_follow_the_size_constants) {
    run_java("jbrg/test/event/PanelRecords", "textsFollowTheSizeConstants");
}

TEST_F(panel_records, dates_and_times_are_texts_of_digits) {
    run_java("jbrg/test/event/PanelRecords", "dateTimeTexts");
}

// Each array setter copies exactly the entries the record holds (3 common items, 3 input fields, 30 list
// entries, 30 selected indexes): no entry is left behind and nothing after the array is touched.
TEST_F(panel_records, array_setters_copy_exactly_the_entries_of_the_record) {
#define JBRG_EXPECT_ARRAY_SET(R, field, owner)                                                             \
    EXPECT_EQ(set_array<R>(#R, #field, offsetof(R, field), sizeof(R::field), owner),                        \
              only<R>(offsetof(R, field), sizeof(R::field)))
    JBRG_EXPECT_ARRAY_SET(XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM, data, true);
    JBRG_EXPECT_ARRAY_SET(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT, data, true);
    JBRG_EXPECT_ARRAY_SET(XSI_PBFS_PANEL_DISPLAY_LIST_ITEM, data, true);
    JBRG_EXPECT_ARRAY_SET(XSI_PBFS_PANEL_OPERATION_INPUT_TEXT, input_data, true);
    JBRG_EXPECT_ARRAY_SET(XSI_PBFS_PANEL_OPERATION_LIST_SELECT, data, false);  // a primitive array: no owner
#undef JBRG_EXPECT_ARRAY_SET
}

}  // namespace
