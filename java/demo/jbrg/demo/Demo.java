package jbrg.demo;

import java.util.ArrayList;
import java.util.List;
import orvane.address.SearchKey;
import orvane.qsf.address.PersonalAddressImpl;
import orvane.qsf.box.UserBoxImpl;
import orvane.qsf.box.document.DocumentImpl;
import orvane.qsf.box.document.DocumentInfoImpl;
import orvane.qsf.controller.event.proxy.EventLog;
import orvane.qsf.wrapper.address.cmt_address_book_moduleJNI;
import orvane.qsf.wrapper.box.qsf_fnd_document_box_moduleJNI;
import orvane.qsf.wrapper.device.attribute.CMT_SystemInformationJNI;
import orvane.qsf.user.UserImpl;
import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;
import orvane.qsf.wrapper.job.qsf_fnd_job_moduleJNI;
import orvane.qsf.wrapper.system.cmt_commonJNI;
import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/**
 * A Java application's typical request on the device: bring the bridge up, log a user in, build a job that
 * scans and sends by e-mail to an address it finds in the address book, create and start it, store a scan in
 * a box of the user's and list the box, and log out; and read the device's page counters before and after
 * the jobs. Run with JBRG_TRACE=1 to see the bridge's trace lines on standard error.
 */
public final class Demo {
    // Values of the device's job service and authentication service.
    private static final int AUTH_MODE_LOCAL = 1;
    private static final int CATEGORY_SEND = 3;
    private static final int SETTING_RESOLUTION = 5;
    private static final int SETTING_MAIL_SUBJECT = 11;
    private static final int ADDRESS_MAIL = 3;
    private static final int MAIL_TO = 0;
    private static final int KIND_ALL = 0;
    private static final int CATEGORY_BOX = 5;
    private static final int BOX_JOB_STORE = 3;
    // Page counters of the device's system information: kinds, and the colour of a count (0 counts all).
    private static final int COUNT_PRINT_TOTAL = 0;
    private static final int COUNT_SCAN_TOTAL = 4;
    private static final int COUNT_COLOR_MONO = 1;
    private static final int COUNT_COLOR_FULL = 2;

    private Demo() {}

    private static void check(String step, int result) {
        System.out.printf("  %-40s result %d%n", step, result);
        if (result != 0) {
            throw new IllegalStateException(step + " failed with " + result);
        }
    }

    public static void main(String[] args) {
        System.loadLibrary("jbrgCMT");
        long init = cmt_commonJNI.new_cmt_init();
        cmt_commonJNI.cmt_init_init(init, null);
        cmt_commonJNI.delete_cmt_init(init);
        System.out.println("bridge initialised: Java VM found, platform service clients and storage started");
        long events = qsf_fnd_eventJNI.new_qsf_fnd_event_manager();
        qsf_fnd_eventJNI.qsf_fnd_event_manager_init(events, null);
        System.out.println("event manager initialised: the device's events now reach the Java proxies");

        times();
        users();
        pageCounters("before the jobs");
        scanToEmail();
        scanToBox();
        pageCounters("after the jobs");

        qsf_fnd_eventJNI.qsf_fnd_event_manager_terminate(events, null);
        qsf_fnd_eventJNI.delete_qsf_fnd_event_manager(events);
    }

    /** Waits (at most five seconds) until the job's completion has reached Java, and prints what arrived. */
    private static void printEvents() {
        long end = System.currentTimeMillis() + 5000;
        while (System.currentTimeMillis() < end && !String.join(" ", EventLog.all()).contains("COMPLETE")) {
            try {
                Thread.sleep(20);
            } catch (InterruptedException e) {
                Thread.currentThread().interrupt();
                return;
            }
        }
        System.out.println("  events from the device, as the Java proxies received them on the platform's threads:");
        for (String event : EventLog.all()) {
            System.out.println("    " + event);
        }
    }

    private static String value(orvane.user.attribute.UserAttribute attribute) {
        return attribute == null ? "-" : attribute.getValue();
    }

