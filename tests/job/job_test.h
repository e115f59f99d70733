// What the job module's tests share: the simulated device they start with, and the job service's call log.
#ifndef JBRG_TESTS_JOB_JOB_TEST_H
#define JBRG_TESTS_JOB_JOB_TEST_H

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/cjvm.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"
#include "xsi_ais_auth.h"

namespace jbrg_test {

// The device every test of the job module starts with.
inline constexpr const char* kJobScenario = R"({
  "users": {"local": [ {"login_name": "operator", "password": "pw"} ]},
  "auth": {"first_certificate": 66},
  "job": {
    "defaults": {"copies": 2, "file_name": "scan"},
    "disable_info": {"color_mode": 18, "file_format": 65535},
    "main_message": {"main_msg_1": 301, "main_msg_3": 7, "msg_detail_filename": "toner.txt", "msg_detail_info": 9},
    "scan_pages": ["page one", "second page!"],
    "scan_chunk": 5,
    "prohibited_categories": [4],
    "ocr": [
      {"kind": "page", "page_no": 1, "sheet_width": 4960, "sheet_height": 7016, "page_block_num": 2, "block_num": 1,
       "rect": [10, 20, 300, 40], "line_num": 1},
      {"kind": "page", "page_no": 1, "block_num": 2, "line_num": 1},
      {"kind": "line", "page_no": 1, "block_no": 1, "line_no": 1, "rect": [10, 20, 120, 40], "text": "Invoice"},
      {"kind": "page", "page_no": 2, "block_num": 1, "line_num": 1},
      {"kind": "line", "page_no": 2, "block_no": 2, "line_no": 3, "rect": [5, 6, 7, 8], "text": "Total 42"}
    ]
  }
})";

class job_test : public bridge_test {
protected:
    std::string scenario() const override { return kJobScenario; }

    void SetUp() override {
        bridge_test::SetUp();
        // As the library's start-up does: the byte-array answers are built in the caller's environment.
        orvane::CJvm::CreateJVM();
    }

    // Logs the scenario's user in, as an application does before it acts for them (the job service's _bkg
    // operations take only a current login's certificate id): the certificate id, from 66 up.
    static dev_ulong login() {
        dev_ulong cert_id = 0;
        EXPECT_EQ(XSI_AIS_AUTH_OK, xsi_ais_auth_facade::xsi_ais_auth_get_instance()->xsi_ais_auth_account_login(
                                       "operator", "pw", XSI_AIS_AUTH_AUTHMODE_LOCAL, &cert_id));
        return cert_id;
    }

    // The job service's calls, each with its out-pointer arguments (which differ per run) written "*".
    static std::vector<std::string> job_calls() {
        std::vector<std::string> texts;
        for (const jbrg_sim::call& c : jbrg_sim::calls()) {
            if (c.op.rfind("xsi_ais_job_", 0) != 0) continue;
            std::string t = c.op + "(";
            for (std::size_t i = 0; i < c.args.size(); ++i) {
                t += (i ? ", " : "") + (c.args[i].rfind("0x", 0) == 0 ? std::string("*") : c.args[i]);
            }
            texts.push_back(t + ")");
        }
        return texts;
    }
};

}  // namespace jbrg_test

#endif  // JBRG_TESTS_JOB_JOB_TEST_H
