package com.example.scanapp;

import java.nio.charset.StandardCharsets;
import orvane.address.SearchKey;
import orvane.qsf.address.PersonalAddressImpl;
import orvane.qsf.controller.event.proxy.EventLog;
import orvane.qsf.wrapper.address.cmt_address_book_moduleJNI;
import orvane.qsf.wrapper.device.attribute.CMT_SystemInformationJNI;
import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;
import orvane.qsf.wrapper.job.qsf_fnd_job_moduleJNI;
import orvane.qsf.wrapper.storage.xdof_strg_storageJNI;
import orvane.qsf.wrapper.system.cmt_commonJNI;
import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/**
 * An application of the device that scans for its users: it logs a user in, scans into one of the user's
 * boxes or to an e-mail address it finds in the address book, follows the jobs through the device's events,
 * reads the page counters, keeps a report in the device's storage, and logs the user out.
 *
 * <p>Create one while the application runs and close it at the end: it brings the bridge up and starts the
 * device's events reaching {@link #jobs()}.
 */
public final class ScanApp implements AutoCloseable {
    // The device's values.
    private static final int AUTH_MODE_LOCAL = 1;
    private static final int CATEGORY_SEND = 3;
    private static final int CATEGORY_BOX = 5;
    private static final int BOX_JOB_STORE = 3;
    private static final int SETTING_MAIL_SUBJECT = 11;
    private static final int ADDRESS_MAIL = 3;
    private static final int MAIL_TO = 0;
    private static final int SEARCH_PERSONAL = 1;
    private static final int COUNT_PRINT_TOTAL = 0;
    private static final int COUNT_SCAN_TOTAL = 4;
    private static final int STORAGE_HDD = 0;
    private static final int AREA_APPLICATION = 0;
    private static final int OPEN_WRITE = 3;

    private static boolean bridgeUp;

    private final JobMonitor jobs = new JobMonitor();
    private final long events;

    /** Brings the bridge up (once per process) and starts receiving the device's events. */
    public ScanApp() {
        startBridge();
        EventLog.addListener(jobs);
        events = qsf_fnd_eventJNI.new_qsf_fnd_event_manager();
        qsf_fnd_eventJNI.qsf_fnd_event_manager_init(events, null);
    }

    private static synchronized void startBridge() {
        if (!bridgeUp) {
            System.loadLibrary("jbrgCMT");
            long init = cmt_commonJNI.new_cmt_init();
            cmt_commonJNI.cmt_init_init(init, null);
            cmt_commonJNI.delete_cmt_init(init);
            bridgeUp = true;
        }
    }

    /** The jobs as the device's events report them. */
    public JobMonitor jobs() {
        return jobs;
    }

    @Override
    public void close() {
        qsf_fnd_eventJNI.qsf_fnd_event_manager_terminate(events, null);
        qsf_fnd_eventJNI.delete_qsf_fnd_event_manager(events);
        EventLog.removeListener(jobs);
    }

    private static void check(String step, long result) throws DeviceException {
        if (result != 0) {
            throw new DeviceException(step, result);
        }
    }

    // ---- Users ----------------------------------------------------------------------------------------

    /**
     * Logs a user of the device in.
     *
     * @return the login's certificate id, which the user's jobs are made with
     * @throws DeviceException with code 1 (wrong password), 2 (no such user), 5 (too many logins), 4 (other)
     */
    public long login(String loginName, String password) throws DeviceException {
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long cert = qsf_fnd_userJNI.new_QSF_FND_CERTIFICATE_ID();
        try {
            check("login " + loginName, qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_0(auth, null, loginName,
                    password, AUTH_MODE_LOCAL, cert, null));
            return qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_get(cert, null);
        } finally {
            qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
            qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
        }
    }

    /** Ends a login. */
    public void logout(long certId) throws DeviceException {
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        try {
            check("logout", qsf_fnd_userJNI.qsf_fnd_authentication_logout(auth, null, certId));
        } finally {
            qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
        }
    }

    // ---- Jobs -----------------------------------------------------------------------------------------

    /**
     * Scans the originals into a box of the logged-in user.
     *
     * @return the user job id, to follow in {@link #jobs()}
     */
    public long scanToBox(long certId, long boxId, String boxPassword) throws DeviceException {
        long proxy = qsf_fnd_job_moduleJNI.new_qsf_fnd_job_proxy();
        long setting = qsf_fnd_job_moduleJNI.new_XSI_AIS_BOX_JOB_INIT_SETTING();
        try {
            long handler = newJobInfo(proxy, CATEGORY_BOX, certId);
            qsf_fnd_job_moduleJNI.XSI_AIS_BOX_JOB_INIT_SETTING_box_job_type_set(setting, null, BOX_JOB_STORE);
            qsf_fnd_job_moduleJNI.XSI_AIS_BOX_JOB_INIT_SETTING_box_id_set(setting, null, boxId);
            qsf_fnd_job_moduleJNI.XSI_AIS_BOX_JOB_INIT_SETTING_box_pass_set(setting, null, boxPassword);
            check("prepare the box job", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_box_job_prepare(proxy, null, handler,
                    setting, null));
            return start(proxy, CATEGORY_BOX, handler);
        } finally {
            qsf_fnd_job_moduleJNI.delete_XSI_AIS_BOX_JOB_INIT_SETTING(setting);
            qsf_fnd_job_moduleJNI.delete_qsf_fnd_job_proxy(proxy);
        }
    }

