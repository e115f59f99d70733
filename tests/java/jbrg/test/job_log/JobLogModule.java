package jbrg.test.job_log;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.throwsWith;
import static orvane.qsf.wrapper.job_log.qsf_fnd_job_logJNI.*;

/**
 * The job log module as a Java application uses it, against the device history of the suite's scenario:
 * log 1 (send) holds receipt 12 with a fax and a mail destination; log 2 (receive) holds another receipt 12
 * with a fax and a PC sender; image log 7 has a text.
 */
public final class JobLogModule {
    private JobLogModule() {}

    static final int LOG_SEND = 1;
    static final int LOG_RECEIVE = 2;

    /** A job log entry, a field of each kind, then its send records, one per call, until the list is exhausted. */
    public static void readSendLog() {
        long proxy = new_qsf_fnd_job_log_proxy();
        long log = new_XSI_AIS_JOBINFO_JOBLOG();
        long info = new_XSI_AIS_JOBINFO_SEND_INFO();
        try {
            equal(0, qsf_fnd_job_log_proxy_retrieve_joblog(proxy, null, 12L, LOG_SEND, log, null), "retrieve");
            equal(LOG_SEND, XSI_AIS_JOBINFO_JOBLOG_job_log_type_get(log, null), "job_log_type");
            equal(12L, XSI_AIS_JOBINFO_JOBLOG_receipt_id_get(log, null), "receipt_id");
            equal("Quote 2024", XSI_AIS_JOBINFO_JOBLOG_job_name_get(log, null), "job_name");
            equal("1001", XSI_AIS_JOBINFO_JOBLOG_dept_code_get(log, null), "dept_code");
            equal(1700000000L, XSI_AIS_JOBINFO_JOBLOG_start_time_get(log, null), "start_time");
            equal(4294967295L, XSI_AIS_JOBINFO_JOBLOG_result_err_get(log, null), "result_err, zero-extended");
            equal(4L, XSI_AIS_JOBINFO_JOBLOG_print_completion_page_number_get(log, null),
                    "print_completion_page_number");
            equal(2L, XSI_AIS_JOBINFO_JOBLOG_send_num_get(log, null), "send_num");
            equal(0L, XSI_AIS_JOBINFO_JOBLOG_receive_num_get(log, null), "receive_num");

            equal(0, qsf_fnd_job_log_proxy_create_send_info_list(proxy, null, 12L, LOG_SEND), "create send list");

            equal(0, qsf_fnd_job_log_proxy_get_send_info(proxy, null, info, null), "first send record");
            equal(0, XSI_AIS_JOBINFO_SEND_INFO_category_get(info, null), "category fax");
            equal("Head office", XSI_AIS_JOBINFO_SEND_INFO_destination_name_get(info, null), "destination_name");
            long fax = XSI_AIS_JOBINFO_SEND_INFO_DETAIL_fax_get(XSI_AIS_JOBINFO_SEND_INFO_detail_get(info, null), null);
            equal("0312345678", XSI_AIS_JOBINFO_SEND_INFO_FAX_fax_no_get(fax, null), "fax_no");
            equal(1L, XSI_AIS_JOBINFO_SEND_INFO_FAX_port_no_get(fax, null), "port_no");
            equal(42L, XSI_AIS_JOBINFO_SEND_INFO_FAX_time_get(fax, null), "time");

            equal(0, qsf_fnd_job_log_proxy_get_send_info(proxy, null, info, null), "second send record");
            equal(2, XSI_AIS_JOBINFO_SEND_INFO_category_get(info, null), "category mail");
            equal(4294967295L, XSI_AIS_JOBINFO_SEND_INFO_result_err_get(info, null), "result_err");
            long detail = XSI_AIS_JOBINFO_SEND_INFO_detail_get(info, null);
            equal("ann@example.com",
                    XSI_AIS_JOBINFO_SEND_INFO_MAIL_mail_address_get(XSI_AIS_JOBINFO_SEND_INFO_DETAIL_mail_get(detail, null), null),
                    "mail_address");
            equal("", XSI_AIS_JOBINFO_SEND_INFO_FAX_fax_no_get(fax, null), "the fax member of a mail record is empty");

            // The list is exhausted: the service's "no further record" is not one the job log tells apart.
            equal(1, qsf_fnd_job_log_proxy_get_send_info(proxy, null, info, null), "after the last record");
            equal(0, qsf_fnd_job_log_proxy_delete_send_info_list(proxy, null), "delete send list");
        } finally {
            delete_XSI_AIS_JOBINFO_SEND_INFO(info);
            delete_XSI_AIS_JOBINFO_JOBLOG(log);
            delete_qsf_fnd_job_log_proxy(proxy);
        }
    }

