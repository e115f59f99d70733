// The address book module against the simulated device: personal addresses with their destinations, groups,
// members and searches, driven from Java (tests/java/jbrg/test/address/AddressBookModule.java) and, where the
// platform's answers are forced, through cmt_address_book directly; with the platform calls and trace lines
// each query leaves.
#include <gmock/gmock.h>

#include <cstring>
#include <string>

#include "address/cmt_address_book.h"
#include "core/cjvm.h"
#include "jbrg_sim/address_book.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_address_book.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using jbrg_test::traces_containing;

constexpr const char* kJava = "jbrg/test/address/AddressBookModule";

template <std::size_t N>
void put(char (&field)[N], const std::string& text) {
    std::strncpy(field, text.c_str(), N - 1);
}

class address_book : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        orvane::CJvm::CreateJVM();
    }
    void TearDown() override {
        // Whatever a query did, it finished what it opened and gave its buffers back.
        EXPECT_EQ(0U, jbrg_sim::address_book::open_listings());
        EXPECT_EQ(0U, jbrg_sim::blocks_in_use());
        bridge_test::TearDown();
    }

    // Alice with every destination, Bob (a name of 64 three-byte characters) with e-mail only, and `groups`
    // groups, the first with one member of each of Alice's destinations.
    void fill(int groups) {
        XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS a{};
        put(a.name, "Alice Archer");
        put(a.pronunciation, "alice archer");
        a.destinations = 0x1F;
        put(a.email.mail_address, "alice@example.com");
        put(a.ftp.host, "ftp.example.com");
        put(a.ftp.path, "/in");
        a.ftp.port = 21;
        put(a.ftp.login_name, "up");
        put(a.ftp.password, "secret");
        put(a.smb.host, "fs");
        put(a.smb.path, "share");
        a.smb.port = 445;
        put(a.fax.fax_num, "0123");
        a.fax.bitrate_type = 2;
        a.fax.ecm = 1;
        put(a.fax.name, "Ms Archer");
        put(a.fax.department, "Sales");
        put(a.fax.company, "Orvane");
        a.fax.honorific_title_type = 3;
        put(a.ifax.ifax_address, "ifax@example.com");
        a.ifax.mode_type = 1;
        a.ifax.size_type = 2;
        a.ifax.resolution_type = 3;
        a.ifax.file_type = 4;
        a.ifax.via_server = 1;
        uint32_t alice = jbrg_sim::address_book::add_personal(a);
        ASSERT_EQ(1U, alice);
        XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS b{};
        std::string euros;
        for (int i = 0; i < 64; ++i) euros += "\xE2\x82\xAC";
        put(b.name, euros);
        b.destinations = XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
        put(b.email.mail_address, "bob@example.com");
        ASSERT_NE(0U, jbrg_sim::address_book::add_personal(b));
        for (int g = 1; g <= groups; ++g) {
            uint16_t id = jbrg_sim::address_book::add_group("Group " + std::to_string(g), "");
            ASSERT_NE(0, id);
            if (g == 1) {
                first_group = id;
                for (int8_t type = 0; type <= 4; ++type) ASSERT_TRUE(jbrg_sim::address_book::add_member(id, alice, type));
            }
        }
    }

    uint16_t first_group = 0;
};

TEST_F(address_book, personal_addresses_carry_their_destinations) {
    fill(0);
    run_java(kJava, "personalAddressesCarryTheirDestinations");
    EXPECT_THAT(traces_containing("get_all_personal_address()"),
                ElementsAre(HasSubstr("[TIMER] get_all_personal_address() start."),
                            HasSubstr("_prepare end. total_num = [2]"), HasSubstr("::set_objects loop start."),
                            HasSubstr("::set_objects loop end."), HasSubstr("_list loop end.")));
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWSubAllocMem"),
                ElementsAre(testing::Field(&jbrg_sim::call::args, ElementsAre("54080"))));
}

TEST_F(address_book, groups_come_in_chunks_of_twenty_and_searches_match_names) {
    fill(45);
    run_java(kJava, "groupsAndSearches");
    EXPECT_EQ(3U, jbrg_sim::calls_of("xsi_pbfs_address_book_get_group_address_list").size()) << "20, 20, 5";
    EXPECT_THAT(traces_containing("g_ret_num = ["), ElementsAre(HasSubstr("[20]"), HasSubstr("[20]"), HasSubstr("[5]"),
                                                                HasSubstr("[11]")));
    // The refused keys and types never reach the device; the search passes the key's name and type 0.
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_address_book_search_group_address_list_prepare")[0].args,
                ElementsAre("20", "group 1", testing::_, testing::_, "0"));
    EXPECT_EQ(2U, jbrg_sim::calls_of("xsi_pbfs_address_book_search_personal_address_list_prepare").size());
    EXPECT_THAT(traces_containing("keyObj"), ElementsAre(HasSubstr("keyObj==NULL"), HasSubstr("keyObj is not a SearchKey."),
                                                         HasSubstr("keyObj.name==NULL")));
}

