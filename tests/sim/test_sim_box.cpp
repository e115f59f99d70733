// The simulated device's document boxes, through their facade, the job service and the control surface.
#include <gmock/gmock.h>

#include <sys/stat.h>

#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "jbrg_sim/box.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/job.h"
#include "tests/harness/bridge_test.h"
#include "xsi_ais_auth.h"
#include "xsi_ais_job.h"
#include "xsi_pbfs_box.h"

namespace {

using ::testing::ElementsAre;

class sim_box : public jbrg_test::bridge_test {
protected:
    // User boxes 1-4 get box ids 1-4, the fax box id 5; documents 1-4 are the boxes', 5-6 the retained ones.
    std::string scenario() const override {
        return R"({"users": {"local": [ {"login_name": "alice", "password": "a", "user_name": "Alice"},
                                        {"login_name": "bob", "password": "b"},
                                        {"login_name": "root", "password": "r", "rights": 0} ]},
          "boxes": {"limit": 5, "space": 100,
            "user": [ {"number": 1, "name": "Alice's", "owner_login_name": "alice", "capacity": 10, "password": "pw",
                       "documents": [ {"name": "d1", "pages": 3, "date": 1700000000, "data_size": 2048} ]},
                      {"number": 2, "owner_login_name": "bob", "share": 1, "capacity": 1},
                      {"number": 3, "name": "Anyone", "documents_generated": 3},
                      {"number": 4, "owner_login_name": "bob", "capacity": 50} ],
            "fax": [ {"number": 1, "name": "Fax"} ],
            "retained": [ {"type": 2, "name": "secret", "user_name": "Ann", "password": "1234", "copies": 2},
                          {"type": 0, "name": "quick"} ],
            "removable_memory": {"files": [ {"path": "/scan/a.pdf", "text": "abc", "mtime": 1600000000},
                                            {"path": "/top.txt", "text": "t"}, {"path": "/empty", "dir": true} ]}}})";
    }
    static xsi_pbfs_box_facade& box() { return *xsi_pbfs_box_facade::xsi_pbfs_box_get_instance(); }
    static xsi_ais_job_facade& job() { return *xsi_ais_job_facade::xsi_ais_job_get_instance(); }

    static dev_ulong login(const char* name, const char* password) {
        dev_ulong cert = 0;
        EXPECT_EQ(XSI_AIS_AUTH_OK, xsi_ais_auth_facade::xsi_ais_auth_get_instance()->xsi_ais_auth_account_login(
                                       name, password, XSI_AIS_AUTH_AUTHMODE_LOCAL, &cert));
        return cert;
    }

    // The user boxes as "number:name:capacity:documents", to see that a refused call changed nothing.
    static std::vector<std::string> user_boxes() {
        std::vector<std::string> out;
        for (const auto& b : jbrg_sim::box::boxes()) {
            out.push_back(std::to_string(b.number) + ":" + b.name + ":" + std::to_string(b.capacity) + ":" +
                          std::to_string(b.documents.size()));
        }
        return out;
    }

    static XSI_PBFS_BOX_DETAIL_INFO record(dev_ulong number, dev_ulong capacity, const char* name = "new") {
        XSI_PBFS_BOX_DETAIL_INFO r{};
        r.box_common_info.box_num = number;
        std::strcpy(r.box_common_info.box_name, name);
        r.box_capacity = capacity;
        return r;
    }
};

