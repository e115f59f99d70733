// The panel proxy against the simulated panel: the values that reach the panel, what is dropped, the flags
// and the trace lines.
#include <gmock/gmock.h>

#include <string>

#include "event/qsf_fnd_panel_proxy.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/panel.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using orvane::qsf_fnd_panel_proxy;

const int32_t kNg = static_cast<int32_t>(0xC1010701u);

std::string signed_text(uint32_t code) { return std::to_string(static_cast<int32_t>(code)); }

XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO keypad(uint32_t mode, uint32_t layout, uint32_t position, uint16_t x,
                                               uint16_t y) {
    return XIOF_SLO_PANEL_SOFT_TENKEY_DISPLAY_INFO{mode, layout, position, x, y};
}

class panel_proxy : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"panel": {"unavailable_screens": [4],
                             "keypad": {"display_mode": 1, "layout": 0, "position": 2, "x": 300, "y": 120}}})";
    }

    qsf_fnd_panel_proxy proxy;
};

TEST_F(panel_proxy, view_updates_are_renumbered_for_the_panel_and_unknown_types_dropped) {
    for (int type = -1; type <= 6; ++type) {
        proxy.view_update("app", static_cast<orvane::QSF_FND_VIEW_UPDATE_TYPE>(type));
    }
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre("xsi_pbfs_panel_notify_view_update(app, 0)", "xsi_pbfs_panel_notify_view_update(app, 3)",
                            "xsi_pbfs_panel_notify_view_update(app, 1)", "xsi_pbfs_panel_notify_view_update(app, 4)",
                            "xsi_pbfs_panel_notify_view_update(app, 2)", "xsi_pbfs_panel_notify_view_update(app, 6)"));
    EXPECT_EQ(jbrg_sim::panel::view("app"), 6);
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
}

TEST_F(panel_proxy, the_authentication_application_view_update_traces_the_panel_value) {
    proxy.view_update_ext_auth_app("login", orvane::QSF_FND_VIEW_UPDATE_CONTENT);
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre("xsi_pbfs_panel_notify_view_update_ext_auth_app(login, 3)"));
    EXPECT_THAT(jbrg_sim::trace_texts(),
                ElementsAre(MatchesRegex("qsf_fnd_panel_proxy\\.cpp\\[[0-9]{4}\\]::view_update_ext_auth_app,\\[Start\\]\n"),
                            MatchesRegex(".*::view_update_ext_auth_app,update_type = \\[3\\]\n"),
                            MatchesRegex(".*::view_update_ext_auth_app,\\[End\\]\n")));
    EXPECT_EQ(jbrg_sim::panel::ext_auth_view("login"), 3);

    jbrg_sim::clear_traces();
    jbrg_sim::clear_calls();
    proxy.view_update_ext_auth_app("login", static_cast<orvane::QSF_FND_VIEW_UPDATE_TYPE>(6));
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
    EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(MatchesRegex(".*,\\[Start\\]\n"), MatchesRegex(".*,\\[End\\]\n")));
}

TEST_F(panel_proxy, led_and_buzzer_pass_their_known_values_and_drop_the_rest) {
    for (int v = -1; v <= 3; ++v) {
        proxy.request_start_led("app", static_cast<orvane::QSF_FND_LED_STATE>(v));
        proxy.request_buzzer("app", static_cast<orvane::QSF_FND_BUZZER_TYPE>(v));
    }
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre("xsi_pbfs_panel_request_start_led(app, 0)", "xsi_pbfs_panel_request_buzzer(app, 0)",
                            "xsi_pbfs_panel_request_start_led(app, 1)", "xsi_pbfs_panel_request_buzzer(app, 1)",
                            "xsi_pbfs_panel_request_buzzer(app, 2)"));
    EXPECT_EQ(jbrg_sim::panel::start_led(), 1);
    EXPECT_THAT(jbrg_sim::panel::buzzes(), ElementsAre("app:0", "app:1", "app:2"));
}