    private static void times() {
        System.out.println();
        System.out.println("cmt_time of a few instants (UTC calendar fields):");
        long[] instants = {0L, 86399L, 1709208000L, 2147483647L, 2147483648L, 0x100000000L + 86399L};
        for (long seconds : instants) {
            long time = cmt_commonJNI.new_cmt_time__SWIG_1(seconds);
            System.out.printf("  %12d s -> %04d-%02d-%02d %02d:%02d:%02d%n", seconds,
                    cmt_commonJNI.cmt_time_getYear(time, null), cmt_commonJNI.cmt_time_getMonth(time, null),
                    cmt_commonJNI.cmt_time_getDate(time, null), cmt_commonJNI.cmt_time_getHour(time, null),
                    cmt_commonJNI.cmt_time_getMinute(time, null), cmt_commonJNI.cmt_time_getSecond(time, null));
            cmt_commonJNI.delete_cmt_time(time);
        }
        System.out.println("  (2147483648 is before 1970 as the device's signed 32-bit time and keeps the epoch;");
        System.out.println("   a Java long keeps its low 32 bits, so 4295053695 reads as 86399)");
        long now = cmt_commonJNI.new_cmt_time__SWIG_0();
        System.out.printf("  local zone now: daylight saving %d, GMT offset %d s%n",
                cmt_commonJNI.cmt_time_getDaylightTime(now, null), cmt_commonJNI.cmt_time_getGMToffset(now, null));
        cmt_commonJNI.delete_cmt_time(now);
    }

    private static void users() {
        System.out.println();
        System.out.println("local users of the device:");
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        ArrayList<Object> list = new ArrayList<>();
        check("get_local_user_list", qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(auth, null, list));
        for (Object o : list) {
            UserImpl user = (UserImpl) o;
            System.out.printf("    %-8s %-14s %-20s %s%n", value(user.getLoginName()), value(user.getUserName()),
                    value(user.getMailAddress()), value(user.getAccessLevel()));
        }
        qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
    }

    private static void scanToEmail() {
        System.out.println();
        System.out.println("scan to e-mail on behalf of alice:");
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long cert = qsf_fnd_userJNI.new_QSF_FND_CERTIFICATE_ID();
        long jobs = qsf_fnd_job_moduleJNI.new_qsf_fnd_job_proxy();
        long info = qsf_fnd_job_moduleJNI.new_XSI_AIS_JOB_SEND_INFO();
        try {
            check("login alice",
                    qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_0(auth, null, "alice", "wonder",
                            AUTH_MODE_LOCAL, cert, null));
            long certId = qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_get(cert, null);
            System.out.printf("    certificate id %d%n", certId);

            long[] handler = {0};
            check("generate_jobinfo (send, with certificate)",
                    qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_generate_jobinfo__SWIG_0(jobs, null, CATEGORY_SEND,
                            handler, certId));
            System.out.printf("    handler id %d%n", handler[0]);
            check("set_value resolution 300",
                    qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_set_value__SWIG_2(jobs, null, handler[0],
                            SETTING_RESOLUTION, 300L));
            check("set_value mail subject",
                    qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_set_value__SWIG_1(jobs, null, handler[0],
                            SETTING_MAIL_SUBJECT, "Scanned from the device"));

            qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_address_type_set(info, null, ADDRESS_MAIL);
            long detail = qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_detail_get(info, null);
            long mail = qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_DETAIL_mail_info_get(detail, null);
            qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_MAIL_address_type_set(mail, null, MAIL_TO);
            String to = mailAddressOf("Alice");
            qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_MAIL_mail_address_set(mail, null, to);
            long[] address = {0};
            check("add_send_address " + to,
                    qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_add_send_address(jobs, null, handler[0], address, info,
                            null));
            System.out.printf("    address id %d%n", address[0]);

            long[] service = {0};
            check("create_job",
                    qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_create_job(jobs, null, CATEGORY_SEND, handler[0],
                            service));
            System.out.printf("    service id %d%n", service[0]);
            long[] userJob = {0};
            check("start", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_start(jobs, null, service[0], userJob));
            System.out.printf("    user job id %d%n", userJob[0]);
            printEvents();

            long ids = qsf_fnd_job_moduleJNI.new_vectorl__SWIG_0();
            check("get_job_list", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_get_job_list(jobs, null, KIND_ALL, ids,
                    null));
            StringBuilder listed = new StringBuilder();
            for (int i = 0; i < qsf_fnd_job_moduleJNI.vectorl_size(ids, null); i++) {
                listed.append(' ').append(qsf_fnd_job_moduleJNI.vectorl_get(ids, null, i));
            }
            System.out.println("    jobs on the device:" + listed);
            qsf_fnd_job_moduleJNI.delete_vectorl(ids);

            check("logout", qsf_fnd_userJNI.qsf_fnd_authentication_logout(auth, null, certId));
            System.out.printf("  a second logout of the same certificate: result %d (invalid certificate)%n",
                    qsf_fnd_userJNI.qsf_fnd_authentication_logout(auth, null, certId));
        } finally {
            qsf_fnd_job_moduleJNI.delete_XSI_AIS_JOB_SEND_INFO(info);
            qsf_fnd_job_moduleJNI.delete_qsf_fnd_job_proxy(jobs);
            qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
            qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
        }
    }

