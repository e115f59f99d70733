package jbrg.test.box;

import static jbrg.test.Check.equal;
import static jbrg.test.Check.that;
import static jbrg.test.Logins.login;
import static jbrg.test.Logins.logout;
import static orvane.qsf.wrapper.box.qsf_fnd_document_box_moduleJNI.*;

import java.util.ArrayList;
import java.util.List;
import orvane.box.attribute.DeleteSetting;
import orvane.box.attribute.OverwriteSetting;
import orvane.box.attribute.OwnerType;
import orvane.box.attribute.Permission;
import orvane.box.document.attribute.ColorMode;
import orvane.box.document.attribute.JobRetentionType;
import orvane.box.document.attribute.Resolution;
import orvane.box.document.attribute.StoringSize;
import orvane.qsf.box.FaxBoxImpl;
import orvane.qsf.box.UserBoxDetailInfoImpl;
import orvane.qsf.box.UserBoxImpl;
import orvane.qsf.box.UserBoxInfoImpl;
import orvane.qsf.box.document.DocumentImpl;
import orvane.qsf.box.document.DocumentInfoImpl;
import orvane.qsf.box.document.FaxDocumentImpl;
import orvane.qsf.box.document.JobDocumentDetailInfoImpl;
import orvane.qsf.box.document.JobDocumentImpl;
import orvane.qsf.box.document.RemovableMemoryFileImpl;

/** The document box module as a Java application uses it, on the devices of the C++ suites in tests/box. */
public final class BoxModule {
    private BoxModule() {}

    static long boxes() {
        return qsf_fnd_user_box_manager_qsf_fnd_get_instance();
    }

    static long documents() {
        return qsf_fnd_document_manager_qsf_fnd_get_instance();
    }

    static long jobDocuments() {
        return qsf_fnd_job_document_manager_qsf_fnd_get_instance();
    }

    static long faxBoxes() {
        return qsf_fnd_fax_box_manager_qsf_fnd_get_instance();
    }

    /** A box description as an application fills one. */
    static long description(int number, String name, String login, int ownerType, int share, long capacity,
            String password) {
        long d = new_QSF_FND_BOX_DETAIL_INFO();
        QSF_FND_BOX_DETAIL_INFO_box_number_set(d, null, number);
        QSF_FND_BOX_DETAIL_INFO_box_name_set(d, null, name);
        QSF_FND_BOX_DETAIL_INFO_box_owner_login_name_set(d, null, login);
        QSF_FND_BOX_DETAIL_INFO_box_owner_name_set(d, null, login.isEmpty() ? "" : login.toUpperCase());
        QSF_FND_BOX_DETAIL_INFO_box_owner_type_set(d, null, ownerType);
        QSF_FND_BOX_DETAIL_INFO_box_share_set(d, null, share);
        QSF_FND_BOX_DETAIL_INFO_box_capacity_set(d, null, capacity);
        QSF_FND_BOX_DETAIL_INFO_box_preservation_period_set(d, null, (short) 7);
        QSF_FND_BOX_DETAIL_INFO_box_data_update_set(d, null, 1);
        QSF_FND_BOX_DETAIL_INFO_box_doc_delete_after_job_set(d, null, 1);
        QSF_FND_BOX_DETAIL_INFO_box_pw_set(d, null, password);
        return d;
    }

    static int add(long description) {
        int r = qsf_fnd_user_box_manager_qsf_fnd_add_box__SWIG_0(boxes(), null, description, null);
        delete_QSF_FND_BOX_DETAIL_INFO(description);
        return r;
    }

    static int addAs(long description, long cert) {
        int r = qsf_fnd_user_box_manager_qsf_fnd_add_box__SWIG_1(boxes(), null, description, null, cert);
        delete_QSF_FND_BOX_DETAIL_INFO(description);
        return r;
    }

    @SuppressWarnings("unchecked")
    static List<UserBoxImpl> list() {
        return (List<UserBoxImpl>) qsf_fnd_user_box_manager_qsf_fnd_get_user_box_list__SWIG_0(boxes(), null);
    }

    static UserBoxImpl numbered(int number) {
        for (UserBoxImpl b : list()) {
            if (b.getInfo().getBoxNumber() == number) {
                return b;
            }
        }
        throw new AssertionError("no box " + number);
    }

    static String describe(List<UserBoxImpl> list) {
        StringBuilder s = new StringBuilder();
        for (UserBoxImpl b : list) {
            s.append(b).append('{').append(b.getInfo()).append("}\n");
        }
        return s.toString();
    }

