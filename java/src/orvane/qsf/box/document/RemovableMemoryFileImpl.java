package orvane.qsf.box.document;

/** A file or folder of a removable memory. Its fields are filled by the native box module. */
public class RemovableMemoryFileImpl {
    private RemovableMemoryFileInfoImpl info;
    private boolean isfile;

    public RemovableMemoryFileImpl() {}

    public RemovableMemoryFileInfoImpl getInfo() {
        return info;
    }

    public boolean isFile() {
        return isfile;
    }

    @Override
    public String toString() {
        return info + "|" + isfile;
    }
}