TEST_F(sim_box, listings_hand_back_chunks_of_a_snapshot_then_their_end) {
    unsigned int handle = 0, total = 0, got = 9;
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_info_prepare(3, handle, total));
    EXPECT_NE(0U, handle);
    EXPECT_EQ(4U, total) << "user boxes only";
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_delete_box(3, nullptr));
    XSI_PBFS_BOX_LIST_INFO list[3];
    std::memset(list, 0xAB, sizeof list);
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_list_info(handle, got, list));
    EXPECT_EQ(3U, got);
    EXPECT_STREQ("Alice's", list[0].box_common_info.box_name);
    EXPECT_EQ(0, list[0].box_common_info.box_name[sizeof list[0].box_common_info.box_name - 1]) << "zeroed first";
    EXPECT_EQ(1U, list[0].box_pw_set);
    EXPECT_EQ(1U, list[0].box_current_size) << "2 KiB take a megabyte";
    EXPECT_EQ(1U, list[0].box_doc_num);
    EXPECT_EQ(3U, list[2].box_id) << "the snapshot still holds the box deleted since";
    EXPECT_EQ(3U, list[2].box_doc_num);
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_list_info(handle, got, list));
    EXPECT_EQ(1U, got);
    EXPECT_EQ(XSI_PBFS_BOX_LIST_END, box().xsi_pbfs_box_get_box_list_info(handle, got, list));
    EXPECT_EQ(0U, got);
    XSI_PBFS_BOX_DOC_INFO doc{};
    EXPECT_EQ(XSI_PBFS_BOX_HANDLE_ERROR, box().xsi_pbfs_box_get_document_info(handle, got, &doc))
        << "a handle of another kind of listing";
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_info_finish(handle));
    EXPECT_EQ(XSI_PBFS_BOX_HANDLE_ERROR, box().xsi_pbfs_box_get_box_info_finish(handle));
    EXPECT_EQ(XSI_PBFS_BOX_PARAM_ERROR, box().xsi_pbfs_box_get_fax_box_list_prepare(0, handle, total));

    // At most eight open, of every kind.
    std::vector<unsigned int> open(8);
    for (std::size_t i = 0; i < open.size(); ++i) {
        ASSERT_EQ(XSI_PBFS_BOX_OK, i % 2 ? box().xsi_pbfs_box_get_fax_box_list_prepare(1, open[i], total)
                                         : box().xsi_pbfs_box_get_easy_box_info_prepare("/", 1, open[i], total));
    }
    EXPECT_EQ(XSI_PBFS_BOX_BUSY_ERROR, box().xsi_pbfs_box_get_job_retention_doc_list_prepare(
                                           XSI_PBFS_BOX_JBRT_BOX_TYPE_QUICK_COPY, 1, handle, total));
    EXPECT_EQ(8U, jbrg_sim::box::open_listings());
    for (std::size_t i = 0; i < open.size(); ++i) {
        EXPECT_EQ(XSI_PBFS_BOX_OK, i % 2 ? box().xsi_pbfs_box_get_fax_box_list_finish(open[i])
                                         : box().xsi_pbfs_box_get_easy_box_info_finish(open[i]));
    }
    EXPECT_EQ(0U, jbrg_sim::box::open_listings());

    // Forced out-values, and the call log in declaration order.
    jbrg_sim::clear_calls();
    jbrg_sim::force_out("xsi_pbfs_box_get_document_info_prepare", "total", "99");
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_document_info_prepare(1, "pw", 5, handle, total));
    EXPECT_EQ(99U, total);
    const auto calls = jbrg_sim::calls();
    ASSERT_EQ(1U, calls.size());
    ASSERT_EQ(5U, calls[0].args.size());
    EXPECT_THAT(std::vector<std::string>(calls[0].args.begin(), calls[0].args.begin() + 3), ElementsAre("1", "pw", "5"));
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_document_info_finish(handle));
}

TEST_F(sim_box, ten_thousand_documents_are_read_one_per_get) {
    jbrg_sim::load_scenario(R"({"boxes": {"user": [ {"number": 7, "documents_generated": 10000} ]}})");
    unsigned int handle = 0, total = 0, got = 0, read = 0;
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_document_info_prepare(1, nullptr, 1, handle, total));
    EXPECT_EQ(10000U, total);
    XSI_PBFS_BOX_DOC_INFO doc{};
    while (box().xsi_pbfs_box_get_document_info(handle, got, &doc) == XSI_PBFS_BOX_OK) read += got;
    EXPECT_EQ(10000U, read);
    EXPECT_STREQ("doc10000", doc.doc_name);
    EXPECT_EQ(10000U, doc.doc_id);
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_document_info_finish(handle));
}