    private static long count(long info, int kind, int color) {
        long query = CMT_SystemInformationJNI.new_XSI_PBFS_COUNT_INFO();
        CMT_SystemInformationJNI.XSI_PBFS_COUNT_INFO_count_kind_set(query, null, kind);
        CMT_SystemInformationJNI.XSI_PBFS_COUNT_INFO_color_info_set(query, null, color);
        long[] count = {0};
        long result = CMT_SystemInformationJNI.CMT_System_Info_get_count(info, null, query, null, count);
        CMT_SystemInformationJNI.delete_XSI_PBFS_COUNT_INFO(query);
        if (result != 0) {
            throw new IllegalStateException("get_count failed with " + result);
        }
        return count[0];
    }

    /** The device's page counters, of every paper size. */
    private static void pageCounters(String when) {
        long info = CMT_SystemInformationJNI.new_CMT_System_Info();
        try {
            System.out.println();
            System.out.printf("page counters %s: printed %d, scanned %d (%d mono, %d colour)%n", when,
                    count(info, COUNT_PRINT_TOTAL, 0), count(info, COUNT_SCAN_TOTAL, 0),
                    count(info, COUNT_SCAN_TOTAL, COUNT_COLOR_MONO), count(info, COUNT_SCAN_TOTAL, COUNT_COLOR_FULL));
        } finally {
            CMT_SystemInformationJNI.delete_CMT_System_Info(info);
        }
    }

