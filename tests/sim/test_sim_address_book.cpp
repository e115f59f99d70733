// The simulated device's address book, through its facade and the control surface.
#include <gmock/gmock.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "jbrg_sim/address_book.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_address_book.h"

namespace {

using ::testing::ElementsAre;

class sim_address_book : public jbrg_test::bridge_test {
protected:
    // Group "Team" gets id 1, "Alpha" id 2; by number Alpha (1) comes first.
    std::string scenario() const override {
        return R"({"address_book": {"personal": [
            {"number": 1, "name": "Alice Archer", "pronunciation": "alice archer", "email": "alice@example.com",
             "fax": {"fax_num": "0123", "bitrate_type": 1}},
            {"number": 2, "name": "bob", "pronunciation": "Robert",
             "ftp": {"host": "ftp.example.com", "path": "/in", "port": 21}},
            {"number": 5, "name": "\u00c4rger", "email": "a@example.com"},
            {"number": 3, "name": "Zed"} ],
          "groups": [ {"number": 2, "name": "Team", "members": [ {"number": 1, "type": 4}, {"number": 2, "type": 0},
                                                                 {"number": 1, "type": 3} ]},
                      {"number": 1, "name": "Alpha", "pronunciation": "team b",
                       "members": [ {"number": 1, "type": 4} ]} ]}})";
    }
    static xsi_pbfs_address_book_facade& ab() {
        return *xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_instance();
    }

    // The names a personal search lists, read 2 a get.
    static std::vector<std::string> search(const char* name) {
        unsigned int handle = 0, total = 0, got = 0;
        std::vector<std::string> out;
        EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_search_personal_address_list_prepare(
                                               2, name, handle, total, XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE_NAME));
        XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS list[2];
        while (ab().xsi_pbfs_address_book_search_personal_address_list(handle, name, got, list, 0) ==
               XSI_PBFS_ADDRESSBOOK_OK) {
            for (unsigned int i = 0; i < got; ++i) out.push_back(list[i].name);
        }
        EXPECT_EQ(total, out.size());
        EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_search_personal_address_list_finish(handle));
        return out;
    }
};

TEST_F(sim_address_book, listings_hand_back_chunks_of_a_snapshot_then_their_end) {
    jbrg_sim::load_scenario(R"({"address_book": {"personal_generated": 45}})");
    unsigned int handle = 0, total = 0, got = 9;
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_personal_address_list_prepare(20, handle, total));
    EXPECT_NE(0U, handle);
    EXPECT_EQ(45U, total);
    XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS added{};
    std::strcpy(added.name, "late");
    EXPECT_EQ(46U, jbrg_sim::address_book::add_personal(added)) << "after the highest number";
    std::vector<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS> list(20);
    std::vector<unsigned int> chunks;
    std::memset(list.data(), 0xAB, list.size() * sizeof list[0]);
    while (ab().xsi_pbfs_address_book_get_personal_address_list(handle, got, list.data()) == XSI_PBFS_ADDRESSBOOK_OK) {
        chunks.push_back(got);
    }
    EXPECT_THAT(chunks, ElementsAre(20U, 20U, 5U)) << "the address added since is not in the listing";
    EXPECT_EQ(0U, got) << "LIST_END hands back nothing";
    EXPECT_STREQ("person45", list[4].name);
    EXPECT_EQ(45U, list[4].number);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_DEST_EMAIL, list[4].destinations);
    EXPECT_EQ(0, list[4].ftp.host[0]) << "written records are zeroed";
    EXPECT_EQ(0, list[4].reserved[372]);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR,
              ab().xsi_pbfs_address_book_get_group_address_list(handle, got, nullptr))
        << "a handle of another kind";
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_personal_address_list_finish(handle));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR, ab().xsi_pbfs_address_book_get_personal_address_list_finish(handle));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_PARAM_ERROR,
              ab().xsi_pbfs_address_book_get_group_address_list_prepare(0, handle, total));

    // At most eight open, of every kind.
    std::vector<unsigned int> open(8);
    for (std::size_t i = 0; i < open.size(); ++i) {
        ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
                  i % 2 ? ab().xsi_pbfs_address_book_get_group_address_list_prepare(1, open[i], total)
                        : ab().xsi_pbfs_address_book_search_personal_address_list_prepare(1, "", open[i], total, 0));
    }
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_BUSY_ERROR,
              ab().xsi_pbfs_address_book_get_personal_address_list_prepare(1, handle, total));
    EXPECT_EQ(8U, jbrg_sim::address_book::open_listings());
    for (std::size_t i = 0; i < open.size(); ++i) {
        EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, i % 2
                                               ? ab().xsi_pbfs_address_book_search_group_address_list_finish(open[i])
                                               : ab().xsi_pbfs_address_book_get_personal_address_list_finish(open[i]));
    }
    EXPECT_EQ(0U, jbrg_sim::address_book::open_listings());

    // Forced out-values, and the call log in declaration order.
    jbrg_sim::clear_calls();
    jbrg_sim::force_out("xsi_pbfs_address_book_search_group_address_list_prepare", "total", "99");
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_search_group_address_list_prepare(3, "te", handle, total, 0));
    EXPECT_EQ(99U, total);
    const auto calls = jbrg_sim::calls();
    ASSERT_EQ(1U, calls.size());
    ASSERT_EQ(5U, calls[0].args.size());
    EXPECT_EQ("3", calls[0].args[0]);
    EXPECT_EQ("te", calls[0].args[1]);
    EXPECT_EQ("0", calls[0].args[4]);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_search_group_address_list_finish(handle));
}

