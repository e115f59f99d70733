// The IC card observer on the card reader's own thread: the cards, errors and readers that reach Java, and
// the observer's traces.
#include <gmock/gmock.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "event/qsf_fnd_acc_observer.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/smart_card.h"
#include "tests/event/event_test.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"
#include "xdc_com_std.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace card = jbrg_sim::smart_card;

constexpr const char kAcc[] = "orvane/qsf/controller/event/proxy/AccProxy";
constexpr const char kFile[] = "qsf_fnd_acc_observer.cpp";

// n blocks of 16 bytes counting up from `first`.
std::vector<uint8_t> blocks(unsigned n, uint8_t first) {
    std::vector<uint8_t> out(n * XDC_COM_STD_BLOCK_SIZE);
    for (std::size_t i = 0; i < out.size(); ++i) out[i] = static_cast<uint8_t>(first + i);
    return out;
}

// The same as text, as AccProxy records it.
std::string hex(const std::vector<uint8_t>& bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string out;
    for (uint8_t b : bytes) {
        out += digits[b >> 4];
        out += digits[b & 15];
    }
    return out;
}

class registration {
public:
    explicit registration(bool initialise, orvane::qsf_fnd_acc_observer* observer = new orvane::qsf_fnd_acc_observer)
        : observer_(observer) {
        if (initialise) init_result_ = jbrg_sim::deliver_on_new_thread([this] { return observer_->init() ? 1 : 0; });
        xdc_com_std_facade::get_instance()->add_smart_card_observer(observer_.get());
    }
    ~registration() { xdc_com_std_facade::get_instance()->remove_smart_card_observer(observer_.get()); }
    orvane::qsf_fnd_acc_observer* get() const { return observer_.get(); }
    int32_t init_result() const { return init_result_; }

private:
    std::unique_ptr<orvane::qsf_fnd_acc_observer> observer_;
    int32_t init_result_ = -1;
};

class acc_observer : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        jbrg_test::proxy_clear(kAcc);
    }
};

TEST_F(acc_observer, init_finds_its_classes_and_methods_and_traces_each_step) {
    registration r(true);
    EXPECT_EQ(r.init_result(), 1);
    EXPECT_THAT(jbrg_test::traces_of(kFile),
                ElementsAre("init,START", "thread_attach,START", "thread_attach,END : 1", "thread_detach,START",
                            "thread_detach,END", "init,END"));
}

TEST_F(acc_observer, a_sector_card_reaches_java_with_sector_numbers_and_blocks) {
    registration r(true);
    const auto s1 = blocks(2, 0x00);
    const auto s5 = blocks(1, 0xF0);
    const auto info = card::card(ENV_AUTH_IC_CARD_TYPE_A, "04A1B2C3D4E5F6",
                                 {card::sector_entry({{1, s1}, {5, s5}})});
    EXPECT_EQ(card::card_detected(info), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc),
                ElementsAre("fireICCardEvent(id=04A1B2C3D4E5F6, type=1, data=[{system=0, services=null, "
                            "sectors=[1, 5], blocks=[" + hex(s1) + ", " + hex(s5) + "]}])"));
    EXPECT_THAT(jbrg_test::traces_of(kFile), Contains("set_iccard_data,card_type == TYPE_A "));
}

TEST_F(acc_observer, a_system_card_reaches_java_with_codes_read_high_byte_first) {
    registration r(true);
    const auto a = blocks(2, 0x10);
    const auto b = blocks(1, 0x80);
    const auto c = blocks(3, 0x40);
    const auto info = card::card(ENV_AUTH_IC_CARD_TYPE_C, "0123456789ABCDEF",
                                 {card::system_entry(0xFE00, {{0x090F, a}, {0x1A8B, b}}),
                                  card::system_entry(0x0003, {{0xFFFF, c}})});
    EXPECT_EQ(card::card_detected(info), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc),
                ElementsAre("fireICCardEvent(id=0123456789ABCDEF, type=4, data=["
                            "{system=65024, services=[2319, 6795], sectors=null, blocks=[" + hex(a) + ", " + hex(b) +
                            "]}, {system=3, services=[65535], sectors=null, blocks=[" + hex(c) + "]}])"));
    EXPECT_THAT(jbrg_test::traces_of(kFile), Contains("set_iccard_data,card_type != TYPE_A "));
}

