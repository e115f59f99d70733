// The document box module against the simulated device: user boxes, their documents, job-retention
// documents, fax boxes and the removable memory, driven from Java (tests/java/jbrg/test/box/BoxModule.java)
// and, where the platform's answers are forced, through the managers directly; with the platform calls and
// trace lines each leaves.
#include <gmock/gmock.h>

#include <cstring>
#include <fstream>
#include <string>

#include "box/box_result.h"
#include "box/qsf_fnd_document_manager.h"
#include "box/qsf_fnd_user_box_manager.h"
#include "core/cjvm.h"
#include "jbrg_sim/box.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_box.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using jbrg_test::traces_containing;
using orvane::qsf_fnd_user_box_manager;

constexpr const char* kJava = "jbrg/test/box/BoxModule";

std::string signed_text(uint32_t code) { return std::to_string(static_cast<int32_t>(code)); }

class box_module : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"users": {"local": [ {"login_name": "alice", "password": "wonder", "rights": 1} ]},
                   "boxes": {"removable_memory": {"files": [ {"path": "/a.pdf", "text": "hello"},
                                                             {"path": "/scans", "dir": true} ]}}})";
    }
    void SetUp() override {
        bridge_test::SetUp();
        orvane::CJvm::CreateJVM();
    }
    void TearDown() override {
        // Whatever a test did, every listing it opened was finished and every buffer given back.
        EXPECT_EQ(0U, jbrg_sim::box::open_listings());
        EXPECT_EQ(0U, jbrg_sim::blocks_in_use());
        bridge_test::TearDown();
    }
    qsf_fnd_user_box_manager& boxes() { return *qsf_fnd_user_box_manager::qsf_fnd_get_instance(); }

    // A box made through the platform, as another application of the device would make it; its id.
    uint32_t make_box(uint32_t number, const char* password) {
        XSI_PBFS_BOX_DETAIL_INFO info{};
        info.box_common_info.box_num = number;
        std::snprintf(info.box_common_info.box_name, sizeof info.box_common_info.box_name, "Box %u", number);
        std::strcpy(info.box_pw, password);
        auto& facade = *xsi_pbfs_box_facade::xsi_pbfs_box_get_instance();
        EXPECT_EQ(XSI_PBFS_BOX_OK, facade.xsi_pbfs_box_add_box(info));
        for (const auto& b : jbrg_sim::box::boxes()) {
            if (b.number == number) return b.box_id;
        }
        return 0;
    }
    // A static int method of the Java side, with its arguments.
    template <class... A>
    int call_int(const char* method, const char* signature, A... args) {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass(kJava);
        int r = e->CallStaticIntMethod(c, e->GetStaticMethodID(c, method, signature), args...);
        EXPECT_EQ("", take_exception());
        return r;
    }
};

TEST_F(box_module, boxes_are_added_listed_and_described_one_entry_a_get) {
    run_java(kJava, "boxesAreAddedListedAndDescribed");
    auto prepares = jbrg_sim::calls_of("xsi_pbfs_box_get_box_info_prepare");
    ASSERT_FALSE(prepares.empty());
    EXPECT_EQ("1", prepares.back().args[0]) << "one box a get";
    EXPECT_THAT(traces_containing("qsf_fnd_get_user_box_list,"),
                Contains(HasSubstr("count=(2), total_num=(3), get_num=(1)")));
    EXPECT_THAT(traces_containing("total_num == 0."), Contains(HasSubstr("::qsf_fnd_get_user_box_list,")));
    EXPECT_THAT(traces_containing("qsf_fnd_get_user_box_detail_info,result("),
                ElementsAre(HasSubstr("=XSI_PBFS_BOX_BOX_PASSWORD_ERROR"),
                            HasSubstr("=XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR")));
    EXPECT_EQ(3U, jbrg_sim::box::boxes().size());
}

TEST_F(box_module, failed_changes_answer_their_code_and_change_nothing) {
    run_java(kJava, "failedChangesChangeNothing");
    // The two descriptions whose texts do not fit never reached the device.
    EXPECT_EQ(3U, jbrg_sim::calls_of("xsi_pbfs_box_add_box").size());
    EXPECT_THAT(traces_containing("too long."), ElementsAre(HasSubstr("box_name too long."), HasSubstr("box_pw too long.")));
    EXPECT_THAT(traces_containing("qsf_fnd_add_box,result("),
                ElementsAre(HasSubstr("result(" + signed_text(0xC1010C0C) + ")=XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR"),
                            HasSubstr("=XSI_PBFS_BOX_BOX_CAPACITY_FULL")));
    EXPECT_THAT(traces_containing("qsf_fnd_delete_box,[Enter]"),
                Contains(HasSubstr("[Enter]. box_id=(999), passwd=()")));
    EXPECT_THAT(jbrg_sim::box::boxes(), IsEmpty());
}

