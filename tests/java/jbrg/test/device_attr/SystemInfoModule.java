package jbrg.test.device_attr;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.that;
import static jbrg.test.Check.throwsWith;
import static jbrg.test.Logins.login;
import static jbrg.test.Logins.logout;
import static orvane.qsf.wrapper.device.attribute.CMT_SystemInformationJNI.*;

import java.util.ArrayList;
import java.util.List;
import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;

/** The device's settings, counters and energy saving as a Java application reads and changes them. */
public final class SystemInfoModule {
    private SystemInfoModule() {}

    // Setting keys and the module's results, as an application writes them.
    static final int MACHINE_NAME = 1, SLEEP_TIMER = 101, COLOR_SUPPORTED = 106, ADMIN_LOCK = 200,
            USER_COLOR_LIMIT = 300, PAPER_SOURCE_1 = 400, PAPER_SOURCE_4 = 403, FAX_LINE_1 = 500;
    static final int OK = 0, COMPETENCE = 1, ERROR = 2, UNSUPPORTED = 3, LOGIN = 4;

    static long number(long info, int key, long cert, int expected) {
        long[] value = {-7};
        equal(expected, (int) CMT_System_Info_get_machine_info__SWIG_0(info, null, key, cert, value), "get " + key);
        return value[0];
    }

    static String text(long info, int key, long cert, int expected) {
        String[] value = {"before"};
        equal(expected, (int) CMT_System_Info_get_machine_info__SWIG_1(info, null, key, cert, value),
                "get text " + key);
        return value[0];
    }

    static int set(long info, int key, long cert, long value) {
        return (int) CMT_System_Info_set_machine_info(info, null, key, cert, value);
    }

    /** Numbers are written within their range and kept; rights and logins decide who may read and write. */
    public static void settings() {
        long info = new_CMT_System_Info();
        long root = login("root", "toor");
        long alice = login("alice", "wonder");

        equal(OK, set(info, SLEEP_TIMER, 0, 30), "a sleep timer within 1..240");
        equal(30L, number(info, SLEEP_TIMER, 0, OK), "kept");
        equal(ERROR, set(info, SLEEP_TIMER, 0, 241), "past the range");
        equal(OK, set(info, SLEEP_TIMER, 0, 0x1_0000_001EL), "a long keeps its low 32 bits: 30 + 2^32 is 30");
        equal(30L, number(info, SLEEP_TIMER, alice, OK), "unchanged, also as read for a login");
        equal("30", text(info, SLEEP_TIMER, 0, OK), "a number read as text");
        that(!text(info, MACHINE_NAME, 0, OK).isEmpty(), "the machine's name");
        number(info, MACHINE_NAME, 0, ERROR);
        number(info, 9999, 0, UNSUPPORTED);
        equal("before", text(info, 9999, 0, UNSUPPORTED), "an unknown key leaves the holder");

        equal(COMPETENCE, set(info, COLOR_SUPPORTED, root, 0), "read only, even for the administrator");
        equal(COMPETENCE, set(info, ADMIN_LOCK, 0, 1), "the administrator's, from the panel");
        equal(COMPETENCE, set(info, ADMIN_LOCK, alice, 1), "the administrator's, for a user");
        equal(OK, set(info, ADMIN_LOCK, root, 1), "the administrator's, for the administrator");
        equal(1L, number(info, ADMIN_LOCK, 0, OK), "anyone reads it");

        number(info, USER_COLOR_LIMIT, 0, LOGIN);
        equal(OK, set(info, USER_COLOR_LIMIT, alice, 500), "alice's own limit");
        equal(500L, number(info, USER_COLOR_LIMIT, alice, OK), "kept for alice");
        logout(alice);
        number(info, USER_COLOR_LIMIT, alice, LOGIN);
        equal(LOGIN, set(info, SLEEP_TIMER, alice, 20), "an ended login changes nothing");
        equal(30L, number(info, SLEEP_TIMER, 0, OK), "still 30");
        logout(root);
        delete_CMT_System_Info(info);
    }

    /** Paper sources, fax lines, model and screen; the flags are true only for exactly 1. */
    public static void machine() {
        long info = new_CMT_System_Info();
        long paper = new_XSI_PBFS_PAPER_INFO();
        equal(OK, (int) CMT_System_Info_get_paper_info(info, null, PAPER_SOURCE_1, paper, null), "source 1");
        equal(3L, XSI_PBFS_PAPER_INFO_paper_remain_get(paper, null), "full");
        equal(2L, XSI_PBFS_PAPER_INFO_paper_size_get(paper, null), "A4");
        equal(UNSUPPORTED, (int) CMT_System_Info_get_paper_info(info, null, PAPER_SOURCE_4, paper, null), "source 4");
        delete_XSI_PBFS_PAPER_INFO(paper);

        long[] value = {0};
        equal(OK, (int) CMT_System_Info_get_model_type(info, null, value), "model");
        equal(2L, value[0], "a colour MFP");
        equal(OK, (int) CMT_System_Info_get_screen_size(info, null, value), "screen");
        equal(3L, value[0], "10.1 inch");

        boolean[] flag = {false};
        equal(OK, (int) CMT_System_Info_get_fax_encryption_validity(info, null, FAX_LINE_1, flag), "fax line 1");
        equal(true, flag[0], "sends encrypted");
        equal(OK, (int) CMT_System_Info_get_copy_service_mode(info, null, 0, flag), "copy service");
        equal(false, flag[0], "not offered");
        delete_CMT_System_Info(info);
    }