    /** Boxes made through the module come back in the listing with everything they were made with. */
    public static void boxesAreAddedListedAndDescribed() {
        long space = qsf_fnd_user_box_manager_qsf_fnd_get_user_box_available_space__SWIG_0(boxes(), null);
        equal(0, list().size(), "an empty device lists no box");
        equal(0, add(description(1, "Scans", "alice", 0, 1, 100, "1234")), "add 1");
        // Nobody owns a box without an owner login name, whatever its owner type says.
        equal(0, add(description(2, "Team", "", 1, 0, 0, "")), "add 2");
        equal(0, add(description(3, "Net", "bob", 1, 0, 50, "")), "add 3");
        equal(space - 150, qsf_fnd_user_box_manager_qsf_fnd_get_user_box_available_space__SWIG_0(boxes(), null),
                "the boxes' capacities are reserved");

        List<UserBoxImpl> boxes = list();
        equal(ArrayList.class, boxes.getClass(), "a java.util.ArrayList");
        equal(3, boxes.size(), "three boxes");
        UserBoxInfoImpl one = boxes.get(0).getInfo();
        equal("Scans|alice|ALICE||" + OwnerType.LOCAL_USER + "|" + Permission.SHARED + "|0|0",
                one.getBoxName() + "|" + one.getOwnerLoginName() + "|" + one.getOwnerUserName() + "|"
                        + one.getOwnerDomainName() + "|" + one.getOwnerType() + "|" + one.getPermission() + "|"
                        + one.getCurrentSize() + "|" + one.getDocumentCount(),
                "box 1");
        equal(OwnerType.NO_OWNER, boxes.get(1).getInfo().getOwnerType(), "box 2 has no owner");
        equal(OwnerType.NETWORK_USER, boxes.get(2).getInfo().getOwnerType(), "box 3");
        equal(Permission.NOT_SHARED, boxes.get(2).getInfo().getPermission(), "box 3 is not shared");
        for (UserBoxImpl b : boxes) {
            that(b.exists() && b.getBoxId() != 0 && b.getDetail() == null && b.getCertId() == 0,
                    "a listed box exists, has an id and no details: " + b);
        }
        that(boxes.get(0).getBoxId() != boxes.get(1).getBoxId(), "ids differ");

        long id = boxes.get(0).getBoxId();
        UserBoxDetailInfoImpl detail = new UserBoxDetailInfoImpl();
        equal(0, qsf_fnd_user_box_manager_qsf_fnd_get_user_box_detail_info__SWIG_0(boxes(), null, id, "1234", detail),
                "detail");
        equal("100|" + DeleteSetting.ON + "|7|" + OverwriteSetting.PERMIT + "|1234",
                detail.getMaxSize() + "|" + detail.getDeleteSetting() + "|" + detail.getPeriod() + "|"
                        + detail.getOverwriteSetting() + "|" + detail.getPassword(),
                "the details");
        UserBoxDetailInfoImpl untouched = new UserBoxDetailInfoImpl();
        equal(3, qsf_fnd_user_box_manager_qsf_fnd_get_user_box_detail_info__SWIG_0(boxes(), null, id, "nope", untouched),
                "wrong password");
        equal(2, qsf_fnd_user_box_manager_qsf_fnd_get_user_box_detail_info__SWIG_0(boxes(), null, 999, "", untouched),
                "no such box");
        equal(null, untouched.getPassword(), "a failed detail fills nothing");
        equal(1, qsf_fnd_user_box_manager_qsf_fnd_get_user_box_detail_info__SWIG_0(boxes(), null, id, "1234", "no"),
                "the detail object must be a UserBoxDetailInfoImpl");
    }