TEST_F(acc_observer, each_card_type_is_one_bit_and_an_unknown_type_is_zero_after_a_warning) {
    registration r(true);
    for (int32_t type : {0, 1, 2, 3, 4, 5, 6, -1}) EXPECT_EQ(card::card_detected(card::card(type, "01")), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc),
                ElementsAre("fireICCardEvent(id=01, type=1, data=[])", "fireICCardEvent(id=01, type=2, data=[])",
                            "fireICCardEvent(id=01, type=4, data=[])", "fireICCardEvent(id=01, type=8, data=[])",
                            "fireICCardEvent(id=01, type=16, data=[])", "fireICCardEvent(id=01, type=32, data=[])",
                            "fireICCardEvent(id=01, type=0, data=[])", "fireICCardEvent(id=01, type=0, data=[])"));
    EXPECT_EQ(jbrg_test::traces_containing("WARNING : parameter error (card_type).").size(), 2u);
}

TEST_F(acc_observer, a_detected_card_is_traced_field_by_field) {
    registration r(true);
    jbrg_sim::clear_traces();
    auto info = card::card(ENV_AUTH_IC_CARD_TYPE_C, "0123456789ABCDEF", {card::system_entry(0x8000, {})});
    EXPECT_EQ(card::card_detected(info), 0);
    EXPECT_THAT(jbrg_test::traces_of(kFile),
                ElementsAre("smart_card_detected,START", "smart_card_detected,card_info.card_type = 2",
                            "smart_card_detected,card_info.card_id = 0123456789ABCDEF",
                            "smart_card_detected,card_info.card_id_size = 16",
                            "smart_card_detected,card_info.service_data_exist = 0001",
                            "smart_card_detected,card_info.service_data_size = 3", "thread_attach,START",
                            "thread_attach,END : 1", "set_iccard_data,card_type != TYPE_A ", "thread_detach,START",
                            "thread_detach,END", "smart_card_detected,END"));
}

TEST_F(acc_observer, card_data_that_end_early_send_nothing) {
    registration r(true);
    // Two entries announced, one present.
    auto info = card::card(ENV_AUTH_IC_CARD_TYPE_C, "AB", {card::system_entry(1, {{2, blocks(1, 0)}})});
    info.service_data_count = 2;
    EXPECT_EQ(card::card_detected(info), 0);
    // A block count larger than the data left.
    auto sectors = card::card(ENV_AUTH_IC_CARD_TYPE_A, "CD", {card::sector_entry({{3, blocks(1, 0)}})});
    sectors.service_data[2] = 4;
    EXPECT_EQ(card::card_detected(sectors), 0);
    // A size beyond the data area is cut to the area; the walk still stops at its end.
    auto huge = card::card(ENV_AUTH_IC_CARD_TYPE_C, "EF", {card::system_entry(1, {})});
    huge.service_data_count = 1000;
    huge.service_data_size = 0xFFFFFFFFu;
    EXPECT_EQ(card::card_detected(huge), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc), IsEmpty());
    EXPECT_EQ(jbrg_test::traces_containing("ERROR : card data too short.").size(), 3u);
    EXPECT_EQ(jbrg_test::traces_containing("ERROR : could not set joarr_system_data.").size(), 3u);
}

TEST_F(acc_observer, data_the_reader_does_not_vouch_for_are_ignored_and_an_unterminated_id_is_cut) {
    registration r(true);
    auto info = card::card(ENV_AUTH_IC_CARD_TYPE_C, "", {card::system_entry(1, {})});
    info.service_data_exist = 0;
    std::memset(info.card_id, 'F', sizeof info.card_id);
    info.card_id_size = XDC_COM_STD_CARD_ID_SIZE;
    EXPECT_EQ(card::card_detected(info), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc),
                ElementsAre("fireICCardEvent(id=" + std::string(XDC_COM_STD_CARD_ID_SIZE, 'F') +
                            ", type=4, data=[])"));
}

TEST_F(acc_observer, errors_and_readers_reach_java_and_a_lost_card_does_not) {
    registration r(true);
    XDC_COM_STD_SMART_CARD_READER_INFO reader{};
    reader.vendor = 0x0BDA;
    reader.product_id = 0xFFFF;
    reader.reader_type = 3;
    reader.card_types = 0x85;  // types 0, 2 and 7: the byte at offset 8 is negative in Java
    reader.read_button = 1;
    EXPECT_EQ(card::reader_removed(), 0);  // none added yet: the cleared information
    EXPECT_EQ(card::reader_added(reader), 0);
    EXPECT_EQ(card::card_error(XDC_COM_STD_CARD_ERROR_AUTHENTICATION, 77), 0);
    EXPECT_EQ(card::card_error(-3), 0);
    EXPECT_EQ(card::card_lost(), 0);
    EXPECT_EQ(card::reader_removed(), 0);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc),
                ElementsAre("fireICCardDeviceEvent(0, 0, false, 0)", "fireICCardDeviceEvent(3034, 65535, true, -123)",
                            "fireICCardErrorEvent(2)", "fireICCardErrorEvent(-3)",
                            "fireICCardDeviceEvent(3034, 65535, false, -123)"));
    EXPECT_THAT(jbrg_test::traces_of(kFile),
                Contains("smart_card_lost,WARNING : The notification event is not defined."));
}