    /** Each flag read once: the C++ side forces what the platform reports. */
    public static String[] flags() {
        long info = new_CMT_System_Info();
        boolean[] flag = {true};
        List<String> out = new ArrayList<>();
        long rc = CMT_System_Info_get_fax_encryption_validity(info, null, FAX_LINE_1, flag);
        out.add("fax " + rc + " " + flag[0]);
        flag[0] = true;
        rc = CMT_System_Info_get_copy_service_mode(info, null, 0, flag);
        out.add("copy " + rc + " " + flag[0]);
        delete_CMT_System_Info(info);
        return out.toArray(new String[0]);
    }

    static long count(long info, int kind, int size, int color) {
        long query = new_XSI_PBFS_COUNT_INFO();
        XSI_PBFS_COUNT_INFO_count_kind_set(query, null, kind);
        XSI_PBFS_COUNT_INFO_paper_size_set(query, null, size);
        XSI_PBFS_COUNT_INFO_color_info_set(query, null, color);
        long[] count = {-1};
        long rc = CMT_System_Info_get_count(info, null, query, null, count);
        delete_XSI_PBFS_COUNT_INFO(query);
        return rc == OK ? count[0] : -rc;
    }

    /** The counters of printed and scanned pages: all, A4, A4 mono, A4 colour; copies; scans; a bad kind. */
    public static String[] counters() {
        long info = new_CMT_System_Info();
        String[] out = {
            "print " + count(info, 0, 0, 0) + " " + count(info, 0, 2, 0) + " " + count(info, 0, 2, 1) + " "
                    + count(info, 0, 2, 2),
            "copy " + count(info, 1, 0, 0),
            "scan " + count(info, 4, 0, 0) + " " + count(info, 5, 0, 0),
            "bad " + count(info, 7, 0, 0) + " " + count(info, 0, 10, 0) + " " + count(info, 0, 0, 3),
        };
        delete_CMT_System_Info(info);
        return out;
    }

    /** Energy saving as an application asks for it: the C++ side decides what the device is doing. */
    public static String[] energy() {
        long info = new_CMT_System_Info();
        List<String> out = new ArrayList<>();
        out.add("sleep " + CMT_System_Info_request_energy_saving_mode(info, null, 2));
        out.add("prohibit " + CMT_System_Info_set_energy_save_prohibition_mode(info, null, true));
        out.add("sleep " + CMT_System_Info_request_energy_saving_mode(info, null, 1));
        out.add("lift " + CMT_System_Info_set_energy_save_prohibition_mode(info, null, false));
        out.add("suspend " + CMT_System_Info_suspend_deep_sleep(info, null, "jbrg.app"));
        out.add("deep " + CMT_System_Info_request_energy_saving_mode(info, null, 3));
        out.add("resume " + CMT_System_Info_resume_deep_sleep(info, null, "jbrg.app"));
        out.add("resume " + CMT_System_Info_resume_deep_sleep(info, null, "jbrg.app"));
        out.add("deep " + CMT_System_Info_request_energy_saving_mode(info, null, 3));
        out.add("level " + CMT_System_Info_request_energy_saving_mode(info, null, 7));
        delete_CMT_System_Info(info);
        return out.toArray(new String[0]);
    }

    /** Wake-up dates: an hour from now, then what is not a date. */
    public static void wakeUp() {
        long info = new_CMT_System_Info();
        long inAnHour = System.currentTimeMillis() / 1000 + 3600;
        equal(OK, (int) CMT_System_Info_set_wakeup_date(info, null, "jbrg.app", inAnHour), "an hour from now");
        equal(ERROR, (int) CMT_System_Info_set_wakeup_date(info, null, "jbrg.app", 1), "1970");
        equal(ERROR, (int) CMT_System_Info_set_wakeup_date(info, null, "jbrg.app", 0x8000_0000L), "past 2038");
        equal(ERROR, (int) CMT_System_Info_set_wakeup_date(info, null, null, inAnHour), "no application");
        equal(ERROR, (int) CMT_System_Info_set_wakeup_date(info, null, "x".repeat(65), inAnHour), "a long id");
        equal(ERROR, (int) CMT_System_Info_suspend_deep_sleep(info, null, "€".repeat(22)), "66 bytes");
        delete_CMT_System_Info(info);
    }

