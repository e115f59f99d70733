// Web service reservations and certificate files through the web service module, and the inert charging
// interface: the Java side runs in jbrg.test.device_attr.WebServiceModule.
#include <gmock/gmock.h>

#include <string>

#include "jbrg_sim/control.h"
#include "jbrg_sim/webservice.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_webservice.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kJava = "jbrg/test/device_attr/WebServiceModule";

class webservice_module : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"webservice": {"unsupported": [3], "missing_certificates": [2]}})";
    }
};

TEST_F(webservice_module, one_application_at_a_time_holds_a_service) {
    run_java(kJava, "reservations");
    EXPECT_EQ("jbrg.b", jbrg_sim::webservice::reserved_by(XSI_PBFS_WEBSERVICE_KIND_WSD_SCAN));
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_webservice_reserve"), SizeIs(6))
        << "an empty or oversized application id never reaches the service";
    EXPECT_THAT(jbrg_sim::calls_of("xsi_pbfs_webservice_release"), SizeIs(2));
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty()) << "the proxy traces nothing";
}

TEST_F(webservice_module, certificate_paths_name_files_that_exist) { run_java(kJava, "certificates"); }

TEST_F(webservice_module, each_service_code_is_its_own_result_and_any_other_is_5) {
    for (uint32_t code : {0xC1010601u, 0xC1010602u, 0xC1010603u, 0xC1010604u, 0xC1010605u, 0xC1010606u,
                          0xC1010607u, 0xC1010608u, 0xC1020001u}) {
        jbrg_sim::force_result("xsi_pbfs_webservice_reserve", static_cast<int32_t>(code));
    }
    EXPECT_THAT(jbrg_test::java_texts(kJava, "forcedCodes"), ElementsAre("1", "2", "3", "4", "5", "6", "7", "5", "5"));
    EXPECT_EQ("", jbrg_sim::webservice::reserved_by(XSI_PBFS_WEBSERVICE_KIND_WSD_SCAN));
}

TEST_F(webservice_module, charging_accepts_every_call_and_asks_the_device_nothing) {
    run_java(kJava, "charge");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

}  // namespace