    /** Every failed change answers its code and leaves the device's boxes as they were. */
    public static void failedChangesChangeNothing() {
        equal(0, add(description(1, "Scans", "alice", 0, 1, 100, "1234")), "add 1");
        String before = describe(list());
        long id = numbered(1).getBoxId();
        equal(4, add(description(1, "Again", "", 0, 0, 0, "")), "number in use");
        equal(6, add(description(9, "Huge", "", 0, 0, 0x7FFFFFFFL, "")), "no room");
        char[] name = new char[193];
        java.util.Arrays.fill(name, 'n');
        equal(1, add(description(9, new String(name), "", 0, 0, 0, "")), "a name longer than its field");
        equal(1, add(description(9, "Pw", "", 0, 0, 0, "12345678901234567")), "a password longer than its field");
        long update = description(5, "Renamed", "alice", 0, 1, 10, "1234");
        equal(2, qsf_fnd_user_box_manager_qsf_fnd_update_box__SWIG_0(boxes(), null, 999, "1234", update, null),
                "update a missing box");
        equal(3, qsf_fnd_user_box_manager_qsf_fnd_update_box__SWIG_0(boxes(), null, id, "bad", update, null),
                "update with a wrong password");
        equal(3, qsf_fnd_user_box_manager_qsf_fnd_delete_box__SWIG_0(boxes(), null, id, "bad"), "delete, wrong password");
        equal(2, qsf_fnd_user_box_manager_qsf_fnd_delete_box__SWIG_0(boxes(), null, 999, ""), "delete a missing box");
        equal(before, describe(list()), "nothing changed");

        // 64 characters of three bytes each fill a name of 193 bytes exactly.
        String euros = new String(new char[64]).replace('\0', '\u20ac');
        QSF_FND_BOX_DETAIL_INFO_box_name_set(update, null, euros);
        equal(0, qsf_fnd_user_box_manager_qsf_fnd_update_box__SWIG_0(boxes(), null, id, "1234", update, null), "update");
        equal(euros + "|5", numbered(5).getInfo().getBoxName() + "|" + numbered(5).getInfo().getBoxNumber(), "renamed");
        delete_QSF_FND_BOX_DETAIL_INFO(update);
        equal(0, qsf_fnd_user_box_manager_qsf_fnd_delete_box__SWIG_0(boxes(), null, id, "1234"), "delete");
        equal(0, list().size(), "gone");
    }

    /** The certificate forms act for a login, and a stale certificate changes nothing. */
    public static void certificateForms() {
        long cert = login("alice", "wonder");
        equal(0, addAs(description(1, "Mine", "alice", 0, 0, 10, ""), cert), "add as alice");
        @SuppressWarnings("unchecked")
        List<UserBoxImpl> mine = (List<UserBoxImpl>) qsf_fnd_user_box_manager_qsf_fnd_get_user_box_list__SWIG_1(
                boxes(), null, cert);
        equal(1, mine.size(), "alice's box");
        equal(cert, mine.get(0).getCertId(), "the listing's certificate");
        long id = mine.get(0).getBoxId();
        that(qsf_fnd_user_box_manager_qsf_fnd_get_user_box_available_space__SWIG_1(boxes(), null, cert) > 0, "space");
        UserBoxDetailInfoImpl detail = new UserBoxDetailInfoImpl();
        equal(0, qsf_fnd_user_box_manager_qsf_fnd_get_user_box_detail_info__SWIG_1(boxes(), null, id, "", detail, cert),
                "detail as alice");
        logout(cert);
        equal(9, qsf_fnd_user_box_manager_qsf_fnd_delete_box__SWIG_1(boxes(), null, id, "", cert), "stale delete");
        equal(9, addAs(description(2, "Late", "", 0, 0, 0, ""), cert), "stale add");
        equal(null, qsf_fnd_user_box_manager_qsf_fnd_get_user_box_list__SWIG_1(boxes(), null, cert), "stale list");
        equal(9, qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_1(boxes(), null, id, "", new ArrayList<>(),
                cert), "stale document list");
        equal(9, qsf_fnd_document_manager_qsf_fnd_delete_document__SWIG_2(documents(), null, id, "", 1, cert),
                "stale document delete");
        equal(1, list().size(), "the box is still there");
    }

