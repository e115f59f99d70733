// The simulated panel's own rules, as the bridge meets them.
#include <gmock/gmock.h>

#include <stdexcept>

#include "jbrg_sim/control.h"
#include "jbrg_sim/panel.h"
#include "tests/harness/bridge_test.h"
#include "xam_ads.h"
#include "xsi_pbfs_panel.h"

namespace {

class panel_service : public jbrg_test::bridge_test {
protected:
    xsi_pbfs_panel_facade* panel = xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance();
};

TEST_F(panel_service, scenarios_that_do_not_read_are_refused) {
    EXPECT_THROW(jbrg_sim::load_scenario(R"({"panel": {"screens": []}})"), std::runtime_error);
    EXPECT_THROW(jbrg_sim::load_scenario(R"({"panel": {"unavailable_screens": [8]}})"), std::runtime_error);
    EXPECT_THROW(jbrg_sim::load_scenario(R"({"panel": {"keypad": {"layout": 3}}})"), std::runtime_error);
    jbrg_sim::load_scenario(R"({"panel": {"keypad": {"display_mode": 1, "layout": 2, "x": 9}}})");
    EXPECT_EQ(jbrg_sim::panel::keypad().layout, 2u);
    EXPECT_EQ(jbrg_sim::panel::keypad().x, 9);
    jbrg_sim::load_scenario("{}");
}

TEST_F(panel_service, the_keypad_answers_what_it_was_and_refuses_places_it_does_not_have) {
    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO show{1, 2, 1, 10, 20};
    ASSERT_EQ(panel->xsi_pbfs_panel_request_display_soft_tenkey("app", XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST_DISPLAY, show), 0);
    EXPECT_EQ(show.display_mode, 0u) << "hidden before";

    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO bad{1, 3, 0, 0, 0};
    EXPECT_EQ(panel->xsi_pbfs_panel_request_display_soft_tenkey("app", XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST_DISPLAY, bad),
              XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(panel->xsi_pbfs_panel_request_display_soft_tenkey(
                  "app", static_cast<XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST>(1), show),
              XSI_PBFS_PANEL_PARAM_ERROR);

    XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO read{};
    ASSERT_EQ(panel->xsi_pbfs_panel_request_display_soft_tenkey("app", XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST_DISPLAY, read), 0);
    EXPECT_EQ(read.display_mode, 1u);
    EXPECT_EQ(read.layout, 2u);
    EXPECT_EQ(read.position, 1u);
    EXPECT_EQ(read.y, 20);
    EXPECT_EQ(jbrg_sim::panel::keypad().display_mode, 0u);
    EXPECT_EQ(jbrg_sim::panel::keypad().layout, 2u) << "hiding keeps the place";
}

TEST_F(panel_service, requests_without_an_application_or_with_unknown_values_are_refused) {
    EXPECT_EQ(panel->xsi_pbfs_panel_notify_view_update("", XSI_PBFS_PANEL_VIEW_UPDATE_SHOW), XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(panel->xsi_pbfs_panel_notify_view_update("a", static_cast<XSI_PBFS_PANEL_VIEW_UPDATE_TYPE>(7)),
              XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(panel->xsi_pbfs_panel_request_start_led(nullptr, XSI_PBFS_LED_ON), XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(panel->xsi_pbfs_panel_request_display_screen(static_cast<XSI_PBFS_PANEL_DISPLAY_TYPE>(-1)),
              XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(panel->xsi_pbfs_panel_set_display_text("id", 1, "t", static_cast<XSI_PBFS_PANEL_DISPLAY_TEXT_TYPE>(3)),
              XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(panel->xsi_pbfs_panel_menu_application_terminated("never", true), XSI_PBFS_PANEL_NG);
    XAM_ADS_SOFTWARE_TENKEY_SETTING setting{1, 1, 0, 0};
    EXPECT_EQ(xam_ads_facade::xam_ads_get_instance()->xam_ads_request_software_tenkey_initial_setting("", setting),
              XAM_ADS_RESULT_ERR);
    EXPECT_FALSE(jbrg_sim::panel::keypad_initial_setting("").has_value());
}

}  // namespace
