package orvane.qsf.box.document;

/** A print job kept on the device for retention. Its fields are filled by the native box module. */
public class JobDocumentImpl {
    private long docid;
    private JobDocumentInfoImpl info;
    private JobDocumentDetailInfoImpl detail_info;

    public JobDocumentImpl() {}

    public long getDocumentId() {
        return docid;
    }

    public JobDocumentInfoImpl getInfo() {
        return info;
    }

    public JobDocumentDetailInfoImpl getDetailInfo() {
        return detail_info;
    }

    @Override
    public String toString() {
        return docid + "|" + info + "|" + detail_info;
    }
}