TEST_F(sim_box, boxes_are_added_updated_and_deleted_within_the_limits_and_refusals_change_nothing) {
    const std::vector<std::string> before = user_boxes();
    XSI_PBFS_BOX_DETAIL_INFO bad = record(0, 0);
    EXPECT_EQ(XSI_PBFS_BOX_PARAM_ERROR, box().xsi_pbfs_box_add_box(bad)) << "number 0";
    bad = record(9, 0);
    std::memset(bad.box_common_info.box_owner_name, 'x', sizeof bad.box_common_info.box_owner_name);
    EXPECT_EQ(XSI_PBFS_BOX_PARAM_ERROR, box().xsi_pbfs_box_add_box(bad)) << "a text without its end";
    bad = record(9, 0);
    bad.box_data_update = static_cast<XSI_PBFS_BOX_UPDATE_VAL>(3);
    EXPECT_EQ(XSI_PBFS_BOX_PARAM_ERROR, box().xsi_pbfs_box_add_box(bad));
    EXPECT_EQ(XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, box().xsi_pbfs_box_add_box(record(4, 0)));
    dev_ulong left = 0;
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_available_capacity(XSI_PBFS_BOX_KIND_USER, left));
    EXPECT_EQ(39U, left);
    EXPECT_EQ(XSI_PBFS_BOX_BOX_CAPACITY_FULL, box().xsi_pbfs_box_add_box(record(9, 40)));
    EXPECT_EQ(before, user_boxes());

    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_add_box(record(9, 39)));
    EXPECT_EQ(0U, jbrg_sim::box::available_capacity());
    EXPECT_EQ(XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR, box().xsi_pbfs_box_add_box(record(10, 0)));
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_add_fax_box(record(9, 0))) << "fax boxes count apart";
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_available_capacity(XSI_PBFS_BOX_KIND_FAX, left));
    EXPECT_EQ(30000U, left);
    EXPECT_EQ(XSI_PBFS_BOX_PARAM_ERROR, box().xsi_pbfs_box_get_box_available_capacity(2, left));
    const std::vector<std::string> full = user_boxes();
    EXPECT_EQ(6U, jbrg_sim::box::boxes()[4].box_id) << "ids go on after the fax box's";

    // Id, password, number, capacity: each refusal leaves the box as it was.
    EXPECT_EQ(XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, box().xsi_pbfs_box_update_box_info(5, nullptr, record(8, 0)))
        << "a fax box's id";
    EXPECT_EQ(XSI_PBFS_BOX_BOX_PASSWORD_ERROR, box().xsi_pbfs_box_update_box_info(1, "PW", record(8, 0)));
    EXPECT_EQ(XSI_PBFS_BOX_BOX_PASSWORD_ERROR, box().xsi_pbfs_box_delete_box(1, nullptr));
    EXPECT_EQ(XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, box().xsi_pbfs_box_update_box_info(1, "pw", record(2, 10)));
    EXPECT_EQ(XSI_PBFS_BOX_BOX_CAPACITY_FULL, box().xsi_pbfs_box_update_box_info(1, "pw", record(1, 11)));
    EXPECT_EQ(full, user_boxes());
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_update_box_info(1, "pw", record(8, 5, "Renamed")));
    XSI_PBFS_BOX_DETAIL_INFO detail{};
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_detail_info(1, "pw", detail))
        << "the update took the password away: any opens the box";
    EXPECT_EQ(8U, detail.box_common_info.box_num);
    EXPECT_STREQ("Renamed", detail.box_common_info.box_name);
    EXPECT_EQ(1U, jbrg_sim::box::box(1)->documents.size()) << "its documents stay";
    EXPECT_EQ(5U, jbrg_sim::box::available_capacity());
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_delete_box(3, "any"));
    EXPECT_FALSE(jbrg_sim::box::box(3).has_value());
    EXPECT_EQ(XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, box().xsi_pbfs_box_delete_box(3, nullptr));
}

