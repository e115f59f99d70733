package jbrg.test.job;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.throwsWith;
import static orvane.qsf.wrapper.job.qsf_fnd_job_moduleJNI.*;

import java.nio.charset.StandardCharsets;

/** The job module as a Java application uses it; the native test checks what reached the device. */
public final class JobModule {
    private JobModule() {}

    // The job service's numbers, as the applications' own constants carry them.
    private static final int COPY = 1;
    private static final int SCAN = 2;
    private static final int SEND = 3;
    private static final int DIRECT_PRINT = 6;
    private static final int COPIES = 1;
    private static final int FILE_NAME = 10;
    private static final int ZOOM_XY = 2;
    private static final int KIND_ALL = 0;
    private static final int MAIL = 3;

    private static byte[] ascii(String s) {
        return s.getBytes(StandardCharsets.US_ASCII);
    }

    /** Bad arguments throw before anything reaches the device (the native side checks the call log). */
    public static void badArguments() {
        long p = new_qsf_fnd_job_proxy();
        try {
            throwsWith(NullPointerException.class, "null std::string",
                    () -> qsf_fnd_job_proxy_set_value__SWIG_1(p, null, 1L, FILE_NAME, null));
            throwsWith(NullPointerException.class, "array null",
                    () -> qsf_fnd_job_proxy_generate_jobinfo__SWIG_1(p, null, COPY, null));
            throwsWith(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                    () -> qsf_fnd_job_proxy_generate_jobinfo__SWIG_0(p, null, COPY, new long[0], 5L));
            throwsWith(IndexOutOfBoundsException.class, "Array must contain at least 1 element",
                    () -> qsf_fnd_job_proxy_get_start_phb(p, null, 1L, new boolean[0]));
            throwsWith(NullPointerException.class, "XSI_AIS_JOB_SEND_INFO const & reference is null",
                    () -> qsf_fnd_job_proxy_add_send_address(p, null, 1L, new long[1], 0L, null));
            throwsWith(NullPointerException.class, "XSI_AIS_JOB_SEND_INFO & reference is null",
                    () -> qsf_fnd_job_proxy_get_send_address(p, null, 1L, 1L, 0L, null));
            throwsWith(NullPointerException.class, "std::vector< unsigned int > & reference is null",
                    () -> qsf_fnd_job_proxy_get_job_list(p, null, KIND_ALL, 0L, null));
            throwsWith(NullPointerException.class, "XSI_AIS_JOB_GET_SCAN_DATA & reference is null",
                    () -> qsf_fnd_job_proxy_get_scan_data(p, null, 1L, 0L, null));
            throwsWith(NullPointerException.class, "null array",
                    () -> qsf_fnd_job_proxy_write_stream_data(p, null, 2001L, 4L, null, 1));
            // A size beyond the array given would have the record filled from past its end.
            throwsWith(IndexOutOfBoundsException.class, "incorrect array size",
                    () -> qsf_fnd_job_proxy_write_stream_data(p, null, 2001L, 5L, new byte[4], 1));
            // A zero proxy handle reaches nothing.
            equal(0, qsf_fnd_job_proxy_cancel__SWIG_0(0L, null, 7L), "cancel through a zero handle");
            equal(null, qsf_fnd_job_proxy_get_value__SWIG_1(0L, null, 1L, FILE_NAME), "text through a zero handle");
        } finally {
            delete_qsf_fnd_job_proxy(p);
        }
    }