TEST_F(acc_observer, an_observer_without_its_vm_or_its_identifiers_traces_each_event_and_sends_nothing) {
    // init() never ran, then init() found the VM but not AccProxy.
    for (bool knows_vm : {false, true}) {
        jbrg_sim::clear_traces();
        registration r(false, knows_vm ? new jbrg_test::without_identifiers<orvane::qsf_fnd_acc_observer>
                                       : new orvane::qsf_fnd_acc_observer);
        EXPECT_EQ(card::card_detected(card::card(ENV_AUTH_IC_CARD_TYPE_B, "12")), 0);
        EXPECT_EQ(card::card_error(1), 0);
        EXPECT_THAT(jbrg_test::proxy_received(kAcc), IsEmpty());
        EXPECT_THAT(jbrg_test::traces_of(kFile),
                    ElementsAre("smart_card_detected,START", "smart_card_detected,card_info.card_type = 1",
                                "smart_card_detected,card_info.card_id = 12", "smart_card_detected,card_info.card_id_size = 2",
                                "smart_card_detected,card_info.service_data_exist = 0000",
                                "smart_card_detected,card_info.service_data_size = 0",
                                "smart_card_detected,ERROR : could not called init() method.", "smart_card_detected,END",
                                "smart_card_error_detected,START",
                                "smart_card_error_detected,ERROR : could not called init() method.",
                                "smart_card_error_detected,END"));
    }
}

TEST_F(acc_observer, a_thread_that_cannot_attach_is_traced_by_attach_and_detach) {
    orvane::qsf_fnd_acc_observer observer;  // no VM: init() never ran
    orvane::event_attach scope;
    EXPECT_EQ(jbrg_sim::deliver("smart_card", [&] { return observer.thread_attach(scope) ? 1 : 0; }), 0);
    jbrg_sim::deliver("smart_card", [&] {
        observer.thread_detach(scope);
        return 0;
    });
    EXPECT_THAT(jbrg_test::traces_of(kFile),
                ElementsAre("thread_attach,START", "thread_attach,ERROR : could not called init() method.",
                            "thread_detach,START", "thread_detach,ERROR : could not called init() method.",
                            "thread_detach,END"));
}

TEST_F(acc_observer, the_builders_refuse_missing_arguments) {
    registration r(true);
    jbrg_sim::clear_traces();
    // On an attached platform thread, as during an event.
    jbrg_sim::deliver("smart_card", [&] {
        auto* o = r.get();
        orvane::event_attach scope;
        o->thread_attach(scope);
        JNIEnv* e = scope.env();
        const bool id = o->set_iccard_id(e, nullptr, "01");
        jobject info = o->create_iccard_info_obj(e);
        const bool no_id = o->set_iccard_id(e, info, nullptr);
        const bool type = o->set_iccard_type(e, nullptr, 0);
        const bool data = o->set_iccard_data(e, info, 1, 0, nullptr, 2);
        o->thread_detach(scope);
        return (id || no_id || type || data || info == nullptr) ? 1 : 0;
    });
    EXPECT_EQ(jbrg_test::traces_containing("ERROR : parameter error.").size(), 3u);
    EXPECT_EQ(jbrg_test::traces_containing("ERROR : parameter error (card_info).").size(), 1u);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc), IsEmpty());
}

TEST_F(acc_observer, the_reader_refuses_records_of_the_wrong_size_and_unknown_messages) {
    registration r(true);
    const char ten[10] = {};
    EXPECT_EQ(card::send(XDC_COM_STD_MSG_CARD_DETECTED, ten, sizeof ten), static_cast<int32_t>(0xE0010001));
    EXPECT_EQ(card::send(XDC_COM_STD_MSG_READER_ADDED, nullptr, 0), static_cast<int32_t>(0xE0010001));
    EXPECT_EQ(card::send(99, nullptr, 0), static_cast<int32_t>(0xE0010001));
    EXPECT_EQ(card::observers(), 1u);
    EXPECT_THAT(jbrg_test::proxy_received(kAcc), IsEmpty());
    auto* facade = xdc_com_std_facade::get_instance();
    EXPECT_EQ(facade->add_smart_card_observer(r.get()), XDC_COM_STD_NG);
    EXPECT_EQ(facade->remove_smart_card_observer(nullptr), XDC_COM_STD_NG);
}

}  // namespace