TEST_F(sim_box, documents_fit_their_box_and_open_with_its_password) {
    jbrg_sim::box::document big;
    big.name = "big";
    big.data_size = 700 * 1024;
    EXPECT_NE(0U, jbrg_sim::box::store_document(2, big));
    EXPECT_EQ(0U, jbrg_sim::box::store_document(2, big)) << "a 1 MB box is full";
    EXPECT_EQ(0U, jbrg_sim::box::store_document(99, big));
    EXPECT_EQ(1U, jbrg_sim::box::box(2)->used_size);
    ASSERT_EQ(1U, jbrg_sim::box::box(2)->documents.size());
    EXPECT_NE(0, jbrg_sim::box::box(2)->documents[0].date) << "dated when stored";

    unsigned int handle = 0, total = 0;
    EXPECT_EQ(XSI_PBFS_BOX_BOX_PASSWORD_ERROR, box().xsi_pbfs_box_get_document_info_prepare(1, "no", 1, handle, total));
    EXPECT_EQ(XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR,
              box().xsi_pbfs_box_get_fax_document_list_prepare(1, "pw", 1, handle, total));
    EXPECT_EQ(XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR, box().xsi_pbfs_box_delete_document(1, "pw", 2))
        << "document 2 is box 3's";
    EXPECT_EQ(XSI_PBFS_BOX_BOX_PASSWORD_ERROR, box().xsi_pbfs_box_delete_document(1, nullptr, 1));
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_delete_document(1, "pw", 1));
    EXPECT_EQ(0U, jbrg_sim::box::box(1)->used_size);
    EXPECT_EQ(0U, jbrg_sim::box::open_listings());
}

TEST_F(sim_box, background_operations_act_for_a_current_login_within_its_rights) {
    dev_ulong alice = login("alice", "a"), root = login("root", "r");
    unsigned int handle = 0, total = 0;
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_info_prepare_bkg(4, alice, handle, total));
    EXPECT_EQ(3U, total) << "her own, the shared and the ownerless box; not Bob's unshared one";
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_info_finish(handle));
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_info_prepare_bkg(4, root, handle, total));
    EXPECT_EQ(4U, total) << "an administrator sees every box";
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_info_finish(handle));

    XSI_PBFS_BOX_DETAIL_INFO detail{};
    EXPECT_EQ(XSI_PBFS_BOX_PERMISSION_ERROR, box().xsi_pbfs_box_get_box_detail_info_bkg(4, nullptr, alice, detail));
    EXPECT_EQ(XSI_PBFS_BOX_PERMISSION_ERROR, box().xsi_pbfs_box_delete_box_bkg(4, nullptr, alice));
    XSI_PBFS_BOX_DETAIL_INFO bobs = record(9, 0);
    std::strcpy(bobs.box_common_info.box_owner_login_name, "bob");
    EXPECT_EQ(XSI_PBFS_BOX_PERMISSION_ERROR, box().xsi_pbfs_box_add_box_bkg(bobs, alice));
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_box_detail_info_bkg(2, nullptr, alice, detail)) << "shared";
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_delete_box_bkg(4, nullptr, root));

    // A certificate that names no login any more changes nothing.
    ASSERT_EQ(XSI_AIS_AUTH_OK, xsi_ais_auth_facade::xsi_ais_auth_get_instance()->xsi_ais_auth_logout(alice));
    const std::vector<std::string> before = user_boxes();
    dev_ulong left = 0;
    EXPECT_EQ(XSI_PBFS_BOX_LOGIN_ERROR, box().xsi_pbfs_box_get_box_info_prepare_bkg(4, alice, handle, total));
    EXPECT_EQ(XSI_PBFS_BOX_LOGIN_ERROR, box().xsi_pbfs_box_add_box_bkg(record(9, 0), alice));
    EXPECT_EQ(XSI_PBFS_BOX_LOGIN_ERROR, box().xsi_pbfs_box_delete_box_bkg(3, nullptr, alice));
    EXPECT_EQ(XSI_PBFS_BOX_LOGIN_ERROR, box().xsi_pbfs_box_delete_document_bkg(3, nullptr, 2, alice));
    EXPECT_EQ(XSI_PBFS_BOX_LOGIN_ERROR, box().xsi_pbfs_box_get_box_available_capacity_bkg(0, alice, left));
    EXPECT_EQ(before, user_boxes());
    EXPECT_EQ(0U, jbrg_sim::box::open_listings());
}

