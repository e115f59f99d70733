// The application management proxy against the simulated device: the application list as Java AppInfo
// objects and the library list through the xamf_amo module, details, start, stop, the answers to the
// service's requests, the basis state and the singleton.
#include <gmock/gmock.h>

#include <string>
#include <thread>
#include <vector>

#include "appinfo/xamf_amo_proxy.h"
#include "core/cjvm.h"
#include "jbrg_sim/apps.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xam_ads.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using jbrg_test::traces_containing;
using orvane::xamf_amo_proxy;

const std::string kLong256(256, 'L');

const std::string kDevice = R"({
  "apps": {"installed": [
    {"id": "com.example.scan", "name": "Scan", "names": {"0": "Sukyan"}, "version": "1.2.0", "state": 0,
     "button_label": "Scan!", "vendor": "Example", "category": 7, "icon_path": "/i.png", "area": 4,
     "path": "/apps/scan", "top_url": "http://t", "app_file": "scan.jar", "login_url": "http://l",
     "pc_cfg_url": "http://p", "menu_url": "http://m", "libraries": ["lib/a.jar", ")" + kLong256 + R"("]},
    {"id": "com.example.print", "name": "Print", "version": "2.0", "state": 1, "area": 7},
    {"id": "com.example.fax", "name": "Fax", "version": "0.9", "state": 2, "detail_state": 2},
    {"id": "com.example.odd", "name": "Odd", "version": "9", "state": 5, "detail_state": 7},
    {"id": "native.tool", "name": "Tool", "type": 2}
  ]}
})";

class app_proxy : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override { return kDevice; }
    void SetUp() override {
        bridge_test::SetUp();
        orvane::CJvm::CreateJVM();
        module_ = jbrg_test::env()->FindClass("orvane/qsf/wrapper/appinfo/xamf_amoJNI");
        ASSERT_NE(nullptr, module_);
    }

    // The singleton's handle as Java holds it.
    jlong instance() {
        JNIEnv* e = jbrg_test::env();
        jmethodID m = e->GetStaticMethodID(module_, "xamf_amo_proxy_xamf_amo_get_instance", "()J");
        jlong h = e->CallStaticLongMethod(module_, m);
        EXPECT_EQ("", take_exception());
        return h;
    }
    jint list_apps(jobject list, jint lang) {
        JNIEnv* e = jbrg_test::env();
        jmethodID m = e->GetStaticMethodID(module_, "xamf_amo_proxy_xamf_amo_get_application_list",
                                           "(JLjava/lang/Object;Ljava/lang/Object;I)I");
        jint r = e->CallStaticIntMethod(module_, m, instance(), nullptr, list, lang);
        EXPECT_EQ("", take_exception());
        return r;
    }
    jint libraries(const char* app_id, jobject holder) {
        JNIEnv* e = jbrg_test::env();
        jmethodID m = e->GetStaticMethodID(module_, "xamf_amo_proxy_xamf_amo_get_library_list",
                                           "(JLjava/lang/Object;Ljava/lang/String;Ljava/lang/Object;)I");
        jstring id = app_id ? e->NewStringUTF(app_id) : nullptr;
        jint r = e->CallStaticIntMethod(module_, m, instance(), nullptr, id, holder);
        EXPECT_EQ("", take_exception());
        return r;
    }
    jobject new_list() {
        JNIEnv* e = jbrg_test::env();
        jclass c = e->FindClass("java/util/ArrayList");
        return e->NewObject(c, e->GetMethodID(c, "<init>", "()V"));
    }
    std::vector<std::string> app_infos(jobject list) {
        JNIEnv* e = jbrg_test::env();
        jclass lc = e->FindClass("java/util/ArrayList");
        jint n = e->CallIntMethod(list, e->GetMethodID(lc, "size", "()I"));
        EXPECT_EQ("", take_exception());
        std::vector<std::string> out;
        for (jint i = 0; i < n; ++i) {
            jobject o = e->CallObjectMethod(list, e->GetMethodID(lc, "get", "(I)Ljava/lang/Object;"), i);
            EXPECT_EQ("", take_exception());
            jclass ac = e->FindClass("orvane/qsf/app/info/AppInfo");
            EXPECT_TRUE(e->IsInstanceOf(o, ac));
            auto str = [&](const char* f) {
                auto s = static_cast<jstring>(e->GetObjectField(o, e->GetFieldID(ac, f, "Ljava/lang/String;")));
                return s ? text(s) : std::string("null");
            };
            jint status = e->GetIntField(o, e->GetFieldID(ac, "executionStatus", "I"));
            out.push_back(str("appID") + "|" + str("appName") + "|" + str("version") + "|" + std::to_string(status));
        }
        return out;
    }

    jclass module_ = nullptr;
};