TEST_F(box_module, certificate_forms_act_for_the_login_and_a_stale_one_changes_nothing) {
    run_java(kJava, "certificateForms");
    auto adds = jbrg_sim::calls_of("xsi_pbfs_box_add_box_bkg");
    ASSERT_EQ(2U, adds.size());
    const std::string cert = adds[0].args[1];
    EXPECT_THAT(traces_containing("qsf_fnd_delete_box,[Enter]"),
                ElementsAre(HasSubstr("passwd=(), cert_id=(" + cert + ")")));
    EXPECT_THAT(traces_containing("qsf_fnd_get_user_box_detail_info,"),
                Contains(HasSubstr("box capacity=(10)")));
    EXPECT_THAT(traces_containing("=XSI_PBFS_BOX_LOGIN_ERROR"), testing::SizeIs(4));
    EXPECT_EQ(1U, jbrg_sim::box::boxes().size());
}

TEST_F(box_module, each_operation_tells_apart_only_the_codes_it_knows) {
    uint32_t id = make_box(1, "");
    orvane::QSF_FND_BOX_DETAIL_INFO info;
    info.box_number = 2;
    struct forced {
        const char* op;
        uint32_t code;
        std::function<int()> call;
        int expected;
    } cases[] = {
        {"xsi_pbfs_box_add_box", 0xC1010C07, [&] { return boxes().qsf_fnd_add_box(info); }, 1},
        {"xsi_pbfs_box_add_box", 0xC1010C10, [&] { return boxes().qsf_fnd_add_box(info); }, 1},
        {"xsi_pbfs_box_add_box", 0xC1010C0B, [&] { return boxes().qsf_fnd_add_box(info); }, 5},
        {"xsi_pbfs_box_add_box_bkg", 0xC1010C10, [&] { return boxes().qsf_fnd_add_box(info, 7); }, 9},
        {"xsi_pbfs_box_update_box_info", 0xC1010C0B, [&] { return boxes().qsf_fnd_update_box(id, "", info); }, 1},
        {"xsi_pbfs_box_update_box_info", 0xC1010C0C, [&] { return boxes().qsf_fnd_update_box(id, "", info); }, 4},
        {"xsi_pbfs_box_delete_box", 0xC1010C10, [&] { return boxes().qsf_fnd_delete_box(id, ""); }, 1},
        {"xsi_pbfs_box_delete_box", 0xC1010C0D, [&] { return boxes().qsf_fnd_delete_box(id, ""); }, 1},
        {"xsi_pbfs_box_delete_document_bkg", 0xC1010C08,
         [&] { return orvane::qsf_fnd_document_manager::qsf_fnd_get_instance()->qsf_fnd_delete_document(id, "", 1, 7); },
         7},
        {"xsi_pbfs_box_delete_easy_document", 0xC1010C09,
         [&] { return orvane::qsf_fnd_document_manager::qsf_fnd_get_instance()->qsf_fnd_delete_document("/x"); }, 8},
    };
    for (const forced& c : cases) {
        jbrg_sim::force_result(c.op, PLAT_CODE(c.code));
        EXPECT_EQ(c.expected, c.call()) << c.op << " answering " << std::hex << c.code;
    }
    EXPECT_THAT(traces_containing("=UNKNOWN"), testing::SizeIs(5));
    jbrg_sim::force_result("xsi_pbfs_box_get_box_available_capacity", PLAT_CODE(0xC1010C01));
    EXPECT_EQ(0U, boxes().qsf_fnd_get_user_box_available_space());
    EXPECT_EQ(1U, jbrg_sim::box::boxes().size());
}

TEST_F(box_module, a_listing_that_fails_midway_gives_nothing_and_still_finishes) {
    make_box(1, "");
    make_box(2, "");
    JNIEnv* e = jbrg_test::env();
    // The device cannot open the listing: nothing to finish.
    jbrg_sim::force_result("xsi_pbfs_box_get_box_info_prepare", PLAT_CODE(0xC1010C05));
    EXPECT_EQ(nullptr, boxes().qsf_fnd_get_user_box_list());
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_box_get_box_info_finish"), IsEmpty());
    // A get that fails: no partial list. No buffer: the same.
    jbrg_sim::force_result("xsi_pbfs_box_get_box_list_info", PLAT_CODE(0xC1010C01));
    EXPECT_EQ(nullptr, boxes().qsf_fnd_get_user_box_list());
    jbrg_sim::force_result("emwOSWSubAllocMem", 1);
    EXPECT_EQ(nullptr, boxes().qsf_fnd_get_user_box_list());
    EXPECT_THAT(traces_containing("box_list_info == NULL."), testing::SizeIs(1));
    // A get that hands back nothing still counts as one of the total's gets.
    jbrg_sim::force_out("xsi_pbfs_box_get_box_list_info", "get_num", "0");
    jobject list = boxes().qsf_fnd_get_user_box_list();
    ASSERT_NE(nullptr, list);
    jclass array_list = e->FindClass("java/util/ArrayList");
    EXPECT_EQ(1, e->CallIntMethod(list, e->GetMethodID(array_list, "size", "()I")));
    EXPECT_EQ(1U + 2U, jbrg_sim::calls_of("xsi_pbfs_box_get_box_list_info").size());
    EXPECT_EQ(3U, jbrg_sim::calls_of("xsi_pbfs_box_get_box_info_finish").size());
}