    /** Receipt 12 of the receive log is another entry than receipt 12 of the send log. */
    public static void readReceiveLog() {
        long proxy = new_qsf_fnd_job_log_proxy();
        long log = new_XSI_AIS_JOBINFO_JOBLOG();
        long info = new_XSI_AIS_JOBINFO_RECEIVE_INFO();
        try {
            equal(0, qsf_fnd_job_log_proxy_retrieve_joblog(proxy, null, 12L, LOG_RECEIVE, log, null), "retrieve");
            equal("Incoming", XSI_AIS_JOBINFO_JOBLOG_job_name_get(log, null), "job_name");
            equal(0L, XSI_AIS_JOBINFO_JOBLOG_send_num_get(log, null), "send_num");
            equal(2L, XSI_AIS_JOBINFO_JOBLOG_receive_num_get(log, null), "receive_num");

            equal(0, qsf_fnd_job_log_proxy_create_receive_info_list(proxy, null, 12L, LOG_RECEIVE), "create");
            equal(0, qsf_fnd_job_log_proxy_get_receive_info(proxy, null, info, null), "first receive record");
            equal(0, XSI_AIS_JOBINFO_RECEIVE_INFO_category_get(info, null), "category fax");
            long detail = XSI_AIS_JOBINFO_RECEIVE_INFO_detail_get(info, null);
            long fax = XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL_fax_get(detail, null);
            equal("Branch", XSI_AIS_JOBINFO_RECEIVE_INFO_FAX_destination_name_get(fax, null), "destination_name");
            equal("0311112222", XSI_AIS_JOBINFO_RECEIVE_INFO_FAX_fax_no_get(fax, null), "fax_no");
            equal(2L, XSI_AIS_JOBINFO_RECEIVE_INFO_FAX_port_no_get(fax, null), "port_no");
            equal(77L, XSI_AIS_JOBINFO_RECEIVE_INFO_FAX_result_err_get(fax, null), "result_err");

            equal(0, qsf_fnd_job_log_proxy_get_receive_info(proxy, null, info, null), "second receive record");
            equal(3, XSI_AIS_JOBINFO_RECEIVE_INFO_category_get(info, null), "category pc");
            equal("files.example",
                    XSI_AIS_JOBINFO_RECEIVE_INFO_PC_host_name_get(XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL_pc_get(detail, null), null),
                    "host_name");
            equal("", XSI_AIS_JOBINFO_RECEIVE_INFO_FAX_fax_no_get(fax, null), "the fax member of a PC record is empty");
            equal(1, qsf_fnd_job_log_proxy_get_receive_info(proxy, null, info, null), "after the last record");
            equal(0, qsf_fnd_job_log_proxy_delete_receive_info_list(proxy, null), "delete");
        } finally {
            delete_XSI_AIS_JOBINFO_RECEIVE_INFO(info);
            delete_XSI_AIS_JOBINFO_JOBLOG(log);
            delete_qsf_fnd_job_log_proxy(proxy);
        }
    }

    /** How the device answers lists used out of order and entries it does not have. */
    public static void listsAndLookups() {
        long proxy = new_qsf_fnd_job_log_proxy();
        long log = new_XSI_AIS_JOBINFO_JOBLOG();
        long send = new_XSI_AIS_JOBINFO_SEND_INFO();
        try {
            equal(1, qsf_fnd_job_log_proxy_retrieve_joblog(proxy, null, 13L, LOG_SEND, log, null), "unknown receipt");
            equal(1, qsf_fnd_job_log_proxy_retrieve_joblog(proxy, null, 12L, 0, log, null), "receipt of another log");
            equal(8, qsf_fnd_job_log_proxy_retrieve_joblog(proxy, null, 12L, 9, log, null), "no such log");
            equal(8, qsf_fnd_job_log_proxy_retrieve_joblog(proxy, null, 12L, -1, log, null), "a negative log");

            equal(8, qsf_fnd_job_log_proxy_get_send_info(proxy, null, send, null), "get without a send list");
            equal(1, qsf_fnd_job_log_proxy_create_send_info_list(proxy, null, 99L, LOG_SEND), "list of no entry");

            // One list of each kind at a time.
            equal(0, qsf_fnd_job_log_proxy_create_send_info_list(proxy, null, 12L, LOG_SEND), "create");
            equal(6, qsf_fnd_job_log_proxy_create_send_info_list(proxy, null, 12L, LOG_RECEIVE), "a second list");
            equal(0, qsf_fnd_job_log_proxy_create_receive_info_list(proxy, null, 12L, LOG_RECEIVE),
                    "the receive list is separate");
            equal(0, qsf_fnd_job_log_proxy_get_send_info(proxy, null, send, null), "the first list stays");
            equal("Head office", XSI_AIS_JOBINFO_SEND_INFO_destination_name_get(send, null), "its first record");
            equal(0, qsf_fnd_job_log_proxy_delete_send_info_list(proxy, null), "delete");
            equal(8, qsf_fnd_job_log_proxy_get_send_info(proxy, null, send, null), "get after delete");
            equal(0, qsf_fnd_job_log_proxy_delete_receive_info_list(proxy, null), "delete the receive list");
        } finally {
            delete_XSI_AIS_JOBINFO_SEND_INFO(send);
            delete_XSI_AIS_JOBINFO_JOBLOG(log);
            delete_qsf_fnd_job_log_proxy(proxy);
        }
    }