TEST_F(app_proxy, the_singleton_is_made_once_under_the_platform_locks) {
    jbrg_sim::clear_calls();
    xamf_amo_proxy* first = xamf_amo_proxy::xamf_amo_get_instance();
    std::vector<std::string> made = jbrg_sim::call_texts();
    // Made here unless an earlier test of this process made it: then nothing is locked at all.
    if (!made.empty()) {
        EXPECT_THAT(made, ElementsAre("OSW_Thread_Guard()", "OSW_Mutex_Semaphore(1)", "OSW_Guard()"));
    }
    std::vector<xamf_amo_proxy*> seen(8);
    std::vector<std::thread> threads;
    for (auto& s : seen) threads.emplace_back([&s] { s = xamf_amo_proxy::xamf_amo_get_instance(); });
    for (auto& t : threads) t.join();
    for (auto* s : seen) EXPECT_EQ(first, s);
    EXPECT_EQ(made, jbrg_sim::call_texts()) << "a made instance is returned without locking";
    EXPECT_EQ(reinterpret_cast<jlong>(first) & 0xFFFFFFFFLL, instance() & 0xFFFFFFFFLL);
}

TEST_F(app_proxy, the_application_list_arrives_as_app_info_objects) {
    jobject list = new_list();
    EXPECT_EQ(0, list_apps(list, 0));
    // Java applications only, names in the language asked for; list states 0 -> 1, 1 -> 2, anything else -> 3.
    EXPECT_THAT(app_infos(list), ElementsAre("com.example.scan|Sukyan|1.2.0|1", "com.example.print|Print|2.0|2",
                                             "com.example.fax|Fax|0.9|3", "com.example.odd|Odd|9|3"));
    EXPECT_THAT(jbrg_sim::calls_of("xam_ads_get_app_num_info")[0].args, ElementsAre("1", MatchesRegex("0x.*")));
    EXPECT_THAT(jbrg_sim::calls_of("xam_ads_get_app_list")[0].args,
                ElementsAre("1", "0", "4", MatchesRegex("0x.*"), MatchesRegex("0x.*"), "0", "0"));
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWSubAllocMem")[0].args, ElementsAre(std::to_string(4 * 228)));
    EXPECT_EQ(0U, jbrg_sim::blocks_in_use());
    EXPECT_THAT(traces_containing("::xamf_amo_get_application_list,"),
                ElementsAre(HasSubstr("[Enter]"), HasSubstr("[Pass through] Information acquisition completion."),
                            HasSubstr("[Exit]")));
}

// The class references are the class's: a proxy Java makes and deletes deletes them and forgets them, and the
// singleton's next list looks them up again instead of using a deleted reference (which ends the VM).
TEST_F(app_proxy, a_proxy_java_deletes_leaves_the_singleton_a_working_list) {
    JNIEnv* e = jbrg_test::env();
    jobject warm = new_list();
    ASSERT_EQ(0, list_apps(warm, 0));
    jmethodID make = e->GetStaticMethodID(module_, "new_xamf_amo_proxy", "()J");
    jmethodID drop = e->GetStaticMethodID(module_, "delete_xamf_amo_proxy", "(J)V");
    jlong made = e->CallStaticLongMethod(module_, make);
    ASSERT_EQ("", take_exception());
    e->CallStaticVoidMethod(module_, drop, made);
    ASSERT_EQ("", take_exception());
    jobject list = new_list();
    EXPECT_EQ(0, list_apps(list, 0));
    EXPECT_EQ(4U, app_infos(list).size());
}

TEST_F(app_proxy, an_empty_device_still_asks_for_the_list_and_adds_nothing) {
    jbrg_sim::force_out("xam_ads_get_app_num_info", "num", "0");
    jobject list = new_list();
    EXPECT_EQ(0, list_apps(list, 1));
    EXPECT_TRUE(app_infos(list).empty());
    ASSERT_EQ(1U, jbrg_sim::calls_of("xam_ads_get_app_list").size());
    EXPECT_EQ("0", jbrg_sim::calls_of("xam_ads_get_app_list")[0].args[2]);
    EXPECT_EQ(0U, jbrg_sim::blocks_in_use());
}

