package orvane.qsf.box.document;

import java.util.Date;
import orvane.box.document.attribute.ColorMode;
import orvane.box.document.attribute.Resolution;
import orvane.box.document.attribute.StoringSize;

/** What a box listing tells of a stored document. Its fields are filled by the native box module. */
public class DocumentInfoImpl {
    private String docname;
    private long pagecount;
    private Resolution resolution;
    private StoringSize storingsize;
    private ColorMode color;
    private Date date;
    private long datasize;

    public DocumentInfoImpl() {}

    public String getDocumentName() {
        return docname;
    }

    public long getPageCount() {
        return pagecount;
    }

    public Resolution getResolution() {
        return resolution;
    }

    public StoringSize getStoringSize() {
        return storingsize;
    }

    public ColorMode getColor() {
        return color;
    }

    public Date getDate() {
        return date;
    }

    public long getDataSize() {
        return datasize;
    }

    @Override
    public String toString() {
        return docname + "|" + pagecount + "|" + resolution + "|" + storingsize + "|" + color + "|" + date + "|" + datasize;
    }
}