    /** A send job from its settings to its cancellation. */
    public static void sendJob() {
        long p = new_qsf_fnd_job_proxy();
        long info = new_XSI_AIS_JOB_SEND_INFO();
        long read = new_XSI_AIS_JOB_SEND_INFO();
        long ids = new_vectorl__SWIG_0();
        try {
            long[] handler = {99L};
            // The certificate id is the device's unsigned long: a Java long keeps its low 32 bits.
            equal(0, qsf_fnd_job_proxy_generate_jobinfo__SWIG_0(p, null, SEND, handler, 0x100000042L), "generate");
            equal(1L, handler[0], "handler id");
            long h = handler[0];
            equal(0, qsf_fnd_job_proxy_set_value__SWIG_2(p, null, h, COPIES, 3L), "integer setting");
            equal(0, qsf_fnd_job_proxy_set_value__SWIG_1(p, null, h, FILE_NAME, "report"), "text setting");
            equal(0, qsf_fnd_job_proxy_set_value__SWIG_0(p, null, h, ZOOM_XY, 50L, 70L, 4294967295L), "three values");
            long[] v = new long[1];
            equal(0, qsf_fnd_job_proxy_get_value__SWIG_0(p, null, h, COPIES, v), "get integer");
            equal(3L, v[0], "copies");
            equal("report", qsf_fnd_job_proxy_get_value__SWIG_1(p, null, h, FILE_NAME), "get text");
            equal("", qsf_fnd_job_proxy_get_value__SWIG_1(p, null, 99L, FILE_NAME), "text of an unknown set");
            long[] a = new long[1], b = new long[1], c = new long[1];
            equal(0, qsf_fnd_job_proxy_get_value__SWIG_2(p, null, h, ZOOM_XY, a, b, c), "get three values");
            equal(new long[] {50L, 70L, 4294967295L}, new long[] {a[0], b[0], c[0]}, "three values, unsigned");

            XSI_AIS_JOB_SEND_INFO_address_type_set(info, null, MAIL);
            long mail = XSI_AIS_JOB_SEND_INFO_DETAIL_mail_info_get(XSI_AIS_JOB_SEND_INFO_detail_get(info, null), null);
            XSI_AIS_JOB_SEND_INFO_MAIL_mail_address_set(mail, null, "a@example.com");
            long[] address = new long[1];
            equal(0, qsf_fnd_job_proxy_add_send_address(p, null, h, address, info, null), "add destination");
            equal(1L, address[0], "address id");
            equal(0, qsf_fnd_job_proxy_get_send_address_id(p, null, h, ids, null), "destination ids");
            equal(1L, vectorl_size(ids, null), "one destination");
            equal(1L, vectorl_get(ids, null, 0), "its id");
            equal(0, qsf_fnd_job_proxy_get_send_address(p, null, h, 1L, read, null), "read destination");
            long readMail = XSI_AIS_JOB_SEND_INFO_DETAIL_mail_info_get(XSI_AIS_JOB_SEND_INFO_detail_get(read, null), null);
            equal("a@example.com", XSI_AIS_JOB_SEND_INFO_MAIL_mail_address_get(readMail, null), "mail address");
            equal(3L, XSI_AIS_JOB_SEND_INFO_address_type_get(read, null), "address type");

            boolean[] phb = {true};
            equal(0, qsf_fnd_job_proxy_get_start_phb(p, null, h, phb), "start prohibition");
            equal(false, phb[0], "may start");
            int[] disabled = new int[1];
            equal(0, qsf_fnd_job_proxy_get_disable_info(p, null, h, 0, disabled), "disable info");
            equal(18, disabled[0], "colour modes disabled");

            long[] service = new long[1];
            long[] job = new long[1];
            equal(0, qsf_fnd_job_proxy_create_job(p, null, SEND, h, service), "create");
            equal(0, qsf_fnd_job_proxy_start(p, null, service[0], job), "start");
            equal(1001L, service[0], "service id");
            equal(2001L, job[0], "user job id");
            equal(0, qsf_fnd_job_proxy_cancel__SWIG_1(p, null, job[0], 0x100000043L), "cancel with certificate");
            equal(15, qsf_fnd_job_proxy_cancel__SWIG_0(p, null, 7L), "cancel of an unknown job");

            equal(0, qsf_fnd_job_proxy_delete_jobinfo(p, null, h), "delete");
        } finally {
            delete_XSI_AIS_JOB_SEND_INFO(info);
            delete_XSI_AIS_JOB_SEND_INFO(read);
            delete_vectorl(ids);
            delete_qsf_fnd_job_proxy(p);
        }
    }