TEST_F(box_module, documents_come_back_as_objects_with_their_own_size_table) {
    uint32_t id = make_box(1, "1234");
    auto doc = [&](const char* name, int32_t resolution, int32_t kind, uint8_t code) {
        jbrg_sim::box::document d;
        d.name = name;
        d.pages = 3;
        d.resolution = resolution;
        d.pages_size = kind;
        d.size_code = code;
        d.color = 3;
        d.date = 1697321600;
        d.data_size = 2048;
        ASSERT_NE(0U, jbrg_sim::box::store_document(id, d));
    };
    doc("scan-1", 6, 1, 31);
    doc("scan-2", 6, 1, 24);
    doc("scan-3", 6, 2, 0);
    doc("scan-4", 0, 1, 255);
    run_java(kJava, "documentsComeBackAsObjects");
    // Code 24 is no size of a box document and is traced; 255 is a known unknown.
    EXPECT_THAT(traces_containing("switch default"), ElementsAre(HasSubstr("::set_field_storing_size,")));
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_box_get_document_info_prepare")[0].args,
                ElementsAre(std::to_string(id), "1234", "1", testing::_, testing::_));
    EXPECT_THAT(traces_containing("qsf_fnd_delete_document,[Enter]"),
                Contains(HasSubstr("[Enter]. box_id=(" + std::to_string(id) + "), passwd=(1234), doc_id=(")));
    EXPECT_EQ(3U, jbrg_sim::box::box(id)->documents.size());
}

TEST_F(box_module, ten_thousand_documents_and_a_thousand_boxes_list_in_one_entry_of_memory) {
    uint32_t id = make_box(1, "");
    jbrg_sim::box::document d;
    for (int i = 0; i < 10000; ++i) {
        d.name = "doc-" + std::to_string(i);
        ASSERT_NE(0U, jbrg_sim::box::store_document(id, d));
    }
    jbrg_sim::clear_calls();
    EXPECT_EQ(10000, call_int("listAll", "(J)I", static_cast<jlong>(id)));
    EXPECT_EQ(10000U, jbrg_sim::calls_of("xsi_pbfs_box_get_document_info").size());
    // One buffer of one entry for the whole listing.
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWSubAllocMem"), ElementsAre(testing::Field(&jbrg_sim::call::args,
                                                                                     ElementsAre("292"))));
    for (uint32_t n = 2; n <= 1000; ++n) make_box(n, "");
    EXPECT_EQ(1000, call_int("boxCount", "()I"));
}

TEST_F(box_module, retained_print_jobs_are_read_a_hundred_a_get) {
    for (int i = 0; i < 250; ++i) {
        jbrg_sim::box::retained_document r;
        r.type = 0;
        r.name = "job-" + std::to_string(i);
        r.user_name = "carol";
        r.pages = 2;
        r.resolution = 4;
        r.pages_size = 1;
        r.size_code = 31;
        r.data_size = 1000;
        if (i == 249) r.password = "pin";
        ASSERT_NE(0U, jbrg_sim::box::retain_document(r));
    }
    run_java(kJava, "retainedPrintJobs");
    EXPECT_EQ(3U, jbrg_sim::calls_of("xsi_pbfs_box_get_job_retention_doc_list").size());
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_box_get_job_retention_doc_list_prepare")[0].args,
                ElementsAre("0", "100", testing::_, testing::_));
    EXPECT_THAT(traces_containing("qsf_fnd_job_document_manager"), IsEmpty()) << "the job documents trace nothing";
    EXPECT_EQ(249U, jbrg_sim::box::retained_documents().size());
}

TEST_F(box_module, fax_boxes_are_read_fifty_a_get) {
    run_java(kJava, "faxBoxes120");
    EXPECT_EQ(3U, jbrg_sim::calls_of("xsi_pbfs_box_get_fax_box_list").size());
    EXPECT_EQ("50", jbrg_sim::calls_of("xsi_pbfs_box_get_fax_box_list_prepare")[0].args[0]);
    EXPECT_EQ("100", jbrg_sim::calls_of("xsi_pbfs_box_get_fax_document_list_prepare")[0].args[2]);
    EXPECT_EQ(119U, jbrg_sim::box::fax_boxes().size());
}

TEST_F(box_module, removable_memory_files_are_listed_and_deleted) {
    run_java(kJava, "removableMemory");
    EXPECT_THAT(traces_containing("qsf_fnd_get_easy_box_list,"), Contains(HasSubstr("[Enter] path = [/]")));
    EXPECT_THAT(traces_containing("qsf_fnd_delete_document,"),
                Contains(HasSubstr("result(" + signed_text(0xC1010C09) + ")=XSI_PBFS_BOX_PATH_ERROR")));
    EXPECT_FALSE(std::ifstream(jbrg_sim::box::removable_memory_folder() + "/a.pdf").good());
}

TEST_F(box_module, describers_java_makes_set_only_objects_of_their_class) {
    run_java(kJava, "describersRefuseForeignObjects");
}

}  // namespace