TEST_F(panel_proxy, events_flags_and_menu_applications_pass_through) {
    proxy.request_event("app", 4294967295u);
    proxy.extension_authentication_init(true);
    proxy.j_foundation_start(false);
    proxy.menu_application_initialized("menu", true);
    proxy.menu_application_initialized("other", false);
    EXPECT_THAT(jbrg_sim::panel::menu_applications(), ElementsAre("menu"));
    proxy.menu_application_terminated("menu", true);
    proxy.menu_application_terminated("menu", true);  // refused by the panel; nothing to report
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre("xsi_pbfs_panel_notify_request_event(app, 4294967295)",
                            "xsi_pbfs_panel_extension_authentication_initialize(true)",
                            "xsi_pbfs_panel_notify_j_foundation_started(false)",
                            "xsi_pbfs_panel_menu_application_initialized(menu, true)",
                            "xsi_pbfs_panel_menu_application_initialized(other, false)",
                            "xsi_pbfs_panel_menu_application_terminated(menu, true)",
                            "xsi_pbfs_panel_menu_application_terminated(menu, true)"));
    EXPECT_THAT(jbrg_sim::panel::events(), ElementsAre("app:4294967295"));
    EXPECT_TRUE(jbrg_sim::panel::extension_authentication_initialized());
    EXPECT_THAT(jbrg_sim::panel::menu_applications(), IsEmpty());
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
}

TEST_F(panel_proxy, reset_end_and_screen_requests_trace_only_a_failure) {
    proxy.notify_reset_completed();
    proxy.request_display_screen(XSI_PBFS_PANEL_DISPLAY_BOX);
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
    EXPECT_EQ(jbrg_sim::panel::resets_ended(), 1u);
    EXPECT_EQ(jbrg_sim::panel::screen(), XSI_PBFS_PANEL_DISPLAY_BOX);

    jbrg_sim::force_result("xsi_pbfs_panel_notify_reset_end", kNg);
    proxy.notify_reset_completed();
    proxy.request_display_screen(XSI_PBFS_PANEL_DISPLAY_FAX);  // unavailable in this scenario
    EXPECT_THAT(jbrg_sim::trace_texts(),
                ElementsAre(MatchesRegex(".*::notify_reset_completed,\\[Error\\]\\. ret = \\[0xc1010701\\]\n"),
                            MatchesRegex(".*::request_display_screen,\\[Error\\]\\. ret = \\[0xc1010705\\]\n")));
    EXPECT_EQ(jbrg_sim::panel::screen(), XSI_PBFS_PANEL_DISPLAY_BOX);
}

TEST_F(panel_proxy, screen_availability_is_false_whenever_the_panel_call_fails) {
    EXPECT_TRUE(proxy.is_screen_available(XSI_PBFS_PANEL_DISPLAY_COPY));
    EXPECT_FALSE(proxy.is_screen_available(XSI_PBFS_PANEL_DISPLAY_FAX));
    EXPECT_FALSE(proxy.is_screen_available(static_cast<XSI_PBFS_PANEL_DISPLAY_TYPE>(99)));

    jbrg_sim::force_out("xsi_pbfs_panel_is_screen_available", "available", "7");
    EXPECT_TRUE(proxy.is_screen_available(XSI_PBFS_PANEL_DISPLAY_FAX)) << "any non-zero value is available";
    // A failed call gives false even though the value would say available.
    jbrg_sim::force_result("xsi_pbfs_panel_is_screen_available", kNg);
    EXPECT_FALSE(proxy.is_screen_available(XSI_PBFS_PANEL_DISPLAY_COPY));
}