    /** Image logs: a text or, on any failure, the empty text; deleting answers with a result code. */
    public static void imageLogs() {
        long proxy = new_qsf_fnd_job_log_proxy();
        try {
            equal("page 1: quote, 3 pages", qsf_fnd_job_log_proxy_retrieve_imagelog(proxy, null, 7L), "image 7");
            // The image id is the device's unsigned long: a Java long keeps its low 32 bits.
            equal("page 1: quote, 3 pages", qsf_fnd_job_log_proxy_retrieve_imagelog(proxy, null, 0x100000007L),
                    "high bits dropped");
            equal("", qsf_fnd_job_log_proxy_retrieve_imagelog(proxy, null, 8L), "an unknown image");
            equal(1, qsf_fnd_job_log_proxy_delete_imagelog(proxy, null, 8L), "delete an unknown image");
            equal(0, qsf_fnd_job_log_proxy_delete_imagelog(proxy, null, 7L), "delete image 7");
            equal("", qsf_fnd_job_log_proxy_retrieve_imagelog(proxy, null, 7L), "a deleted image");
            equal(1, qsf_fnd_job_log_proxy_delete_imagelog(proxy, null, 7L), "delete it again");
        } finally {
            delete_qsf_fnd_job_log_proxy(proxy);
        }
    }

    /** Run with 0xC1020002, 0xC1020009 and 0xC102000A forced on the service's delete_imagelog, in that order. */
    public static void forcedResults() {
        long proxy = new_qsf_fnd_job_log_proxy();
        try {
            // The first codes of the job service give their low byte; 0xC102000A is past them and gives 1.
            int[] expected = {2, 9, 1};
            for (int i = 0; i < expected.length; ++i) {
                equal(expected[i], qsf_fnd_job_log_proxy_delete_imagelog(proxy, null, 7L), "forced code " + i);
            }
            equal(0, qsf_fnd_job_log_proxy_delete_imagelog(proxy, null, 7L), "then the device's own answer");
        } finally {
            delete_qsf_fnd_job_log_proxy(proxy);
        }
    }

    /** Run with the text "forced text" reported by the next two retrieve_imagelog calls. */
    public static void failedImageLogIsEmpty() {
        long proxy = new_qsf_fnd_job_log_proxy();
        try {
            equal("", qsf_fnd_job_log_proxy_retrieve_imagelog(proxy, null, 8L), "a failed retrieve with a text");
            equal("forced text", qsf_fnd_job_log_proxy_retrieve_imagelog(proxy, null, 7L), "a retrieve that works");
        } finally {
            delete_qsf_fnd_job_log_proxy(proxy);
        }
    }

    /** Null record references and a zero proxy handle never reach the service (the C++ side checks the log). */
    public static void refusedArguments() {
        long proxy = new_qsf_fnd_job_log_proxy();
        try {
            throwsWith(NullPointerException.class, "XSI_AIS_JOBINFO_JOBLOG & reference is null",
                    () -> qsf_fnd_job_log_proxy_retrieve_joblog(proxy, null, 12L, LOG_SEND, 0L, null));

            long log = new_XSI_AIS_JOBINFO_JOBLOG();
            equal(0, qsf_fnd_job_log_proxy_retrieve_joblog(0L, null, 12L, LOG_SEND, log, null), "zero proxy");
            equal(0, qsf_fnd_job_log_proxy_delete_send_info_list(0L, null), "zero proxy");
            equal(null, qsf_fnd_job_log_proxy_retrieve_imagelog(0L, null, 7L), "zero proxy");
            delete_XSI_AIS_JOBINFO_JOBLOG(log);
            delete_qsf_fnd_job_log_proxy(0L);
        } finally {
            delete_qsf_fnd_job_log_proxy(proxy);
        }
    }

