// The panel observer on the panel's own IPC thread: what reaches Java and what the panel gets back.
#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "event/qsf_fnd_panel_observer.h"
#include "jbrg_sim/control.h"
#include "jbrg_sim/panel.h"
#include "tests/event/event_test.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"
#include "xsi_pbfs_panel.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using orvane::qsf_fnd_panel_observer;

constexpr int32_t kObserverFailure = static_cast<int32_t>(0xC1010706u);
constexpr const char kPanelProxy[] = "orvane/qsf/controller/event/proxy/PanelProxy";

class panel_observer : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        jbrg_test::proxy_clear(kPanelProxy);
    }

    void TearDown() override {
        for (auto& o : observers_) {
            xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_remove_observer(o.get());
        }
        observers_.clear();
        bridge_test::TearDown();
    }

    // A new observer (or `made`), registered with the panel; its init() runs on the panel's thread when
    // `initialise`.
    qsf_fnd_panel_observer* observer(bool initialise, qsf_fnd_panel_observer* made = new qsf_fnd_panel_observer) {
        observers_.emplace_back(made);
        qsf_fnd_panel_observer* o = observers_.back().get();
        if (initialise) {
            EXPECT_EQ(jbrg_sim::deliver("panel", [o] { return o->init(); }), 0);
        }
        EXPECT_EQ(xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_add_observer(o), 0);
        return o;
    }

    // What PanelProxy received, oldest first.
    static std::vector<std::string> received() { return jbrg_test::proxy_received(kPanelProxy); }

    std::vector<std::unique_ptr<qsf_fnd_panel_observer>> observers_;
};

TEST_F(panel_observer, the_automatic_reset_reaches_java_and_the_panel_gets_0) {
    observer(true);
    EXPECT_EQ(jbrg_sim::panel::notify_auto_reset(), 0);
    EXPECT_EQ(jbrg_sim::panel::notify_auto_reset(), 0);
    EXPECT_THAT(received(), ElementsAre("autoReset", "autoReset"));
}

TEST_F(panel_observer, application_start_and_stop_are_answered_by_the_base_and_not_forwarded) {
    observer(true);
    EXPECT_EQ(jbrg_sim::panel::notify_appl_start("jp.example.scan"), 0);
    EXPECT_EQ(jbrg_sim::panel::notify_appl_stop("jp.example.scan"), 0);
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(panel_observer, a_reset_that_cannot_reach_java_answers_the_failure_code) {
    observer(false);  // init never ran: there is no VM to attach to
    EXPECT_EQ(jbrg_sim::panel::notify_auto_reset(), kObserverFailure);
    // init() found the VM but not PanelProxy: a reset that reaches nobody is not answered as delivered.
    xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_remove_observer(observers_.back().get());
    observer(false, new jbrg_test::without_identifiers<qsf_fnd_panel_observer>);
    EXPECT_EQ(jbrg_sim::panel::notify_auto_reset(), kObserverFailure);
    EXPECT_THAT(received(), IsEmpty());
    EXPECT_THAT(jbrg_sim::trace_texts(), IsEmpty()) << "nothing is printed";

    // Beside a working observer, the working one still delivers and the panel hears of the failure.
    observer(true);
    EXPECT_EQ(jbrg_sim::panel::notify_auto_reset(), kObserverFailure);
    EXPECT_THAT(received(), ElementsAre("autoReset"));
}

TEST_F(panel_observer, registration_is_kept_by_the_panel) {
    xsi_pbfs_panel_facade* panel = xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance();
    const std::size_t before = jbrg_sim::panel::observers();
    qsf_fnd_panel_observer* o = observer(true);
    EXPECT_EQ(jbrg_sim::panel::observers(), before + 1);
    EXPECT_EQ(panel->xsi_pbfs_panel_add_observer(o), XSI_PBFS_PANEL_DUPL_OBSERVER);

    EXPECT_EQ(panel->xsi_pbfs_panel_remove_observer(o), 0);
    EXPECT_EQ(jbrg_sim::panel::observers(), before);
    EXPECT_EQ(jbrg_sim::panel::notify_auto_reset(), 0);
    EXPECT_THAT(received(), IsEmpty()) << "a removed observer hears nothing";
    EXPECT_EQ(panel->xsi_pbfs_panel_remove_observer(o), XSI_PBFS_PANEL_NO_OBSERVER);
    EXPECT_EQ(panel->xsi_pbfs_panel_add_observer(nullptr), XSI_PBFS_PANEL_PARAM_ERROR);
}

TEST_F(panel_observer, messages_the_base_cannot_read_are_refused) {
    observer(true);
    EXPECT_EQ(jbrg_sim::panel::notify(99, ""), XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(jbrg_sim::panel::notify(XSI_PBFS_PANEL_MSG_KEY_EVENT, "abc"), XSI_PBFS_PANEL_PARAM_ERROR);
    EXPECT_EQ(jbrg_sim::panel::notify(XSI_PBFS_PANEL_MSG_KEY_EVENT, std::string(8, '\0')), 0);
    EXPECT_THAT(received(), IsEmpty());
}

}  // namespace