TEST_F(app_proxy, list_failures_free_the_buffer_and_answer_one) {
    jbrg_sim::force_result("xam_ads_get_app_list", XAM_ADS_RESULT_ERR);
    jobject list = new_list();
    EXPECT_EQ(1, list_apps(list, 1));
    EXPECT_EQ(0U, jbrg_sim::blocks_in_use());
    EXPECT_THAT(traces_containing("::xamf_amo_get_application_list,"),
                ElementsAre(HasSubstr("[Enter]"), HasSubstr(",[Exit] ret=-1040121855\n")));

    jbrg_sim::clear_calls();
    jbrg_sim::force_result("xam_ads_get_app_num_info", XAM_ADS_RESULT_ERR);
    EXPECT_EQ(1, list_apps(list, 1));
    EXPECT_TRUE(jbrg_sim::calls_of("xam_ads_get_app_list").empty());

    jbrg_sim::force_result("emwOSWSubAllocMem", 1);
    EXPECT_EQ(1, list_apps(list, 1));
    EXPECT_THAT(traces_containing("app_list == NULL."), ::testing::SizeIs(1));
    EXPECT_TRUE(app_infos(list).empty());
}

TEST_F(app_proxy, the_list_must_be_an_array_list_before_the_device_is_asked) {
    jbrg_sim::clear_calls();
    EXPECT_EQ(1, list_apps(nullptr, 1));
    EXPECT_EQ(1, list_apps(jbrg_test::env()->NewStringUTF("not a list"), 1));
    EXPECT_TRUE(jbrg_sim::calls_of("xam_ads_get_app_num_info").empty());
}

TEST_F(app_proxy, details_convert_states_and_areas_and_unknown_applications_answer_three) {
    xamf_amo_proxy& p = *xamf_amo_proxy::xamf_amo_get_instance();
    orvane::XAMF_AMO_APP_DETAIL_INFO info;
    ASSERT_EQ(0, p.xamf_amo_get_application_detail_info("com.example.scan", info, ENV_LANG_JAPANESE));
    EXPECT_EQ("Sukyan", info.app_name);
    EXPECT_EQ("Scan!", info.button_label);
    EXPECT_EQ("Example", info.vendor_name);
    EXPECT_EQ(7, info.category);
    EXPECT_EQ("/i.png", info.icon_path);
    EXPECT_EQ(1, info.execution_status);   // detail state 0 -> 1
    EXPECT_EQ(5, info.installed_app_area);  // area 4 -> 5
    EXPECT_EQ("/apps/scan", info.installed_app_path);
    EXPECT_EQ("scan.jar", info.app_file);
    EXPECT_EQ("http://p", info.pc_cfg_url);
    EXPECT_EQ("http://m", info.menu_url);
    EXPECT_THAT(jbrg_sim::calls_of("xam_ads_get_app_info_detail")[0].args,
                ElementsAre("com.example.scan", MatchesRegex("0x.*"), "0"));

    ASSERT_EQ(0, p.xamf_amo_get_application_detail_info("com.example.print", info, 1));
    EXPECT_EQ(2, info.execution_status);   // detail state 1 -> 2
    EXPECT_EQ(0, info.installed_app_area);  // area 7 -> 0

    ASSERT_EQ(0, p.xamf_amo_get_application_detail_info("com.example.fax", info, 1));
    EXPECT_EQ(3, info.execution_status);   // 2 -> 3
    ASSERT_EQ(0, p.xamf_amo_get_application_detail_info("com.example.odd", info, 1));
    EXPECT_EQ(1, info.execution_status);   // 7 -> 1, where the list says 3

    EXPECT_EQ(3, p.xamf_amo_get_application_detail_info("com.example.none", info, 1));
    jbrg_sim::force_result("xam_ads_get_app_info_detail", XAM_ADS_RESULT_STATE);
    EXPECT_EQ(1, p.xamf_amo_get_application_detail_info("com.example.scan", info, 1));
    EXPECT_EQ(1, xamf_amo_proxy::convert_retcode(PLAT_CODE(0xC2019999)));
    EXPECT_EQ(0, xamf_amo_proxy::convert_retcode(0));
}