TEST_F(sim_box, retained_documents_and_the_removable_memory_are_listed_and_deleted) {
    unsigned int handle = 0, total = 0, got = 0;
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_job_retention_doc_list_prepare(
                                   XSI_PBFS_BOX_JBRT_BOX_TYPE_PRIVATE, 4, handle, total));
    EXPECT_EQ(1U, total);
    XSI_PBFS_BOX_JBRT_DOC_LIST kept[4];
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_job_retention_doc_list(handle, got, kept));
    EXPECT_STREQ("Ann", kept[0].user_name);
    EXPECT_EQ(1U, kept[0].doc_pw_set);
    EXPECT_EQ(5U, kept[0].doc_id);
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_job_retention_doc_list_finish(handle));
    XSI_PBFS_BOX_JBRT_DOC_INFO info{};
    EXPECT_EQ(XSI_PBFS_BOX_BOX_PASSWORD_ERROR, box().xsi_pbfs_box_get_job_retention_doc_info(5, nullptr, info));
    EXPECT_EQ(XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, box().xsi_pbfs_box_get_job_retention_doc_info(1, nullptr, info))
        << "document 1 is a box's";
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_job_retention_doc_info(5, "1234", info));
    EXPECT_EQ(2U, info.copies);
    EXPECT_EQ(XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR,
              box().xsi_pbfs_box_delete_job_retention_doc(XSI_PBFS_BOX_JBRT_BOX_TYPE_QUICK_COPY, 5, "1234"));
    EXPECT_EQ(XSI_PBFS_BOX_BOX_PASSWORD_ERROR,
              box().xsi_pbfs_box_delete_job_retention_doc(XSI_PBFS_BOX_JBRT_BOX_TYPE_PRIVATE, 5, "12"));
    EXPECT_EQ(XSI_PBFS_BOX_PARAM_ERROR,
              box().xsi_pbfs_box_delete_job_retention_doc(static_cast<XSI_PBFS_BOX_JBRT_BOX_TYPE>(4), 5, "1234"));
    EXPECT_EQ(2U, jbrg_sim::box::retained_documents().size());
    EXPECT_EQ(XSI_PBFS_BOX_OK,
              box().xsi_pbfs_box_delete_job_retention_doc(XSI_PBFS_BOX_JBRT_BOX_TYPE_PRIVATE, 5, "1234"));
    EXPECT_EQ(1U, jbrg_sim::box::retained_documents().size());

    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_easy_box_info_prepare("/", 5, handle, total));
    std::vector<XSI_PBFS_BOX_EASY_BOX_INFO> entries(5);
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_easy_box_info(handle, got, entries.data()));
    ASSERT_EQ(3U, got);
    EXPECT_STREQ("empty", entries[0].name);
    EXPECT_EQ(XSI_PBFS_BOX_EASY_KIND_FOLDER, entries[1].kind);
    EXPECT_STREQ("/top.txt", entries[2].path);
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_easy_box_info_finish(handle));
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_easy_box_info_prepare("/scan/", 1, handle, total));
    ASSERT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_easy_box_info(handle, got, entries.data()));
    EXPECT_STREQ("/scan/a.pdf", entries[0].path);
    EXPECT_EQ(3U, entries[0].data_size);
    EXPECT_EQ(1600000000, entries[0].date);
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_get_easy_box_info_finish(handle));
    for (const char* bad : {"/..", "/scan/../../etc", "/missing", "/top.txt", "scan"}) {
        EXPECT_EQ(XSI_PBFS_BOX_PATH_ERROR, box().xsi_pbfs_box_get_easy_box_info_prepare(bad, 1, handle, total)) << bad;
    }
    for (const char* bad : {"/scan", "/", "/scan/../../top.txt", "/missing.pdf"}) {
        EXPECT_EQ(XSI_PBFS_BOX_PATH_ERROR, box().xsi_pbfs_box_delete_easy_document(bad)) << bad;
    }
    const std::string file = jbrg_sim::box::removable_memory_folder() + "/scan/a.pdf";
    struct stat st {};
    ASSERT_EQ(0, ::stat(file.c_str(), &st));
    EXPECT_EQ(XSI_PBFS_BOX_OK, box().xsi_pbfs_box_delete_easy_document("/scan/./a.pdf"));
    EXPECT_NE(0, ::stat(file.c_str(), &st));

    jbrg_sim::load_scenario("{}");
    EXPECT_EQ("", jbrg_sim::box::removable_memory_folder());
    EXPECT_EQ(XSI_PBFS_BOX_MEDIA_ERROR, box().xsi_pbfs_box_get_easy_box_info_prepare("/", 1, handle, total));
    EXPECT_EQ(XSI_PBFS_BOX_MEDIA_ERROR, box().xsi_pbfs_box_delete_easy_document("/top.txt"));
}

