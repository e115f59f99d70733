package orvane.qsf.box.document;

import orvane.box.document.attribute.Resolution;
import orvane.box.document.attribute.StoringSize;

/** The details of a kept print job. Its fields are filled by the native box module. */
public class JobDocumentDetailInfoImpl {
    private long pagecount;
    private Resolution resolution;
    private StoringSize storingsize;

    public JobDocumentDetailInfoImpl() {}

    public long getPageCount() {
        return pagecount;
    }

    public Resolution getResolution() {
        return resolution;
    }

    public StoringSize getStoringSize() {
        return storingsize;
    }

    @Override
    public String toString() {
        return pagecount + "|" + resolution + "|" + storingsize;
    }
}
