package jbrg.test.event;

import static jbrg.test.Check.equal;
import static orvane.qsf.wrapper.event.qsf_fnd_eventJNI.*;

/** The operation panel's screen records as a Java application builds them through the event module. */
public final class PanelRecords {
    private PanelRecords() {}

    private static final String LONG = "0123456789".repeat(40);

    /** What a text field of `capacity` bytes keeps of LONG: all but the terminating zero. */
    private static String kept(int capacity) {
        return LONG.substring(0, capacity - 1);
    }

    /**
     * Every text field keeps the device's capacity less one (the terminating zero); a text cut at the field's
     * end leaves the field after it as it was. The message field is one generated setter shared by the screens
     * that carry it: the list and the input field stand for them.
     */
    public static void textsFollowTheSizeConstants() {
        equal(385, XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE_get(), "soft keyboard text with its zero");
        long list = new_XSI_PBFS_PANEL_DISPLAY_LIST();
        long item = new_XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA();
        long entry = new_XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA();
        long field = new_XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA();
        try {
            long common = XSI_PBFS_PANEL_DISPLAY_LIST_common_property_get(list, null);
            long items = XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY_display_item_get(common, null);
            XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_num_set(items, null, 4294967295L);
            XSI_PBFS_PANEL_DISPLAY_LIST_essential_set(list, null, 4294967295L);
            XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY_title_set(common, null, LONG);
            XSI_PBFS_PANEL_DISPLAY_LIST_message_set(list, null, LONG);
            equal(kept(33), XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY_title_get(common, null), "title");
            equal(4294967295L, XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_num_get(items, null), "items after the title");
            equal(kept(65), XSI_PBFS_PANEL_DISPLAY_LIST_message_get(list, null), "list message");
            equal(4294967295L, XSI_PBFS_PANEL_DISPLAY_LIST_essential_get(list, null), "flag after the message");

            XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA_text_set(item, null, LONG);
            equal(kept(17), XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA_text_get(item, null), "common item text");
            XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA_text_set(entry, null, LONG);
            equal(kept(33), XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA_text_get(entry, null), "list entry text");

            XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA_defaults_info_set(field, null, 4294967295L);
            XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA_phb_type_set(field, null, 4294967295L);
            XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA_message_set(field, null, LONG);
            long input = XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA_defaults_data_get(field, null);
            XSI_PBFS_PANEL_INPUT_TEXT_DATA_text_set(input, null, LONG);
            equal(kept(65), XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA_message_get(field, null), "input field message");
            equal(kept(65), XSI_PBFS_PANEL_INPUT_TEXT_DATA_text_get(input, null), "input text");
            equal(4294967295L, XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA_defaults_info_get(field, null),
                    "flag after the message");
            equal(4294967295L, XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA_phb_type_get(field, null),
                    "field after the input text");
        } finally {
            delete_XSI_PBFS_PANEL_DISPLAY_LIST(list);
            delete_XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA(item);
            delete_XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA(entry);
            delete_XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA(field);
        }
    }

    /** Fills a date and time last field first, each with one digit too many. */
    private static void setOverlong(long data) {
        XSI_PBFS_PANEL_DATE_TIME_DATA_minutes_set(data, null, "590");
        XSI_PBFS_PANEL_DATE_TIME_DATA_hour_set(data, null, "230");
        XSI_PBFS_PANEL_DATE_TIME_DATA_day_set(data, null, "310");
        XSI_PBFS_PANEL_DATE_TIME_DATA_month_set(data, null, "070");
        XSI_PBFS_PANEL_DATE_TIME_DATA_year_set(data, null, "20240");
    }

    private static String read(long data) {
        return XSI_PBFS_PANEL_DATE_TIME_DATA_year_get(data, null) + "-"
                + XSI_PBFS_PANEL_DATE_TIME_DATA_month_get(data, null) + "-"
                + XSI_PBFS_PANEL_DATE_TIME_DATA_day_get(data, null) + " "
                + XSI_PBFS_PANEL_DATE_TIME_DATA_hour_get(data, null) + ":"
                + XSI_PBFS_PANEL_DATE_TIME_DATA_minutes_get(data, null);
    }

    /**
     * Dates and times are texts of digits: each field keeps its own digits and no field runs into the next,
     * also inside the records that hold a date; a copied date arrives whole.
     */
    public static void dateTimeTexts() {
        long data = new_XSI_PBFS_PANEL_DATE_TIME_DATA();
        long operation = new_XSI_PBFS_PANEL_OPERATION_DATE_TIME();
        long maximum = new_XSI_PBFS_PANEL_DATE_TIME_MAXIMUM();
        try {
            setOverlong(data);
            equal("2024-07-31 23:59", read(data), "date and time");
            XSI_PBFS_PANEL_DATE_TIME_DATA_month_set(data, null, null);
            equal("2024--31 23:59", read(data), "a null text empties the field alone");

            long common = XSI_PBFS_PANEL_OPERATION_DATE_TIME_common_property_get(operation, null);
            XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY_display_id_set(common, null, 7L);
            long chosen = XSI_PBFS_PANEL_OPERATION_DATE_TIME_data_get(operation, null);
            setOverlong(chosen);
            equal("2024-07-31 23:59", read(chosen), "the date the user chose");
            equal(7L, XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY_display_id_get(common, null), "item before the date");

            XSI_PBFS_PANEL_DATE_TIME_MAXIMUM_setting_set(maximum, null, 1L);
            XSI_PBFS_PANEL_DATE_TIME_MAXIMUM_data_set(maximum, null, chosen, null);
            equal("2024-07-31 23:59", read(XSI_PBFS_PANEL_DATE_TIME_MAXIMUM_data_get(maximum, null)), "copied whole");
            equal(1L, XSI_PBFS_PANEL_DATE_TIME_MAXIMUM_setting_get(maximum, null), "flag before the date");
        } finally {
            delete_XSI_PBFS_PANEL_DATE_TIME_DATA(data);
            delete_XSI_PBFS_PANEL_OPERATION_DATE_TIME(operation);
            delete_XSI_PBFS_PANEL_DATE_TIME_MAXIMUM(maximum);
        }
    }
}