    /** Box 1 of the device holds the documents the C++ suite stored; they come back as DocumentImpl objects. */
    public static void documentsComeBackAsObjects() {
        UserBoxImpl box = numbered(1);
        List<DocumentImpl> docs = new ArrayList<>();
        equal(0, qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_0(boxes(), null, box.getBoxId(), "1234", docs),
                "list");
        equal(4, docs.size(), "four documents");
        DocumentImpl first = docs.get(0);
        DocumentInfoImpl info = first.getInfo();
        equal("scan-1|3|" + Resolution.R600x600 + "|" + StoringSize.HAGAKI + "|" + ColorMode.COLOR + "|2048",
                info.getDocumentName() + "|" + info.getPageCount() + "|" + info.getResolution() + "|"
                        + info.getStoringSize() + "|" + info.getColor() + "|" + info.getDataSize(),
                "document 1 (size code 31 is HAGAKI for a box document)");
        equal(box.getBoxId() + "|1234|0", first.getBoxId() + "|" + first.getBoxPassword() + "|" + first.getCertId(),
                "the box and password asked with");
        // The seconds of the device's date, in local time; the milliseconds are those of the conversion.
        equal(String.format("%tF %<tT", new java.util.Date(1697321600000L)), String.format("%tF %<tT", info.getDate()),
                "the date");
        equal(StoringSize.UNKNOWN, docs.get(1).getInfo().getStoringSize(), "code 24 is no box size");
        equal(StoringSize.NONSTANDARD, docs.get(2).getInfo().getStoringSize(), "kind 2");
        equal(StoringSize.UNKNOWN, docs.get(3).getInfo().getStoringSize(), "code 255");
        equal(Resolution.UNKNOWN, docs.get(3).getInfo().getResolution(), "resolution 0");
        that(first.getDocumentId() != docs.get(1).getDocumentId(), "ids differ");

        equal(3, qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_0(boxes(), null, box.getBoxId(), "x",
                new ArrayList<>()), "wrong password");
        equal(1, qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_0(boxes(), null, box.getBoxId(), "1234",
                new java.util.LinkedList<>()), "only an ArrayList is filled");
        long doc = first.getDocumentId();
        equal(3, qsf_fnd_document_manager_qsf_fnd_delete_document__SWIG_0(documents(), null, box.getBoxId(), "x", doc),
                "delete, wrong password");
        equal(0, qsf_fnd_document_manager_qsf_fnd_delete_document__SWIG_0(documents(), null, box.getBoxId(), "1234", doc),
                "delete");
        equal(7, qsf_fnd_document_manager_qsf_fnd_delete_document__SWIG_0(documents(), null, box.getBoxId(), "1234", doc),
                "delete again");
        equal(2, qsf_fnd_document_manager_qsf_fnd_delete_document__SWIG_0(documents(), null, 999, "", doc), "no box");
        equal(3, numbered(1).getInfo().getDocumentCount(), "three left");
    }

    /** Every document of a box without a password, however many; their count. */
    public static int listAll(long box) {
        List<DocumentImpl> docs = new ArrayList<>();
        int r = qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_0(boxes(), null, box, "", docs);
        return r == 0 ? docs.size() : -r;
    }

    public static int boxCount() {
        return list().size();
    }

    /** The job-retention box 0 as the C++ suite filled it. */
    public static void retainedPrintJobs() {
        List<JobDocumentImpl> docs = new ArrayList<>();
        equal(0, qsf_fnd_job_document_manager_qsf_fnd_get_job_retention_doc_list(jobDocuments(), null, 0, docs), "list");
        equal(250, docs.size(), "all of them");
        JobDocumentImpl first = docs.get(0);
        equal("job-0|carol|" + JobRetentionType.QUICK + "|1000", first.getInfo().getDocumentName() + "|"
                + first.getInfo().getUserName() + "|" + first.getInfo().getType() + "|" + first.getInfo().getDataSize(),
                "the first");
        equal(null, first.getDetailInfo(), "no details in a listing");
        JobDocumentDetailInfoImpl detail = new JobDocumentDetailInfoImpl();
        equal(0, qsf_fnd_job_document_manager_qsf_fnd_get_job_document_detail_info(jobDocuments(), null,
                first.getDocumentId(), "", detail), "detail");
        equal("2|" + Resolution.R300x300 + "|" + StoringSize.SIZE_11_X_15, detail.getPageCount() + "|"
                + detail.getResolution() + "|" + detail.getStoringSize(), "size code 31 of a job");
        long last = docs.get(249).getDocumentId();
        equal(3, qsf_fnd_job_document_manager_qsf_fnd_get_job_document_detail_info(jobDocuments(), null, last, "x",
                new JobDocumentDetailInfoImpl()), "a private print's password");
        equal(3, qsf_fnd_job_document_manager_qsf_fnd_delete_job_retention_document(jobDocuments(), null, 0, last, "x"),
                "delete, wrong password");
        equal(0, qsf_fnd_job_document_manager_qsf_fnd_delete_job_retention_document(jobDocuments(), null, 0, last,
                "pin"), "delete");
        equal(7, qsf_fnd_job_document_manager_qsf_fnd_delete_job_retention_document(jobDocuments(), null, 0, last,
                "pin"), "delete again");
    }

