// The IC card reader's settings through the cmt_iccard natives: the Java side of each group runs in
// jbrg.test.device_attr.IcCardModule; what the reader holds afterwards and the trace lines are checked here.
#include <gmock/gmock.h>

#include <string>

#include "device_attr/cmt_device_iccard.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/smart_card.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"
#include "xdc_com_std.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kJava = "jbrg/test/device_attr/IcCardModule";

class iccard_module : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"smart_card": {"reader": {"vendor": 2257, "product_id": 513, "reader_type": 3,
                                             "card_types": 5, "read_button": true}}})";
    }
};

TEST_F(iccard_module, the_reader_tells_its_identity_and_a_detached_one_its_absence) {
    EXPECT_THAT(jbrg_test::java_texts(kJava, "reader"),
                ElementsAre("status 1", "info 1", "vendor 2257", "product 513", "type 3", "cards 5", "button true"));
    EXPECT_THAT(jbrg_sim::trace_texts(),
                Contains(HasSubstr("::getReaderInfo,reader_info.vendor     2257")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::getVendorID,END : 0x08d1")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::getReaderType,END : 0x03")));

    jbrg_sim::smart_card::reader_removed();
    EXPECT_THAT(jbrg_test::java_texts(kJava, "reader"),
                ElementsAre("status 0", "info 0", "vendor 4294967295", "product 4294967295", "type 4294967295",
                            "cards 4294967295", "button false"))
        << "a new object knows no read button; each getter asked the reader again";
    jbrg_sim::force_result("get_smart_card_reader_information", XDC_COM_STD_BUSY);
    EXPECT_EQ("status -1", jbrg_test::java_texts(kJava, "reader").at(0)) << "any other answer: unknown";
}

TEST_F(iccard_module, felica_settings_go_to_the_reader_as_numbers_and_come_back_as_lower_case_text) {
    run_java(kJava, "felica");
    const XDC_COM_STD_FELICA_SERVICE_SETTING s = jbrg_sim::smart_card::felica_setting(1);
    EXPECT_EQ(0xFE00, s.system_code);
    EXPECT_EQ(0x000B, s.service[0].service_code);
    EXPECT_EQ(4, s.service[0].num_of_blocks);
    EXPECT_EQ(0x1234, s.service[1].service_code);
    EXPECT_EQ(1, jbrg_sim::smart_card::felica_data_type());
    EXPECT_THAT(jbrg_sim::calls_of("set_felica_data_type"), ::testing::SizeIs(1)) << "type 0 asks nothing";
    EXPECT_THAT(jbrg_sim::calls_of("set_felica_service_setting"), ::testing::SizeIs(1)) << "setting 3 asks nothing";
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::setTypeCInfo,FELICA_Setting.system_code              65024")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::setTypeCReadType,END ( 2 : 1 ) : 1")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::getTypeCSystemCode,END (2) : fe00")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::getTypeCBlockNum,END (2,-1) : ERROR")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::getTypeCSystemCode,END (0) : NULL")));
}

TEST_F(iccard_module, malformed_codes_read_as_the_devices_32_bit_strtol_reads_them) {
    run_java(kJava, "felicaCodes");
    const XDC_COM_STD_FELICA_SERVICE_SETTING s = jbrg_sim::smart_card::felica_setting(0);
    EXPECT_EQ(0, s.system_code) << "no digits: 0";
    EXPECT_EQ(0xFFFF, s.service[0].service_code) << "past 32 bits the value stands at LONG_MAX on the device";
    EXPECT_EQ(0xFFFF, s.service[1].service_code) << "-1";
}

TEST_F(iccard_module, mifare_settings_follow_the_read_edit_write_cycle_and_keys_are_checked_digit_by_digit) {
    run_java(kJava, "mifare");
    EXPECT_FALSE(jbrg_sim::smart_card::mifare_setting(2).has_value()) << "cleared at the end";
    EXPECT_EQ(XDC_COM_STD_MIFARE_DATA_SECTOR, jbrg_sim::smart_card::mifare_data_type());
    const auto sets = jbrg_sim::calls_of("set_mifare_classic_read_setting");
    ASSERT_EQ(1u, sets.size()) << "refused keys never reach the reader";
    EXPECT_EQ("2", sets[0].args[0]) << "site 3 is setting 2";
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::getTypeAInfo,TypeA infomation is blank")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::setTypeAInfo,authKey:A0A1A2A3A4A5FFFF, sector_num:1f")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::setTypeAInfo,authKey is wrong : 0061")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::setTypeAInfo,authKey is wrong : 0000")));
    EXPECT_THAT(jbrg_sim::trace_texts(),
                Contains(HasSubstr("::setTypeAInfo,Both of authKey and sectorNum must not be empty")));
    EXPECT_THAT(jbrg_sim::trace_texts(),
                Contains(HasSubstr("::setTypeAInfo,authKey and sectorNum are empty, clear the data")));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("::setTypeAReadType,true!!")));
}

TEST_F(iccard_module, a_reader_that_refuses_leaves_the_statics_as_they_were) {
    jbrg_sim::force_result("get_mifare_classic_read_setting", XDC_COM_STD_NOT_EXIST);
    jbrg_sim::force_result("set_mifare_classic_data_type", XDC_COM_STD_NOT_EXIST);
    orvane::CMT_Device_ICCard card;
    card.setAuthKey("00112233445A");
    EXPECT_FALSE(card.getTypeAInfo(1));
    EXPECT_EQ("00112233445A", orvane::CMT_Device_ICCard::authKey);
    EXPECT_FALSE(card.setTypeAReadType(1));
    EXPECT_THAT(jbrg_sim::trace_texts(), Contains(HasSubstr("CMT_Device_ICCard::setTypeAReadType false!!")));
}

TEST_F(iccard_module, null_texts_are_refused_before_anything_changes) {
    run_java(kJava, "badArguments");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

}  // namespace