    private static String repeat(char c, int n) {
        return String.valueOf(c).repeat(n);
    }

    /**
     * Text fields keep the device's capacity less one and leave their neighbours alone; a nested record is in place.
     * (What every record field does with null, zero handles and record copies is the wrapper layer's own test.)
     */
    public static void recordFields() {
        long log = new_XSI_AIS_JOBINFO_JOBLOG();
        long send = new_XSI_AIS_JOBINFO_SEND_INFO();
        try {
            // Fill each text with more than it holds, in field order, so that an overrun would show in the next.
            XSI_AIS_JOBINFO_JOBLOG_job_type_set(log, null, 5);
            XSI_AIS_JOBINFO_JOBLOG_job_name_set(log, null, repeat('a', 300));
            XSI_AIS_JOBINFO_JOBLOG_dept_code_set(log, null, repeat('e', 300));
            XSI_AIS_JOBINFO_JOBLOG_dept_name_set(log, null, repeat('f', 300));
            XSI_AIS_JOBINFO_JOBLOG_start_time_set(log, null, 0x1FFFFFFFFL);
            equal(repeat('a', 256), XSI_AIS_JOBINFO_JOBLOG_job_name_get(log, null), "job_name");
            equal(repeat('e', 8), XSI_AIS_JOBINFO_JOBLOG_dept_code_get(log, null), "dept_code");
            equal(repeat('f', 32), XSI_AIS_JOBINFO_JOBLOG_dept_name_get(log, null), "dept_name");
            equal(5, XSI_AIS_JOBINFO_JOBLOG_job_type_get(log, null), "job_type before the texts");
            equal(4294967295L, XSI_AIS_JOBINFO_JOBLOG_start_time_get(log, null), "start_time after the texts");

            XSI_AIS_JOBINFO_SEND_INFO_destination_name_set(send, null, repeat('g', 200));
            XSI_AIS_JOBINFO_SEND_INFO_result_set(send, null, 2);
            equal(repeat('g', 128), XSI_AIS_JOBINFO_SEND_INFO_destination_name_get(send, null), "destination_name");
            equal(2, XSI_AIS_JOBINFO_SEND_INFO_result_get(send, null), "result after the name");

            // A nested record is read and written in place, inside its owner.
            long detail = XSI_AIS_JOBINFO_SEND_INFO_detail_get(send, null);
            long pc = XSI_AIS_JOBINFO_SEND_INFO_DETAIL_pc_get(detail, null);
            XSI_AIS_JOBINFO_SEND_INFO_PC_host_name_set(pc, null, repeat('h', 400));
            equal(repeat('h', 384), XSI_AIS_JOBINFO_SEND_INFO_PC_host_name_get(
                    XSI_AIS_JOBINFO_SEND_INFO_DETAIL_pc_get(XSI_AIS_JOBINFO_SEND_INFO_detail_get(send, null), null), null),
                    "host_name through the owner");
        } finally {
            delete_XSI_AIS_JOBINFO_SEND_INFO(send);
            delete_XSI_AIS_JOBINFO_JOBLOG(log);
        }
    }

    /** The job state record, exposed by this module as well: its fields narrower than Java's. */
    public static void jobState() {
        long s = new_XSI_AIS_JOB_STATE();
        try {
            XSI_AIS_JOB_STATE_user_job_id_set(s, null, 0x1FFFFFFFFL);
            XSI_AIS_JOB_STATE_job_mode_set(s, null, 65535);
            XSI_AIS_JOB_STATE_user_name_set(s, null, repeat('u', 130));
            XSI_AIS_JOB_STATE_out_dev_set(s, null, (short) 300);
            equal(4294967295L, XSI_AIS_JOB_STATE_user_job_id_get(s, null), "user_job_id, low 32 bits");
            equal(65535, XSI_AIS_JOB_STATE_job_mode_get(s, null), "job_mode");
            equal(repeat('u', 128), XSI_AIS_JOB_STATE_user_name_get(s, null), "user_name");
            equal((short) 44, XSI_AIS_JOB_STATE_out_dev_get(s, null), "out_dev, one byte");
        } finally {
            delete_XSI_AIS_JOB_STATE(s);
        }
    }
}