    /** The reset timer: one application holds it, another cannot start it. */
    public static void resetTimer() {
        long info = new_CMT_System_Info();
        equal(OK, (int) CMT_System_Info_panel_reset_timer_ctrl(info, null, "jbrg.app", 0), "stop");
        equal(ERROR, (int) CMT_System_Info_panel_reset_timer_ctrl(info, null, "other.app", 1), "start by another");
        equal(ERROR, (int) CMT_System_Info_panel_reset_timer_ctrl(info, null, "jbrg.app", 9), "no such control");
        equal(ERROR, (int) CMT_System_Info_panel_reset_timer_ctrl(info, null, null, 0), "no application");
        delete_CMT_System_Info(info);
    }

    /** Arguments the module refuses before the device is asked. */
    public static void badArguments() {
        long info = new_CMT_System_Info();
        throwsWith(NullPointerException.class, "array null",
                () -> CMT_System_Info_get_machine_info__SWIG_0(info, null, SLEEP_TIMER, 0, null));
        throwsWith(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                () -> CMT_System_Info_get_machine_info__SWIG_1(info, null, MACHINE_NAME, 0, new String[0]));
        throwsWith(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                () -> CMT_System_Info_get_screen_size(info, null, new long[0]));
        throwsWith(NullPointerException.class, "array null",
                () -> CMT_System_Info_get_copy_service_mode(info, null, 0, null));
        throwsWith(NullPointerException.class, "XSI_PBFS_COUNT_INFO & reference is null",
                () -> CMT_System_Info_get_count(info, null, 0, null, new long[1]));
        throwsWith(NullPointerException.class, "XSI_PBFS_PAPER_INFO & reference is null",
                () -> CMT_System_Info_get_paper_info(info, null, PAPER_SOURCE_1, 0, null));
        equal(true, CMT_System_Info_check_eweb_cert_info(info, null, null), "a fixed answer, even for null");
        equal(true, CMT_System_Info_check_eweb_cert_info(info, null, "anything"), "and for anything");
        equal(0L, CMT_System_Info_get_model_type(0, null, new long[1]), "a zero handle reaches nothing");
        delete_CMT_System_Info(info);
    }

    /** A record made by one module reads the same through the other: both describe it from one part. */
    public static void sharedRecords() {
        long text = qsf_fnd_eventJNI.new_XSI_PBFS_PANEL_DISPLAY_TEXT();
        qsf_fnd_eventJNI.XSI_PBFS_PANEL_DISPLAY_TEXT_message_set(text, null, "x".repeat(100));
        equal("x".repeat(64), XSI_PBFS_PANEL_DISPLAY_TEXT_message_get(text, null), "cut at 64 either way");
        long common = XSI_PBFS_PANEL_DISPLAY_TEXT_common_property_get(text, null);
        XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY_title_set(common, null, "Title");
        equal("Title", qsf_fnd_eventJNI.XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY_title_get(
                qsf_fnd_eventJNI.XSI_PBFS_PANEL_DISPLAY_TEXT_common_property_get(text, null), null), "nested");
        qsf_fnd_eventJNI.delete_XSI_PBFS_PANEL_DISPLAY_TEXT(text);

        long page = qsf_fnd_eventJNI.new_XSI_PBFS_EVENT_PRINT_PAGE();
        XSI_PBFS_EVENT_PRINT_PAGE_user_job_id_set(page, null, 0xFFFF_FFFFL);
        equal(0xFFFF_FFFFL, qsf_fnd_eventJNI.XSI_PBFS_EVENT_PRINT_PAGE_user_job_id_get(page, null), "unsigned");
        delete_XSI_PBFS_EVENT_PRINT_PAGE(page);

        equal(qsf_fnd_eventJNI.XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE_get(),
                XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE_get(), "one constant");
        equal(385, XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE_get(), "its value");
        equal(17, XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_TEXT_SIZE_get(), "an item's text");

        long state = new_XSI_PBFS_JOB_STATE();
        XSI_PBFS_JOB_STATE_user_name_set(state, null, "ü".repeat(200));
        equal("ü".repeat(128), XSI_PBFS_JOB_STATE_user_name_get(state, null), "256 bytes of whole characters");
        XSI_PBFS_JOB_STATE_receipt_id_set(state, null, 7);
        equal(7L, XSI_PBFS_JOB_STATE_receipt_id_get(state, null), "the last field");
        delete_XSI_PBFS_JOB_STATE(state);

        XSI_PBFS_DFLT_UNIT_DETECT_set(-5);
        equal(-5, XSI_PBFS_DFLT_UNIT_DETECT_get(), "kept as given");
        XSI_PBFS_DFLT_UNIT_DETECT_set(0);
    }
}
