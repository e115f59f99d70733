// What a scenario that does not read is told: the JSON pointer of the offending value in the file, then why.
#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "jbrg_sim/apps.h"
#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"

namespace {

class sim_scenario_paths : public jbrg_test::bridge_test {
protected:
    // The message of the load's refusal, or "loaded" when it read.
    static std::string refusal(const std::string& text) {
        try {
            jbrg_sim::load_scenario(text);
        } catch (const std::runtime_error& e) {
            return e.what();
        }
        return "loaded";
    }
};

struct refused_case {
    const char* scenario;
    const char* message;
};

TEST_F(sim_scenario_paths, each_refusal_names_the_value_by_its_pointer) {
    const refused_case cases[] = {
        // an unknown key deep in a list
        {R"({"users": {"local": [{"login_name": "a"}, {"login_name": "b", "colour": "red"}]}})",
         "scenario: /users/local/1/colour: unknown key"},
        {R"({"address_book": {"personal": [{"number": 1, "email": "a@b"}],
                              "groups": [{"number": 1}, {"number": 2, "members": [{"number": 1, "x": 0}]}]}})",
         "scenario: /address_book/groups/1/members/0/x: unknown key"},
        {R"({"jobinfo": {"joblogs": [{"job_log_type": 0, "send": [{"mail": {"mail_address": "a", "cc": "b"}}]}]}})",
         "scenario: /jobinfo/joblogs/0/send/0/mail/cc: unknown key"},
        // wrong types
        {R"({"apps": {"installed": [{"id": "a", "libraries": ["x.jar", 3]}]}})",
         "scenario: /apps/installed/0/libraries/1: must be a string"},
        {R"({"storage": {"files": [{"area": 45, "path": "a", "dir": "yes"}]}})",
         "scenario: /storage/files/0/dir: must be true or false"},
        {R"({"boxes": {"user": {"number": 1}}})", "scenario: /boxes/user: must be a list"},
        {R"({"panel": []})", "scenario: /panel: must be an object"},
        {R"({"job": {"defaults": {"copies": "two"}}})",
         "scenario: /job/defaults/copies: must be an integer from 0 to 4294967295"},
        // out of range
        {R"({"panel": {"keypad": {"layout": 3}}})", "scenario: /panel/keypad/layout: must be an integer from 0 to 2"},
        {R"({"job": {"ocr": [{"kind": "line", "rect": [0, 0, -1, 4]}]}})",
         "scenario: /job/ocr/0/rect/2: must be an integer from 0 to 4294967295"},
        {R"({"departments": {"accounts": [{"id": "d1", "counters": [1, -2]}]}})",
         "scenario: /departments/accounts/0/counters/1: must be an integer from 0 to 4294967295"},
        {R"({"system_info": {"counters": [{"kind": 0, "size": 1, "color": 3, "count": 1}]}})",
         "scenario: /system_info/counters/0/color: must be an integer from 1 to 2"},
        // a key with "/" or "~" in it is escaped as a pointer escapes it
        {R"({"job": {"disable_info": {"a/b~c": 1}}})", "scenario: /job/disable_info/a~1b~0c: unknown item"},
        // an unknown section, and a check across values named by the value that breaks it
        {R"({"user": {"local": []}})", "scenario: /user: unknown section"},
        {R"({"storage": {"areas": [{"id": 1}, {"id": 1}]}})",
         "scenario: /storage/areas/1/id: the area 1 is defined twice"},
        {R"({"webservice": {"reserved": [{"kind": 0, "app_id": ""}]}})",
         "scenario: /webservice/reserved/0/app_id: is not an application id"},
    };
    for (const refused_case& c : cases) EXPECT_EQ(c.message, refusal(c.scenario)) << c.scenario;
    EXPECT_EQ("scenario: /boxes/fax/0/name: must be a string of at most 192 bytes",
              refusal(R"({"boxes": {"fax": [{"number": 7, "name": ")" + std::string(300, 'n') + R"("}]}})"));
}

TEST_F(sim_scenario_paths, an_editor_schema_reference_is_no_section) {
    EXPECT_EQ("loaded", refusal(R"({"$schema": "scenario.schema.json", "job": {"pages": 2}})"));
    EXPECT_EQ("scenario: /$schemas: unknown section", refusal(R"({"$schemas": "x"})"));
}

TEST_F(sim_scenario_paths, a_scenario_refused_for_an_unknown_section_changes_nothing) {
    jbrg_sim::load_scenario(R"({"apps": {"installed": [{"id": "kept"}]}})");
    EXPECT_EQ("scenario: /appz: unknown section", refusal(R"({"apps": {"installed": [{"id": "new"}]}, "appz": {}})"));
    EXPECT_TRUE(jbrg_sim::apps::app("kept").has_value());
    EXPECT_FALSE(jbrg_sim::apps::app("new").has_value());
    jbrg_sim::reset();
    EXPECT_TRUE(jbrg_sim::apps::app("kept").has_value()) << "a reset goes back to the last scenario that read";
}

}  // namespace