    /** A stream print job fed from Java, then scan data and OCR lines read back as byte arrays. */
    public static void streamsAndScans() {
        long p = new_qsf_fnd_job_proxy();
        long scan = new_XSI_AIS_JOB_GET_SCAN_DATA();
        long ocr = new_XSI_AIS_JOB_GET_OCR_DATA();
        try {
            long[] h = new long[1], service = new long[1], job = new long[1];
            equal(0, qsf_fnd_job_proxy_generate_jobinfo__SWIG_1(p, null, DIRECT_PRINT, h), "print set");
            equal(0, qsf_fnd_job_proxy_direct_print_prepare__SWIG_1(p, null, h[0], 1), "stream form");
            equal(0, qsf_fnd_job_proxy_create_job(p, null, DIRECT_PRINT, h[0], service), "create");
            equal(0, qsf_fnd_job_proxy_start(p, null, service[0], job), "start");
            byte[] chunk = ascii("%PDF-1.4 hello");
            equal(0, qsf_fnd_job_proxy_write_stream_data(p, null, job[0], chunk.length, chunk, 0), "first chunk");
            equal(ascii("%PDF-1.4 hello"), chunk, "the array is written back unchanged");
            equal(0, qsf_fnd_job_proxy_write_stream_data(p, null, job[0], 4L, ascii("%EOF"), 1), "last chunk");
            equal(8, qsf_fnd_job_proxy_write_stream_data(p, null, job[0], 0L, new byte[0], 1),
                    "the ended stream takes nothing more");
            // The path form passes a null text as a null pointer, which the device refuses.
            equal(8, qsf_fnd_job_proxy_direct_print_prepare__SWIG_0(p, null, h[0], "/mnt/usb", null), "null name");

            long[] sh = new long[1], ss = new long[1], sj = new long[1];
            equal(0, qsf_fnd_job_proxy_generate_jobinfo__SWIG_1(p, null, SCAN, sh), "scan set");
            equal(0, qsf_fnd_job_proxy_create_job(p, null, SCAN, sh[0], ss), "create scan");
            equal(0, qsf_fnd_job_proxy_start(p, null, ss[0], sj), "start scan");
            equal(ascii("page "), qsf_fnd_job_proxy_get_scan_data(p, null, sj[0], scan, null), "first chunk");
            equal(0L, XSI_AIS_JOB_GET_SCAN_DATA_doc_state_get(scan, null), "within the page");
            equal(ascii("one"), qsf_fnd_job_proxy_get_scan_data(p, null, sj[0], scan, null), "second chunk");
            equal(1L, XSI_AIS_JOB_GET_SCAN_DATA_doc_state_get(scan, null), "end of the page");
            equal(null, qsf_fnd_job_proxy_get_scan_data(p, null, 4242L, scan, null), "no such job");

            equal(ascii("Invoice"), qsf_fnd_job_proxy_get_ocr_text_data(p, null, sh[0], ocr, null), "first line");
            long text = XSI_AIS_JOB_OCR_DATA_text_data_get(XSI_AIS_JOB_GET_OCR_DATA_ocr_data_get(ocr, null), null);
            equal(1L, XSI_AIS_JOB_GET_OCR_DATA_ocr_data_category_get(ocr, null), "a text line");
            equal("Invoice", XSI_AIS_JOB_OCR_TEXT_DATA_text_data_get(text, null), "its text field");
            long rect = XSI_AIS_JOB_OCR_TEXT_DATA_line_rect_get(text, null);
            equal(120L, XSI_AIS_JOB_OCR_RECT_right_get(rect, null), "its rectangle");
            equal(ascii("Total 42"), qsf_fnd_job_proxy_get_ocr_text_data(p, null, sh[0], ocr, null), "second line");
            equal(1L, XSI_AIS_JOB_GET_OCR_DATA_retrieve_state_get(ocr, null), "the last record");
            equal(null, qsf_fnd_job_proxy_get_ocr_text_data(p, null, sh[0], ocr, null), "no more lines");
        } finally {
            delete_XSI_AIS_JOB_GET_SCAN_DATA(scan);
            delete_XSI_AIS_JOB_GET_OCR_DATA(ocr);
            delete_qsf_fnd_job_proxy(p);
        }
    }