TEST_F(sim_box, jobs_store_to_boxes_keep_prints_and_need_a_current_login) {
    dev_ulong alice = login("alice", "a");
    unsigned int set = 0, service = 0, user_job = 0;
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_BOX, set));
    XSI_AIS_BOX_JOB_INIT_SETTING store{};
    store.box_job_type = XSI_AIS_BOX_JOB_STORE;
    store.box_id = 1;
    EXPECT_EQ(XSI_AIS_JOB_PARAM_ERROR, job().xsi_ais_job_box_job_prepare(set, store)) << "the box's password";
    std::strcpy(store.box_pass, "pw");
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_box_job_prepare(set, store));
    jbrg_sim::job::set_pages(4);
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_BOX, set, service));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_kick(service, user_job));
    EXPECT_EQ(1U, jbrg_sim::box::box(1)->documents.size()) << "stored when the job ends";
    ASSERT_TRUE(jbrg_sim::job::finish(user_job));
    ASSERT_EQ(2U, jbrg_sim::box::box(1)->documents.size());
    EXPECT_EQ("doc" + std::to_string(user_job), jbrg_sim::box::box(1)->documents[1].name);
    EXPECT_EQ(4U, jbrg_sim::box::box(1)->documents[1].pages);

    // A direct print of a logged-in user's set is kept for quick copy under the user's name.
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo_bkg(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT, alice, set));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_set_value(set, XSI_AIS_JOB_SETTING_FILE_NAME, std::string("memo")));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_direct_print_prepare(set, XSI_AIS_JOB_STREAM_FILE_PDF));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_DIRECT_PRINT, set, service));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_kick(service, user_job));
    ASSERT_TRUE(jbrg_sim::job::finish(user_job));
    const auto kept = jbrg_sim::box::retained_documents();
    ASSERT_EQ(3U, kept.size());
    EXPECT_EQ("memo" + std::to_string(user_job), kept[2].name);
    EXPECT_EQ("Alice", kept[2].user_name);
    EXPECT_EQ(XSI_PBFS_BOX_DOC_TYPE_QUICK_COPY, kept[2].type);

    // The job service's background operations refuse a certificate without a login, changing nothing.
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY_COPY, set));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_start(XSI_AIS_JOB_CATEGORY_COPY, set, service));
    ASSERT_EQ(XSI_AIS_JOB_OK, job().xsi_ais_job_kick(service, user_job));
    ASSERT_EQ(XSI_AIS_AUTH_OK, xsi_ais_auth_facade::xsi_ais_auth_get_instance()->xsi_ais_auth_logout(alice));
    const std::size_t sets = jbrg_sim::job::jobinfos().size();
    unsigned int none = 0;
    EXPECT_EQ(XSI_AIS_JOB_LOGIN_ERROR,
              job().xsi_ais_job_generate_jobinfo_bkg(XSI_AIS_JOB_CATEGORY_COPY, alice, none));
    EXPECT_EQ(sets, jbrg_sim::job::jobinfos().size());
    EXPECT_EQ(XSI_AIS_JOB_LOGIN_ERROR, job().xsi_ais_job_cancel_bkg(service, user_job, alice));
    EXPECT_FALSE(jbrg_sim::job::user_job(user_job)->cancelled);
}