TEST_F(panel_proxy, soft_keyboard_text_answers_a_failure_flag_and_traces_the_code) {
    std::string id = "address";
    EXPECT_FALSE(proxy.set_softkeyboard_text(id, 3, "alice@example.com", XSI_PBFS_PANEL_DISPLAY_TEXT_MASKED));
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre("xsi_pbfs_panel_set_display_text(address, 3, alice@example.com, 1)"));
    EXPECT_EQ(jbrg_sim::panel::softkeyboard_text("address", 3), "alice@example.com");
    EXPECT_EQ(jbrg_sim::panel::softkeyboard_text_type("address", 3), 1);

    // The soft keyboard takes 384 bytes (385 with the terminating zero); the proxy hands the text over whole
    // and the panel refuses a longer one: any non-zero code is a failure.
    EXPECT_FALSE(proxy.set_softkeyboard_text(id, 4, std::string(384, 'k'), XSI_PBFS_PANEL_DISPLAY_TEXT_PLAIN));
    EXPECT_EQ(jbrg_sim::panel::softkeyboard_text("address", 4), std::string(384, 'k'));
    EXPECT_TRUE(proxy.set_softkeyboard_text(id, 3, std::string(385, 'x'), XSI_PBFS_PANEL_DISPLAY_TEXT_PLAIN));
    jbrg_sim::force_result("xsi_pbfs_panel_set_display_text", 1);
    EXPECT_TRUE(proxy.set_softkeyboard_text(id, 3, "x", XSI_PBFS_PANEL_DISPLAY_TEXT_PLAIN));
    EXPECT_THAT(jbrg_sim::trace_texts(),
                ElementsAre(MatchesRegex(".*::set_softkeyboard_text,\\[Start\\]\n"),
                            MatchesRegex(".*::set_softkeyboard_text,\\[End\\] ret_code=0\n"),
                            MatchesRegex(".*,\\[Start\\]\n"), MatchesRegex(".*,\\[End\\] ret_code=0\n"),
                            MatchesRegex(".*,\\[Start\\]\n"),
                            MatchesRegex(".*,\\[End\\] ret_code=" + signed_text(0xC1010702u) + "\n"),
                            MatchesRegex(".*,\\[Start\\]\n"), MatchesRegex(".*,\\[End\\] ret_code=1\n")));
    EXPECT_EQ(jbrg_sim::panel::softkeyboard_text("address", 3), "alice@example.com");
}

TEST_F(panel_proxy, opening_the_keypad_counts_layout_and_position_from_0_for_the_panel) {
    auto open = keypad(1, 1, 2, 40, 65535);
    EXPECT_FALSE(proxy.softnumerickeypad_open("app", open));
    auto three = keypad(1, 3, 3, 0, 0);
    EXPECT_FALSE(proxy.softnumerickeypad_open("app", three));
    auto odd = keypad(7, 9, 0, 1, 2);  // not 1: hidden; unknown places: the first
    EXPECT_FALSE(proxy.softnumerickeypad_open("app", odd));
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre("xsi_pbfs_panel_request_display_soft_tenkey(app, 0, {display_mode=1, layout=0, position=1, x=40, y=65535})",
                            "xsi_pbfs_panel_request_display_soft_tenkey(app, 0, {display_mode=1, layout=2, position=2, x=0, y=0})",
                            "xsi_pbfs_panel_request_display_soft_tenkey(app, 0, {display_mode=0, layout=0, position=0, x=1, y=2})"));
    EXPECT_EQ(open.layout_, 1u) << "the caller's record is not changed";
    EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(MatchesRegex(".*::softnumerickeypad_open,\\[End\\] ret_code=0\n"),
                                                     MatchesRegex(".*,\\[End\\] ret_code=0\n"),
                                                     MatchesRegex(".*,\\[End\\] ret_code=0\n")));

    jbrg_sim::clear_traces();
    jbrg_sim::force_result("xsi_pbfs_panel_request_display_soft_tenkey", kNg);
    EXPECT_TRUE(proxy.softnumerickeypad_open("app", open));
    EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(MatchesRegex(".*,\\[End\\] ret_code=" + signed_text(0xC1010701u) + "\n")));
}