    /** The job records as the device lays them out: field widths, and the members that share storage. */
    public static void records() {
        long ftp = new_XSI_AIS_JOB_SEND_INFO_FTP();
        long list = new_XSI_AIS_JOB_LIST();
        long stream = new_XSI_AIS_JOB_WRITE_STREAM_DATA();
        long line = new_XSI_AIS_JOB_OCR_TEXT_DATA();
        long detail = new_XSI_AIS_JOB_SEND_INFO_DETAIL();
        long state = new_XSI_AIS_JOB_STATE();
        long phb = new_XSI_AIS_PHB_INFO_DETAIL();
        try {
            String host = "h".repeat(70);
            XSI_AIS_JOB_SEND_INFO_FTP_host_name_set(ftp, null, host);
            equal(host.substring(0, 64), XSI_AIS_JOB_SEND_INFO_FTP_host_name_get(ftp, null), "host name cut to 64");
            XSI_AIS_JOB_SEND_INFO_FTP_port_num_set(ftp, null, 0x100000015L);
            equal(21L, XSI_AIS_JOB_SEND_INFO_FTP_port_num_get(ftp, null), "port keeps the low 32 bits");

            long[] ids = {1L, 2L, 3L, 4L, 5L, 6L, 7L, 8L, 9L, 4294967295L};
            XSI_AIS_JOB_LIST_job_id_set(list, null, ids);
            equal(ids, XSI_AIS_JOB_LIST_job_id_get(list, null), "ten job ids");

            byte[] data = new byte[16384];
            data[0] = -1;
            data[16383] = 42;
            XSI_AIS_JOB_WRITE_STREAM_DATA_stream_data_set(stream, null, data);
            equal(data, XSI_AIS_JOB_WRITE_STREAM_DATA_stream_data_get(stream, null), "stream data");

            XSI_AIS_JOB_OCR_TEXT_DATA_block_no_set(line, null, 65537);
            equal(1, XSI_AIS_JOB_OCR_TEXT_DATA_block_no_get(line, null), "16-bit block number");

            // The detail records hold one meaningful member: they share their storage.
            XSI_AIS_JOB_SEND_INFO_FTP_host_name_set(XSI_AIS_JOB_SEND_INFO_DETAIL_ftp_info_get(detail, null), null,
                    "shared");
            equal("shared", XSI_AIS_JOB_SEND_INFO_SMB_host_name_get(
                    XSI_AIS_JOB_SEND_INFO_DETAIL_smb_info_get(detail, null), null), "one storage for the members");
            XSI_AIS_PHB_INFO_DETAIL_start_info_set(phb, null, 5L);
            equal(5L, XSI_AIS_PHB_INFO_DISABLE_setting_id_get(XSI_AIS_PHB_INFO_DETAIL_disable_info_get(phb, null), null),
                    "start info and the disable record share their first word");

            XSI_AIS_JOB_STATE_in_dev_set(state, null, (short) 258);
            equal((short) 2, XSI_AIS_JOB_STATE_in_dev_get(state, null), "input device is a byte");
        } finally {
            delete_XSI_AIS_JOB_SEND_INFO_FTP(ftp);
            delete_XSI_AIS_JOB_LIST(list);
            delete_XSI_AIS_JOB_WRITE_STREAM_DATA(stream);
            delete_XSI_AIS_JOB_OCR_TEXT_DATA(line);
            delete_XSI_AIS_JOB_SEND_INFO_DETAIL(detail);
            delete_XSI_AIS_JOB_STATE(state);
            delete_XSI_AIS_PHB_INFO_DETAIL(phb);
        }
    }

    /** The id vector, and the size constants the record fields are cut to (their values are the device's). */
    public static void constantsAndVectors() {
        equal(385, XSI_AIS_JOB_SMB_HOST_NAME_SIZE_get(), "a text size: the usable length and its terminator");
        equal(16384, XSI_AIS_JOB_WRITE_STREAM_DATA_SIZE_get(), "a byte size, as the stream record holds it");

        long v = new_vectorl__SWIG_1(3L);
        try {
            equal(3L, vectorl_size(v, null), "made with a size");
            equal(false, vectorl_isEmpty(v, null), "not empty");
            vectorl_set(v, null, 1, 4294967295L);
            vectorl_add(v, null, 7L);
            equal(4294967295L, vectorl_get(v, null, 1), "unsigned element");
            equal(7L, vectorl_get(v, null, 3), "added element");
            throwsWith(IndexOutOfBoundsException.class, "vector index out of range", () -> vectorl_get(v, null, 4));
            throwsWith(IndexOutOfBoundsException.class, "vector index out of range", () -> vectorl_set(v, null, -1, 1L));
            vectorl_reserve(v, null, 50L);
            equal(true, vectorl_capacity(v, null) >= 50L, "reserved");
            vectorl_clear(v, null);
            equal(true, vectorl_isEmpty(v, null), "cleared");
        } finally {
            delete_vectorl(v);
        }
    }
}