    /** Fax boxes, in chunks, and their documents. */
    public static void faxBoxes120() {
        for (int i = 1; i <= 120; i++) {
            long d = description(i, "Fax " + i, i == 1 ? "" : "dave", 1, 0, 0, i == 1 ? "9" : "");
            equal(0, qsf_fnd_fax_box_manager_qsf_fnd_add_fax_box(faxBoxes(), null, d, null), "add fax " + i);
            delete_QSF_FND_BOX_DETAIL_INFO(d);
        }
        List<FaxBoxImpl> list = new ArrayList<>();
        equal(0, qsf_fnd_fax_box_manager_qsf_fnd_get_fax_box_list(faxBoxes(), null, list), "list");
        equal(120, list.size(), "all fax boxes");
        equal(OwnerType.NO_OWNER, list.get(0).getInfo().getOwnerType(), "no owner login");
        equal(OwnerType.NETWORK_USER + "|Fax 120", list.get(119).getInfo().getOwnerType() + "|"
                + list.get(119).getInfo().getBoxName(), "the last");
        long id = list.get(0).getBoxId();
        List<FaxDocumentImpl> docs = new ArrayList<>();
        equal(3, qsf_fnd_fax_box_manager_qsf_fnd_get_fax_document_list(faxBoxes(), null, id, "x", docs), "password");
        equal(0, qsf_fnd_fax_box_manager_qsf_fnd_get_fax_document_list(faxBoxes(), null, id, "9", docs), "documents");
        equal(0, docs.size(), "none yet");
        equal(2, qsf_fnd_fax_box_manager_qsf_fnd_delete_fax_box(faxBoxes(), null, 9999, ""), "no such fax box");
        equal(0, qsf_fnd_fax_box_manager_qsf_fnd_delete_fax_box(faxBoxes(), null, id, "9"), "delete");
        equal(0, list().size(), "fax boxes are not user boxes");
    }

    /** The removable memory's top folder as the C++ suite laid it out. */
    public static void removableMemory() {
        List<RemovableMemoryFileImpl> files = new ArrayList<>();
        equal(0, qsf_fnd_document_manager_qsf_fnd_get_easy_box_list(documents(), null, "/", files), "list /");
        equal(2, files.size(), "a file and a folder");
        RemovableMemoryFileImpl file = files.get(0);
        equal("a.pdf|/a.pdf|5|true", file.getInfo().getName() + "|" + file.getInfo().getPath() + "|"
                + file.getInfo().getDataSize() + "|" + file.isFile(), "the file");
        equal(false, files.get(1).isFile(), "the folder");
        that(file.getInfo().getDate() != null, "a date");
        List<RemovableMemoryFileImpl> none = new ArrayList<>();
        equal(0, qsf_fnd_document_manager_qsf_fnd_get_easy_box_list(documents(), null, "/scans", none), "empty folder");
        equal(0, none.size(), "nothing in it");
        equal(1, qsf_fnd_document_manager_qsf_fnd_get_easy_box_list(documents(), null, "/nowhere", none), "no folder");
        equal(0, qsf_fnd_document_manager_qsf_fnd_delete_document__SWIG_1(documents(), null, "/a.pdf"), "delete");
        equal(8, qsf_fnd_document_manager_qsf_fnd_delete_document__SWIG_1(documents(), null, "/a.pdf"), "delete again");
    }

    /** The describers Java may make itself set only objects of their own class. */
    public static void describersRefuseForeignObjects() {
        long d = new_qsf_fnd_user_box_detail_info();
        Object detail = qsf_fnd_user_box_detail_info_create_detail_info(d, null);
        equal(UserBoxDetailInfoImpl.class, detail.getClass(), "created");
        that(qsf_fnd_user_box_detail_info_set_field_ow_set(d, null, detail, 0), "UNKNOWN");
        equal(OverwriteSetting.UNKNOWN, ((UserBoxDetailInfoImpl) detail).getOverwriteSetting(), "0 is UNKNOWN");
        that(qsf_fnd_user_box_detail_info_set_field_ow_set(d, null, detail, 3), "3");
        equal(null, ((UserBoxDetailInfoImpl) detail).getOverwriteSetting(), "3 is none");
        that(!qsf_fnd_user_box_detail_info_set_field_passwd(d, null, "a string", "x"), "another class");
        that(!qsf_fnd_user_box_detail_info_set_field_passwd(d, null, null, "x"), "null");
        delete_qsf_fnd_user_box_detail_info(d);

        long b = new_qsf_fnd_user_box();
        Object box = qsf_fnd_user_box_create_user_box(b, null);
        that(!qsf_fnd_user_box_set_field_info(b, null, box, detail), "a detail is no info");
        that(qsf_fnd_user_box_set_field_detail_info(b, null, box, detail), "a detail is a detail");
        that(qsf_fnd_user_box_set_field_box_id(b, null, box, -1L), "id");
        equal(4294967295L, ((UserBoxImpl) box).getBoxId(), "ids are unsigned 32-bit");
        delete_qsf_fnd_user_box(b);

        long j = new_qsf_fnd_job_document_info();
        Object info = qsf_fnd_job_document_info_create_job_document_info(j, null);
        that(qsf_fnd_job_document_info_set_field_retention_type(j, null, info, 4), "type 4");
        that(!qsf_fnd_job_document_info_set_field_retention_type(j, null, detail, 1), "another class");
        delete_qsf_fnd_job_document_info(j);
    }
}