    /** Alice makes herself a box, scans a document into it through a box job, and lists the box. */
    @SuppressWarnings("unchecked")
    private static void scanToBox() {
        System.out.println();
        System.out.println("scan to a box on behalf of alice:");
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long cert = qsf_fnd_userJNI.new_QSF_FND_CERTIFICATE_ID();
        long jobs = qsf_fnd_job_moduleJNI.new_qsf_fnd_job_proxy();
        long boxes = qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_get_instance();
        long box = qsf_fnd_document_box_moduleJNI.new_QSF_FND_BOX_DETAIL_INFO();
        long setting = qsf_fnd_job_moduleJNI.new_XSI_AIS_BOX_JOB_INIT_SETTING();
        try {
            check("login alice", qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_0(auth, null, "alice", "wonder",
                    AUTH_MODE_LOCAL, cert, null));
            long certId = qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_get(cert, null);
            qsf_fnd_document_box_moduleJNI.QSF_FND_BOX_DETAIL_INFO_box_number_set(box, null, 1);
            qsf_fnd_document_box_moduleJNI.QSF_FND_BOX_DETAIL_INFO_box_name_set(box, null, "Alice's scans");
            qsf_fnd_document_box_moduleJNI.QSF_FND_BOX_DETAIL_INFO_box_owner_login_name_set(box, null, "alice");
            qsf_fnd_document_box_moduleJNI.QSF_FND_BOX_DETAIL_INFO_box_owner_name_set(box, null, "Alice Archer");
            qsf_fnd_document_box_moduleJNI.QSF_FND_BOX_DETAIL_INFO_box_capacity_set(box, null, 100);
            qsf_fnd_document_box_moduleJNI.QSF_FND_BOX_DETAIL_INFO_box_pw_set(box, null, "1234");
            check("add_box 1 (with certificate)",
                    qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_add_box__SWIG_1(boxes, null, box,
                            null, certId));
            List<UserBoxImpl> mine = (List<UserBoxImpl>) qsf_fnd_document_box_moduleJNI
                    .qsf_fnd_user_box_manager_qsf_fnd_get_user_box_list__SWIG_1(boxes, null, certId);
            UserBoxImpl made = mine.get(0);
            System.out.printf("    box id %d: number %d, \"%s\", owner %s (%s), %s%n", made.getBoxId(),
                    made.getInfo().getBoxNumber(), made.getInfo().getBoxName(), made.getInfo().getOwnerLoginName(),
                    made.getInfo().getOwnerType(), made.getInfo().getPermission());

            long[] handler = {0};
            check("generate_jobinfo (box, with certificate)",
                    qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_generate_jobinfo__SWIG_0(jobs, null, CATEGORY_BOX,
                            handler, certId));
            qsf_fnd_job_moduleJNI.XSI_AIS_BOX_JOB_INIT_SETTING_box_job_type_set(setting, null, BOX_JOB_STORE);
            qsf_fnd_job_moduleJNI.XSI_AIS_BOX_JOB_INIT_SETTING_box_id_set(setting, null, made.getBoxId());
            qsf_fnd_job_moduleJNI.XSI_AIS_BOX_JOB_INIT_SETTING_box_pass_set(setting, null, "1234");
            check("box_job_prepare (store)",
                    qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_box_job_prepare(jobs, null, handler[0], setting, null));
            long[] service = {0};
            check("create_job", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_create_job(jobs, null, CATEGORY_BOX,
                    handler[0], service));
            long[] userJob = {0};
            check("start", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_start(jobs, null, service[0], userJob));
            System.out.printf("    user job id %d, scanning into the box%n", userJob[0]);

            // The document is in the box once the job has ended.
            List<DocumentImpl> docs = new ArrayList<>();
            long end = System.currentTimeMillis() + 5000;
            int listed = 0;
            while (listed == 0 && docs.isEmpty() && System.currentTimeMillis() < end) {
                sleep(20);
                listed = qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_1(
                        boxes, null, made.getBoxId(), "1234", docs, certId);
            }
            check("get_document_list", listed);
            System.out.println("    documents in the box:");
            for (DocumentImpl doc : docs) {
                DocumentInfoImpl info = doc.getInfo();
                System.out.printf("      %d \"%s\": %d pages, %s, %s, %s, %d bytes%n", doc.getDocumentId(),
                        info.getDocumentName(), info.getPageCount(), info.getResolution(), info.getStoringSize(),
                        info.getColor(), info.getDataSize());
            }
            check("logout", qsf_fnd_userJNI.qsf_fnd_authentication_logout(auth, null, certId));
            System.out.printf("  the box's documents with the ended certificate: result %d (login error)%n",
                    qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_1(boxes,
                            null, made.getBoxId(), "1234", new ArrayList<DocumentImpl>(), certId));
        } finally {
            qsf_fnd_job_moduleJNI.delete_XSI_AIS_BOX_JOB_INIT_SETTING(setting);
            qsf_fnd_document_box_moduleJNI.delete_QSF_FND_BOX_DETAIL_INFO(box);
            qsf_fnd_job_moduleJNI.delete_qsf_fnd_job_proxy(jobs);
            qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
            qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
        }
    }

    private static void sleep(long millis) {
        try {
            Thread.sleep(millis);
        } catch (InterruptedException e) {
            Thread.currentThread().interrupt();
        }
    }

    /** The e-mail address of the first personal address whose name starts with `name`, from the address book. */
    private static String mailAddressOf(String name) {
        long book = cmt_address_book_moduleJNI.new_cmt_address_book();
        try {
            PersonalAddressImpl[] found = (PersonalAddressImpl[]) cmt_address_book_moduleJNI
                    .cmt_address_book_search_address(book, null, 1, new SearchKey(name));
            if (found == null || found.length == 0 || found[0].getEmail() == null) {
                throw new IllegalStateException("no e-mail address for " + name + " in the address book");
            }
            System.out.printf("    address book: \"%s\" (number %d) has the e-mail address %s%n",
                    found[0].getName().getName(), found[0].getNumber(), found[0].getEmail().getMailAddress());
            return found[0].getEmail().getMailAddress();
        } finally {
            cmt_address_book_moduleJNI.delete_cmt_address_book(book);
        }
    }
}