TEST_F(panel_proxy, closing_sends_an_all_zero_record_and_hides_the_keypad) {
    EXPECT_FALSE(proxy.softnumerickeypad_close("app"));
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre("xsi_pbfs_panel_request_display_soft_tenkey(app, 0, "
                                                    "{display_mode=0, layout=0, position=0, x=0, y=0})"));
    EXPECT_EQ(jbrg_sim::panel::keypad().display_mode, 0u);
    EXPECT_THAT(jbrg_sim::trace_texts(), ElementsAre(MatchesRegex(".*::softnumerickeypad_close,\\[End\\] ret_code=0\n")));
    EXPECT_TRUE(proxy.softnumerickeypad_close(nullptr)) << "the panel refuses a missing application id";
}

TEST_F(panel_proxy, the_current_keypad_is_counted_from_1_again) {
    auto info = keypad(0, 0, 0, 0, 0);
    EXPECT_EQ(proxy.softnumerickeypad_get_current("app", info), 0);
    // The scenario's keypad: shown, panel layout 0, panel position 2.
    EXPECT_EQ(info.display_mode_, 1u);
    EXPECT_EQ(info.layout_, 1u);
    EXPECT_EQ(info.position_, 3u);
    EXPECT_EQ(info.x_coord_, 300);
    EXPECT_EQ(info.y_coord_, 120);
    EXPECT_THAT(jbrg_sim::call_texts(), ElementsAre("xsi_pbfs_panel_request_display_soft_tenkey(app, 0, "
                                                    "{display_mode=0, layout=0, position=0, x=0, y=0})"));

    auto shown = keypad(1, 3, 2, 5, 6);  // panel layout 2, position 1
    ASSERT_FALSE(proxy.softnumerickeypad_open("app", shown));
    EXPECT_EQ(proxy.softnumerickeypad_get_current("app", info), 0);
    EXPECT_EQ(info.display_mode_, 1u);
    EXPECT_EQ(info.layout_, 3u);
    EXPECT_EQ(info.position_, 2u);
    EXPECT_EQ(proxy.softnumerickeypad_get_current("app", info), 0);
    EXPECT_EQ(info.display_mode_, 0u) << "the reading request hid it";

    auto kept = keypad(9, 9, 9, 9, 9);
    jbrg_sim::force_result("xsi_pbfs_panel_request_display_soft_tenkey", kNg);
    EXPECT_EQ(proxy.softnumerickeypad_get_current("app", kept), 1);
    EXPECT_EQ(kept.layout_, 9u) << "a failed reading leaves the caller's record";
}

TEST_F(panel_proxy, the_initial_setting_numbers_layouts_the_other_way_and_ignores_the_answer) {
    EXPECT_EQ(proxy.softnumerickeypad_init("app", keypad(1, 3, 3, 1000, 65535)), 0);
    EXPECT_EQ(proxy.softnumerickeypad_init("app", keypad(1, 2, 1, 0, 0)), 0);
    EXPECT_EQ(proxy.softnumerickeypad_init("app", keypad(2, 1, 2, 0, 0)), 0);
    jbrg_sim::force_result("xam_ads_request_software_tenkey_initial_setting", static_cast<int32_t>(0xC2010001u));
    EXPECT_EQ(proxy.softnumerickeypad_init("app", keypad(1, 3, 1, 7, 8)), 0);
    EXPECT_THAT(jbrg_sim::call_texts(),
                ElementsAre("xam_ads_request_software_tenkey_initial_setting(app, {display_mode=1, layout=1, x=1000, y=65535})",
                            "xam_ads_request_software_tenkey_initial_setting(app, {display_mode=1, layout=2, x=0, y=0})",
                            "xam_ads_request_software_tenkey_initial_setting(app, {display_mode=0, layout=0, x=0, y=0})",
                            "xam_ads_request_software_tenkey_initial_setting(app, {display_mode=1, layout=1, x=7, y=8})"));
    auto kept = jbrg_sim::panel::keypad_initial_setting("app");
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(kept->display_mode, 0u) << "the refused setting did not replace the one before";
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty());
}

}  // namespace