TEST_F(sim_address_book, a_generated_book_of_ten_thousand_addresses_and_a_thousand_groups_lists) {
    jbrg_sim::load_scenario(
        R"({"address_book": {"personal_generated": 10000, "groups_generated": {"count": 1000, "members": 100}}})");
    EXPECT_EQ(10000U, jbrg_sim::address_book::personal_count());
    EXPECT_EQ(1000U, jbrg_sim::address_book::group_count());
    unsigned int handle = 0, total = 0, got = 0;
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(1000, 100, handle, total));
    EXPECT_EQ(100U, total);
    std::vector<XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER> members(100);
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_get_group_member_address_list(handle, got, members.data()));
    EXPECT_EQ(9901U, members[0].number) << "members are taken in turn from the addresses";
    EXPECT_STREQ("person9901@example.com", members[0].destination.email.mail_address);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_member_address_list_finish(handle));
}

TEST_F(sim_address_book, a_search_matches_the_beginning_of_a_name_or_pronunciation) {
    EXPECT_THAT(search("aL"), ElementsAre("Alice Archer")) << "ASCII letters without case";
    EXPECT_THAT(search("rob"), ElementsAre("bob")) << "by pronunciation";
    EXPECT_THAT(search(""), ElementsAre("Alice Archer", "bob", "Zed", "\xC3\x84rger")) << "every entry, by number";
    EXPECT_THAT(search("\xC3\x84"), ElementsAre("\xC3\x84rger"));
    EXPECT_THAT(search("\xC3\xA4"), ElementsAre()) << "other bytes exactly";
    EXPECT_THAT(search("Archer"), ElementsAre()) << "not within the name";

    unsigned int handle = 0, total = 0, got = 0;
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_PARAM_ERROR,
              ab().xsi_pbfs_address_book_search_personal_address_list_prepare(1, nullptr, handle, total, 0));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_PARAM_ERROR,
              ab().xsi_pbfs_address_book_search_group_address_list_prepare(1, nullptr, handle, total, 0));
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_search_group_address_list_prepare(5, "TEAM", handle, total, 0));
    XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS groups[5];
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_PARAM_ERROR,
              ab().xsi_pbfs_address_book_search_group_address_list(handle, "x", got, groups, 0))
        << "another name";
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_search_group_address_list(handle, "TEAM", got, groups, 0));
    ASSERT_EQ(2U, got);
    EXPECT_STREQ("Alpha", groups[0].name) << "its pronunciation matches; by number";
    EXPECT_STREQ("Team", groups[1].name);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_search_group_address_list_finish(handle));
}

TEST_F(sim_address_book, groups_have_device_ids_and_list_their_members_in_order) {
    unsigned int handle = 0, total = 0, got = 0;
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(1, 10, handle, total));
    XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER m[10];
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_member_address_list(handle, got, m));
    ASSERT_EQ(3U, got);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL, m[0].type);
    EXPECT_STREQ("alice@example.com", m[0].destination.email.mail_address);
    EXPECT_STREQ("alice archer", m[0].pronunciation);
    EXPECT_EQ(2U, m[1].number);
    EXPECT_STREQ("ftp.example.com", m[1].destination.ftp.host);
    EXPECT_EQ(21U, m[1].destination.ftp.port);
    EXPECT_STREQ("0123", m[2].destination.fax.fax_num);
    EXPECT_EQ(1, m[2].destination.fax.bitrate_type);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_member_address_list_finish(handle));
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(2, 10, handle, total));
    EXPECT_EQ(1U, total) << "Alice is a member of both groups";
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_member_address_list_finish(handle));
    for (unsigned short unknown : {0, 3}) {
        EXPECT_EQ(
            XSI_PBFS_ADDRESSBOOK_GROUP_ID_NOTHING_ERROR,
            ab().xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(unknown, 1, handle, total));
    }

    namespace book = jbrg_sim::address_book;
    EXPECT_EQ(0, book::add_group("Taken", "", 2)) << "number 2 is Team's";
    const uint16_t id = book::add_group("New", "");
    EXPECT_EQ(3, id);
    EXPECT_TRUE(book::add_member(id, 2, XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FTP));
    EXPECT_FALSE(book::add_member(id, 2, XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FTP)) << "a member already";
    EXPECT_FALSE(book::add_member(id, 2, XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL)) << "bob has no e-mail";
    EXPECT_FALSE(book::add_member(id, 4, XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL));
    EXPECT_FALSE(book::add_member(9, 1, XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL));
    XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS g[5];
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_address_list_prepare(5, handle, total));
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_address_list(handle, got, g));
    ASSERT_EQ(3U, got);
    EXPECT_EQ(2, g[0].id);
    EXPECT_EQ(1, g[1].id);
    EXPECT_EQ(3, g[2].number) << "the next free number";
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_address_list_finish(handle));
}