    /**
     * Scans the originals and sends them by e-mail to the person of the address book whose name starts with
     * {@code name}.
     *
     * @return the user job id, to follow in {@link #jobs()}
     * @throws DeviceException when the address book has no e-mail address for the name (code -1), or a step fails
     */
    public long scanToEmail(long certId, String name, String subject) throws DeviceException {
        String to = mailAddressOf(name);
        long proxy = qsf_fnd_job_moduleJNI.new_qsf_fnd_job_proxy();
        long info = qsf_fnd_job_moduleJNI.new_XSI_AIS_JOB_SEND_INFO();
        try {
            long handler = newJobInfo(proxy, CATEGORY_SEND, certId);
            check("set the subject", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_set_value__SWIG_1(proxy, null, handler,
                    SETTING_MAIL_SUBJECT, subject));
            qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_address_type_set(info, null, ADDRESS_MAIL);
            long detail = qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_detail_get(info, null);
            long mail = qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_DETAIL_mail_info_get(detail, null);
            qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_MAIL_address_type_set(mail, null, MAIL_TO);
            qsf_fnd_job_moduleJNI.XSI_AIS_JOB_SEND_INFO_MAIL_mail_address_set(mail, null, to);
            long[] address = {0};
            check("add the destination " + to, qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_add_send_address(proxy, null,
                    handler, address, info, null));
            return start(proxy, CATEGORY_SEND, handler);
        } finally {
            qsf_fnd_job_moduleJNI.delete_XSI_AIS_JOB_SEND_INFO(info);
            qsf_fnd_job_moduleJNI.delete_qsf_fnd_job_proxy(proxy);
        }
    }

    private static long newJobInfo(long proxy, int category, long certId) throws DeviceException {
        long[] handler = {0};
        check("make the job settings", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_generate_jobinfo__SWIG_0(proxy, null,
                category, handler, certId));
        return handler[0];
    }

    private static long start(long proxy, int category, long handler) throws DeviceException {
        long[] service = {0};
        check("create the job", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_create_job(proxy, null, category, handler,
                service));
        long[] userJob = {0};
        check("start the job", qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_start(proxy, null, service[0], userJob));
        return userJob[0];
    }

    /** The e-mail address of the first personal address whose name starts with {@code name}. */
    private static String mailAddressOf(String name) throws DeviceException {
        long book = cmt_address_book_moduleJNI.new_cmt_address_book();
        try {
            PersonalAddressImpl[] found = (PersonalAddressImpl[]) cmt_address_book_moduleJNI
                    .cmt_address_book_search_address(book, null, SEARCH_PERSONAL, new SearchKey(name));
            if (found == null || found.length == 0 || found[0].getEmail() == null) {
                throw new DeviceException("find an e-mail address for " + name, -1);
            }
            return found[0].getEmail().getMailAddress();
        } finally {
            cmt_address_book_moduleJNI.delete_cmt_address_book(book);
        }
    }

    // ---- Counters and storage -------------------------------------------------------------------------

    /** Pages the device has scanned in all, of every size and colour. */
    public long scannedPages() throws DeviceException {
        return count(COUNT_SCAN_TOTAL);
    }

    /** Pages the device has printed in all. */
    public long printedPages() throws DeviceException {
        return count(COUNT_PRINT_TOTAL);
    }

    private static long count(int kind) throws DeviceException {
        long info = CMT_SystemInformationJNI.new_CMT_System_Info();
        long query = CMT_SystemInformationJNI.new_XSI_PBFS_COUNT_INFO();
        try {
            CMT_SystemInformationJNI.XSI_PBFS_COUNT_INFO_count_kind_set(query, null, kind);
            long[] count = {0};
            check("read the page counter", CMT_SystemInformationJNI.CMT_System_Info_get_count(info, null, query, null,
                    count));
            return count[0];
        } finally {
            CMT_SystemInformationJNI.delete_XSI_PBFS_COUNT_INFO(query);
            CMT_SystemInformationJNI.delete_CMT_System_Info(info);
        }
    }

    /**
     * Keeps a text file in the application's storage area, replacing one of the same path.
     *
     * @throws DeviceException code 35 when the medium is full, 29 when the area cannot be written
     */
    public void saveReport(String path, String text) throws DeviceException {
        byte[] bytes = text.getBytes(StandardCharsets.UTF_8);
        long[] handle = {0};
        check("open " + path, xdof_strg_storageJNI.xdof_strg_storageio_open(STORAGE_HDD, AREA_APPLICATION, path,
                OPEN_WRITE, handle));
        long[] done = {0};
        int written = xdof_strg_storageJNI.xdof_strg_storageio_write(bytes, bytes.length, handle[0], done);
        int closed = xdof_strg_storageJNI.xdof_strg_storageio_close(handle[0]);
        check("write " + path, written);
        check("close " + path, closed);
    }
}
