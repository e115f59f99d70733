package orvane.qsf.controller.event.job;

/** One scanned page. */
public class ScanPageInfo {
    private long userJobId;
    private long pageNum;
    private int customX;
    private int customY;
    private int paperSize;
    private int paperDir;
    private int duplex;
    private int colorMode;
    private int resolution;

    public ScanPageInfo() {}

    public void setUserJobId(long v) { userJobId = v; }
    public void setPageNum(long v) { pageNum = v; }
    public void setCustomX(int v) { customX = v; }
    public void setCustomY(int v) { customY = v; }
    public void setPaperSize(int v) { paperSize = v; }
    public void setPaperDir(int v) { paperDir = v; }
    public void setDuplex(int v) { duplex = v; }
    public void setColorMode(int v) { colorMode = v; }
    public void setResolution(int v) { resolution = v; }

    public long getUserJobId() { return userJobId; }
    public long getPageNum() { return pageNum; }
    public int getCustomX() { return customX; }
    public int getCustomY() { return customY; }
    public int getPaperSize() { return paperSize; }
    public int getPaperDir() { return paperDir; }
    public int getDuplex() { return duplex; }
    public int getColorMode() { return colorMode; }
    public int getResolution() { return resolution; }

    @Override
    public String toString() {
        return "ScanPageInfo{userJobId=" + userJobId + ", pageNum=" + pageNum + ", customX=" + customX
                + ", customY=" + customY + ", paperSize=" + paperSize + ", paperDir=" + paperDir + ", duplex="
                + duplex + ", colorMode=" + colorMode + ", resolution=" + resolution + "}";
    }
}