TEST_F(sim_address_book, either_finish_of_a_family_closes_either_kind_and_no_other) {
    unsigned int get = 0, found = 0, members = 0, total = 0;
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_address_list_prepare(1, get, total));
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_search_group_address_list_prepare(1, "t", found, total, 0));
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(1, 1, members, total));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR, ab().xsi_pbfs_address_book_get_group_address_list_finish(members));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR, ab().xsi_pbfs_address_book_get_personal_address_list_finish(get));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR, ab().xsi_pbfs_address_book_get_group_member_address_list_finish(get));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_search_group_address_list_finish(get));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_address_list_finish(found));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_group_member_address_list_finish(members));

    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_personal_address_list_prepare(1, get, total));
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK,
              ab().xsi_pbfs_address_book_search_personal_address_list_prepare(1, "", found, total, 0));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR, ab().xsi_pbfs_address_book_search_group_address_list_finish(get));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_search_personal_address_list_finish(get));
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_personal_address_list_finish(found));
    EXPECT_EQ(0U, jbrg_sim::address_book::open_listings());
}

TEST_F(sim_address_book, texts_end_within_their_fields_and_names_that_do_not_fit_are_refused) {
    namespace book = jbrg_sim::address_book;
    std::string wide;
    for (int i = 0; i < 64; ++i) wide += "\xE3\x81\x82";  // 192 bytes: the field's 193 with its zero
    XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS r{};
    std::memset(r.name, 'x', sizeof r.name);
    EXPECT_EQ(0U, book::add_personal(r)) << "a name without its end";
    std::strcpy(r.name, wide.c_str());
    r.destinations = 0x20;
    EXPECT_EQ(0U, book::add_personal(r)) << "a destination the book does not know";
    r.destinations = XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
    std::memset(r.smb.host, 'j', sizeof r.smb.host);  // not registered: not read, not kept
    EXPECT_EQ(4U, book::personal_count());
    r.number = 6;
    ASSERT_EQ(6U, book::add_personal(r));
    EXPECT_EQ(0U, book::add_personal(r)) << "number 6 is taken now";
    EXPECT_EQ(0, book::add_group(wide + "\xE3\x81\x82", ""));
    EXPECT_EQ(0, book::add_group("", wide + "x"));
    EXPECT_EQ(2U, book::group_count());

    unsigned int handle = 0, total = 0, got = 0;
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_personal_address_list_prepare(5, handle, total));
    XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS list[5];
    ASSERT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_personal_address_list(handle, got, list));
    ASSERT_EQ(5U, got);
    EXPECT_EQ(wide, list[4].name);
    EXPECT_EQ(0, list[4].smb.host[0]);
    EXPECT_EQ(XSI_PBFS_ADDRESSBOOK_OK, ab().xsi_pbfs_address_book_get_personal_address_list_finish(handle));
}

TEST_F(sim_address_book, scenarios_that_do_not_read_are_refused_and_change_nothing) {
    const std::string long_name(193, 'n');
    for (const std::string& bad :
         {std::string(R"({"address_book": {"people": []}})"),
          std::string(R"({"address_book": {"personal": [ {"name": "no number"} ]}})"),
          std::string(R"({"address_book": {"personal": [ {"number": 1}, {"number": 1} ]}})"),
          R"({"address_book": {"personal": [ {"number": 1, "name": ")" + long_name + R"("} ]}})",
          std::string(R"({"address_book": {"personal": [ {"number": 1, "ftp": {"port": 21, "user": "u"}} ]}})"),
          std::string(R"({"address_book": {"personal": [ {"number": 1} ], "groups": [ {"number": 1,
                          "members": [ {"number": 1, "type": 4} ]} ]}})"),
          std::string(R"({"address_book": {"groups": [ {"number": 1, "members": [ {"number": 7, "type": 4} ]} ]}})"),
          std::string(R"({"address_book": {"groups": [ {"number": 1}, {"number": 1} ]}})"),
          std::string(R"({"address_book": {"groups_generated": {"count": 1, "members": 1}}})"),
          std::string(R"({"address_book": {"groups": [ {"number": 65535} ], "groups_generated": {"count": 1}}})")}) {
        EXPECT_THROW(jbrg_sim::load_scenario(bad), std::runtime_error) << bad;
    }
    EXPECT_EQ(4U, jbrg_sim::address_book::personal_count());
    EXPECT_EQ(2U, jbrg_sim::address_book::group_count());
}

}  // namespace