TEST_F(app_proxy, libraries_arrive_as_a_string_array_in_element_zero_of_the_holder) {
    JNIEnv* e = jbrg_test::env();
    jclass object = e->FindClass("java/lang/Object");
    jobjectArray holder = e->NewObjectArray(1, object, nullptr);
    ASSERT_EQ(0, libraries("com.example.scan", holder));
    auto names = static_cast<jobjectArray>(e->GetObjectArrayElement(holder, 0));
    ASSERT_EQ(2, e->GetArrayLength(names));
    EXPECT_EQ("lib/a.jar", text(static_cast<jstring>(e->GetObjectArrayElement(names, 0))));
    EXPECT_EQ(kLong256, text(static_cast<jstring>(e->GetObjectArrayElement(names, 1))));
    EXPECT_THAT(jbrg_sim::calls_of("emwOSWSubAllocMem")[0].args, ElementsAre("514"));
    EXPECT_THAT(jbrg_sim::calls_of("xam_ads_get_library_list")[0].args,
                ElementsAre("com.example.scan", "2", MatchesRegex("0x.*")));
    EXPECT_THAT(traces_containing("get_library_list lib_list[0] = lib/a.jar"), ::testing::SizeIs(1));
    EXPECT_EQ(0U, jbrg_sim::blocks_in_use());

    // No libraries: an empty String[], and the device is not asked for the list.
    ASSERT_EQ(0, libraries("com.example.print", holder));
    names = static_cast<jobjectArray>(e->GetObjectArrayElement(holder, 0));
    ASSERT_NE(nullptr, names);
    EXPECT_EQ(0, e->GetArrayLength(names));
    EXPECT_TRUE(e->IsInstanceOf(names, e->FindClass("[Ljava/lang/String;")));
    EXPECT_EQ(1U, jbrg_sim::calls_of("xam_ads_get_library_list").size());
}

TEST_F(app_proxy, library_failures_and_unusable_holders_answer_one) {
    JNIEnv* e = jbrg_test::env();
    jbrg_sim::clear_calls();
    EXPECT_EQ(1, libraries("com.example.scan", nullptr));
    EXPECT_EQ(1, libraries("com.example.scan", e->NewStringUTF("x")));
    EXPECT_EQ(1, libraries("com.example.scan", e->NewObjectArray(0, e->FindClass("java/lang/Object"), nullptr)));
    EXPECT_EQ(1, libraries(nullptr, e->NewObjectArray(1, e->FindClass("java/lang/Object"), nullptr)));
    EXPECT_TRUE(jbrg_sim::calls_of("xam_ads_get_library_num").empty());
    // A String[] cannot hold a String[]: refused after the fact, nothing pending, the buffer freed.
    EXPECT_EQ(1, libraries("com.example.scan", e->NewObjectArray(1, e->FindClass("java/lang/String"), nullptr)));
    EXPECT_EQ(0U, jbrg_sim::blocks_in_use());

    jobjectArray holder = e->NewObjectArray(1, e->FindClass("java/lang/Object"), nullptr);
    EXPECT_EQ(1, libraries("com.example.none", holder));
    jbrg_sim::force_result("xam_ads_get_library_list", XAM_ADS_RESULT_ERR);
    EXPECT_EQ(1, libraries("com.example.scan", holder));
    EXPECT_EQ(nullptr, e->GetObjectArrayElement(holder, 0));
    EXPECT_EQ(0U, jbrg_sim::blocks_in_use());
}

