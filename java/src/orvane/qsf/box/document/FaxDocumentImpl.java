package orvane.qsf.box.document;

/** A document stored in a fax box. Its fields are filled by the native box module. */
public class FaxDocumentImpl {
    private long docid;
    private DocumentInfoImpl info;
    private long boxid;
    private String passwd;

    public FaxDocumentImpl() {}

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

    @Override
    public String toString() {
        return docid + "|" + info + "|" + boxid + "|" + passwd;
    }
}