TEST_F(address_book, members_carry_the_one_destination_their_type_names) {
    fill(1);
    run_java(kJava, "membersCarryOneDestination");
    auto prepares = jbrg_sim::calls_of("xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare");
    ASSERT_EQ(3U, prepares.size());
    EXPECT_EQ(prepares[0].args[0], prepares[1].args[0]) << "the id above 65535 is cut to 16 bits";
    EXPECT_THAT(traces_containing("grp_mem_str_prepare()! m_ret = [0x"),
                ElementsAre(HasSubstr("m_ret = [0xc1010306]")));
}

TEST_F(address_book, a_query_that_fails_answers_null_and_finishes_its_listing) {
    fill(3);
    orvane::cmt_address_book book;
    jbrg_sim::force_result("xsi_pbfs_address_book_get_group_address_list_prepare", PLAT_CODE(0xC1010305));
    EXPECT_EQ(nullptr, book.get_all_group_list());
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_address_book_get_group_address_list_finish"), IsEmpty());
    jbrg_sim::force_result("xsi_pbfs_address_book_get_group_address_list", PLAT_CODE(0xC1010301));
    EXPECT_EQ(nullptr, book.get_all_group_list());
    jbrg_sim::force_result("emwOSWSubAllocMem", 1);
    EXPECT_EQ(nullptr, book.get_all_personal_address());
    // A listing that hands back nothing before its total: the query cannot be answered whole.
    jbrg_sim::force_out("xsi_pbfs_address_book_get_personal_address_list", "get_num", "0");
    EXPECT_EQ(nullptr, book.get_all_personal_address());
    EXPECT_THAT(traces_containing("Fail to"),
                ElementsAre(HasSubstr("Fail to xsi_pbfs_address_book_get_group_address_list_prepare()!"),
                            HasSubstr("get_group_address_list()! g_ret = [0xc1010301]"),
                            HasSubstr("Fail to malloc! tmp_address == NULL"),
                            HasSubstr("Fail to read the listing! 0 of 2 records.")));
    EXPECT_EQ(1U, jbrg_sim::calls_of("xsi_pbfs_address_book_get_group_address_list_finish").size());
    EXPECT_EQ(2U, jbrg_sim::calls_of("xsi_pbfs_address_book_get_personal_address_list_finish").size());
    EXPECT_EQ(nullptr, book.get_all_address(0));
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_address_book_get_personal_address_list_prepare"), testing::SizeIs(2));
}

TEST_F(address_book, a_large_book_lists_whole_one_chunk_of_memory_at_a_time) {
    fill(0);
    XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS p{};
    p.destinations = XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
    put(p.email.mail_address, "someone@example.com");
    for (int i = 0; i < 9998; ++i) {
        put(p.name, "Person " + std::to_string(i));
        ASSERT_NE(0U, jbrg_sim::address_book::add_personal(p));
    }
    for (int g = 0; g < 1000; ++g) {
        uint16_t id = jbrg_sim::address_book::add_group("Team " + std::to_string(g), "");
        for (uint32_t m = 0; m < 100; ++m) ASSERT_TRUE(jbrg_sim::address_book::add_member(id, 3 + (g + m) % 9998, 4));
    }
    jbrg_sim::clear_calls();
    JNIEnv* e = jbrg_test::env();
    jclass java = e->FindClass(kJava);
    jint count = e->CallStaticIntMethod(java, e->GetStaticMethodID(java, "countEverything", "()I"));
    EXPECT_EQ("", take_exception());
    EXPECT_EQ(10000 + 1000 + 1000 * 100, count);
    // Each chunk's buffer is given back before the next is taken: never more than one at a time.
    int held = 0;
    for (const auto& c : jbrg_sim::calls()) {
        if (c.op == "emwOSWSubAllocMem") ++held;
        if (c.op == "emwOSWOrgFreeMemPart") --held;
        ASSERT_LE(held, 1);
    }
}

}  // namespace
