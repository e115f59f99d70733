package orvane.qsf.box.document;

import java.util.Date;

/** What a removable-memory listing tells of a file or folder. Its fields are filled by the native box module. */
public class RemovableMemoryFileInfoImpl {
    private String name;
    private long datasize;
    private Date date;
    private String path;

    public RemovableMemoryFileInfoImpl() {}

    public String getName() {
        return name;
    }

    public long getDataSize() {
        return datasize;
    }

    public Date getDate() {
        return date;
    }

    public String getPath() {
        return path;
    }

    @Override
    public String toString() {
        return name + "|" + datasize + "|" + date + "|" + path;
    }
}