TEST_F(app_proxy, start_and_stop_fail_only_on_the_general_failure) {
    xamf_amo_proxy& p = *xamf_amo_proxy::xamf_amo_get_instance();
    EXPECT_EQ(0, p.xamf_amo_start_app("com.example.scan"));
    EXPECT_EQ(1, jbrg_sim::apps::app("com.example.scan")->list_state);
    // Starting it again is refused by the device (0xC201000C) and still reported as success.
    EXPECT_EQ(0, p.xamf_amo_start_app("com.example.scan"));
    EXPECT_EQ(0, p.xamf_amo_start_app("com.example.none"));
    jbrg_sim::force_result("xam_ads_start_app", XAM_ADS_RESULT_ERR);
    EXPECT_EQ(1, p.xamf_amo_start_app("com.example.fax"));
    EXPECT_THAT(traces_containing("ret=XAM_ADS_RESULT_ERR"), ::testing::SizeIs(1));

    EXPECT_EQ(0, p.xamf_amo_stop_app("com.example.scan"));
    EXPECT_EQ(0, jbrg_sim::apps::app("com.example.scan")->list_state);
    jbrg_sim::force_result("xam_ads_stop_app", XAM_ADS_RESULT_ERR);
    EXPECT_EQ(1, p.xamf_amo_stop_app("com.example.print"));

    EXPECT_EQ(0, p.xamf_amo_set_config_url("com.example.print", "http://cfg"));
    EXPECT_EQ("http://cfg", jbrg_sim::apps::app("com.example.print")->config_url);
    EXPECT_THAT(traces_containing("config_url=[http://cfg]"),
                ElementsAre(HasSubstr("[Enter] app_id=[com.example.print] config_url=[http://cfg]")));
    jbrg_sim::force_result("xam_ads_set_config_url", XAM_ADS_RESULT_ERR);
    EXPECT_EQ(1, p.xamf_amo_set_config_url("com.example.print", "http://cfg"));

    // A missing application id never reaches the device.
    jbrg_sim::clear_calls();
    EXPECT_EQ(1, p.xamf_amo_start_app(nullptr));
    EXPECT_EQ(1, p.xamf_amo_stop_app(nullptr));
    EXPECT_EQ(1, p.xamf_amo_set_config_url("com.example.print", nullptr));
    EXPECT_TRUE(jbrg_sim::calls().empty());
}

TEST_F(app_proxy, results_are_converted_by_the_table_and_always_answer_zero) {
    xamf_amo_proxy& p = *xamf_amo_proxy::xamf_amo_get_instance();
    EXPECT_EQ(0, p.xamf_amo_notify_run_app_result("a", orvane::XAMF_AMO_RET_STATE));
    EXPECT_EQ(0, p.xamf_amo_notify_terminate_app_result("b", orvane::XAMF_AMO_RET_OK));
    EXPECT_EQ(0, p.xamf_amo_notify_open_window_result("c", orvane::XAMF_AMO_RET_NO_APP));
    EXPECT_EQ(0, p.xamf_amo_notify_close_window_result("d", orvane::XAMF_AMO_RET_ERR));
    // Values outside the table become the general failure; the device's own refusal is not looked at.
    EXPECT_EQ(0, p.xamf_amo_notify_run_app_result("e", static_cast<orvane::XAMF_AMO_RETCODE>(4)));
    EXPECT_EQ(0, p.xamf_amo_notify_run_app_result("f", static_cast<orvane::XAMF_AMO_RETCODE>(-1)));
    jbrg_sim::force_result("xam_ads_notify_run_app_result", XAM_ADS_RESULT_ERR);
    EXPECT_EQ(0, p.xamf_amo_notify_run_app_result("g", orvane::XAMF_AMO_RET_OK));
    std::vector<std::string> got;
    for (const auto& r : jbrg_sim::apps::results()) got.push_back(r.request + ":" + r.app_id + ":" + std::to_string(r.code));
    EXPECT_THAT(got, ElementsAre("run_app:a:" + std::to_string(PLAT_CODE(0xC201000C)), "terminate_app:b:0",
                                 "open_window:c:" + std::to_string(PLAT_CODE(0xC2010009)),
                                 "close_window:d:" + std::to_string(PLAT_CODE(0xC2010001)),
                                 "run_app:e:" + std::to_string(PLAT_CODE(0xC2010001)),
                                 "run_app:f:" + std::to_string(PLAT_CODE(0xC2010001))));
}

TEST_F(app_proxy, the_basis_is_ready_only_for_state_two) {
    xamf_amo_proxy& p = *xamf_amo_proxy::xamf_amo_get_instance();
    jbrg_sim::clear_calls();  // the singleton's creation, when this test is the first to ask for it
    EXPECT_EQ(0, p.xamf_amo_notify_ovpl_basis_state(orvane::XAMF_AMO_OVPL_BASIS_READY));
    EXPECT_EQ(1, jbrg_sim::apps::basis_state());
    EXPECT_EQ(0, p.xamf_amo_notify_ovpl_basis_state(orvane::XAMF_AMO_OVPL_BASIS_STARTING));
    EXPECT_EQ(0, jbrg_sim::apps::basis_state());
    EXPECT_EQ(0, p.xamf_amo_notify_ovpl_basis_state(static_cast<orvane::XAMF_AMO_OVPL_BASIS_STATE>(99)));
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre("xam_ads_notify_ovpl_basis_state(1, 1)", "xam_ads_notify_ovpl_basis_state(1, 0)",
                            "xam_ads_notify_ovpl_basis_state(1, 0)"));
}

}  // namespace
