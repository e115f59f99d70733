package orvane.qsf.box.document;

import java.util.Date;
import orvane.box.document.attribute.JobRetentionType;

/** What a retention listing tells of a kept print job. Its fields are filled by the native box module. */
public class JobDocumentInfoImpl {
    private String docname;
    private Date date;
    private long datasize;
    private String username;
    private JobRetentionType type;

    public JobDocumentInfoImpl() {}

    public String getDocumentName() {
        return docname;
    }

    public Date getDate() {
        return date;
    }

    public long getDataSize() {
        return datasize;
    }

    public String getUserName() {
        return username;
    }

    public JobRetentionType getType() {
        return type;
    }

    @Override
    public String toString() {
        return docname + "|" + date + "|" + datasize + "|" + username + "|" + type;
    }
}
