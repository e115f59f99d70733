package orvane.qsf.box.document;

/** A document stored in a user box. Its fields are filled by the native box module. */
public class DocumentImpl {
    private long docid;
    private DocumentInfoImpl info;
    private long boxid;
    private String passwd;
    private long certid;

    public DocumentImpl() {}

    public long getDocumentId() {
        return docid;
    }

    public DocumentInfoImpl getInfo() {
        return info;
    }

    public long getBoxId() {
        return boxid;
    }

    public String getBoxPassword() {
        return passwd;
    }

    public long getCertId() {
        return certid;
    }

    @Override
    public String toString() {
        return docid + "|" + info + "|" + boxid + "|" + passwd + "|" + certid;
    }
}