TEST_F(sim_box, scenarios_that_do_not_read_are_refused_and_change_nothing) {
    for (const char* bad : {R"({"boxes": {"colour": 1}})", R"({"boxes": {"user": [ {"name": "no number"} ]}})",
                            R"({"boxes": {"user": [ {"number": 1}, {"number": 1} ]}})",
                            R"({"boxes": {"space": 10, "user": [ {"number": 1, "capacity": 11} ]}})",
                            R"({"boxes": {"limit": 1, "user": [ {"number": 1}, {"number": 2} ]}})",
                            R"({"boxes": {"user": [ {"number": 1, "capacity": 1, "documents_generated": 1025} ]}})",
                            R"({"boxes": {"fax": [ {"number": 1, "documents": [ {"color": 5} ]} ]}})",
                            R"({"boxes": {"retained": [ {"type": 4} ]}})",
                            R"({"boxes": {"removable_memory": {"files": [ {"path": "/../x"} ]}}})",
                            R"({"boxes": {"removable_memory": {"files": [ {"path": "/d", "dir": true, "text": "t"} ]}}})"}) {
        EXPECT_THROW(jbrg_sim::load_scenario(bad), std::runtime_error) << bad;
    }
    EXPECT_EQ(4U, jbrg_sim::box::boxes().size());
    EXPECT_EQ(1U, jbrg_sim::box::fax_boxes().size());
    EXPECT_FALSE(jbrg_sim::box::removable_memory_folder().empty());
}

TEST_F(sim_box, a_box_added_at_run_time_takes_the_next_id_and_the_same_limits_as_the_panel) {
    jbrg_sim::box::box_info made;
    made.number = 7;
    made.name = "Run time";
    made.owner_login_name = "alice";
    made.password = "pw";
    made.capacity = 20;
    made.documents.resize(3);  // the device's to fill: ignored
    uint32_t id = jbrg_sim::box::add_box(made);
    EXPECT_EQ(6U, id) << "after the scenario's five boxes";
    std::optional<jbrg_sim::box::box_info> kept = jbrg_sim::box::box(id);
    ASSERT_TRUE(kept);
    EXPECT_EQ("Run time", kept->name);
    EXPECT_EQ("alice", kept->owner_login_name);
    EXPECT_TRUE(kept->documents.empty());
    EXPECT_FALSE(kept->fax);
    EXPECT_NE(0U, jbrg_sim::box::store_document(id, jbrg_sim::box::document{}));
    EXPECT_THAT(user_boxes(), ElementsAre("1:Alice's:10:1", "2::1:0", "3:Anyone:0:3", "4::50:0", "7:Run time:20:1"));

    jbrg_sim::box::box_info refused = made;
    refused.number = 8;
    refused.capacity = 0;
    EXPECT_EQ(0U, jbrg_sim::box::add_box(refused)) << "the box limit of 5 is reached";
    jbrg_sim::box::box_info fax;
    fax.fax = true;
    fax.number = 1;
    EXPECT_EQ(0U, jbrg_sim::box::add_box(fax)) << "fax box number 1 is taken";
    fax.number = 2;
    EXPECT_NE(0U, jbrg_sim::box::add_box(fax)) << "fax boxes count apart from user boxes";
    EXPECT_EQ(2U, jbrg_sim::box::fax_boxes().size());
}

TEST_F(sim_box, a_box_is_refused_without_a_number_over_the_space_or_with_a_text_too_long) {
    jbrg_sim::box::box_info b;
    EXPECT_EQ(0U, jbrg_sim::box::add_box(b)) << "number 0";
    b.number = 1;
    EXPECT_EQ(0U, jbrg_sim::box::add_box(b)) << "number 1 is taken";
    b.number = 9;
    b.capacity = 40;
    EXPECT_EQ(0U, jbrg_sim::box::add_box(b)) << "61 MB reserved of 100: 40 more do not fit";
    b.capacity = 0;
    b.password = std::string(XSI_PBFS_BOX_PW_SIZE, 'p');
    EXPECT_EQ(0U, jbrg_sim::box::add_box(b));
    b.password.clear();
    b.name = std::string(XSI_PBFS_BOX_NAME_SIZE, 'n');
    EXPECT_EQ(0U, jbrg_sim::box::add_box(b));
    EXPECT_THAT(user_boxes(), ElementsAre("1:Alice's:10:1", "2::1:0", "3:Anyone:0:3", "4::50:0"));
}

}  // namespace
