package orvane.qsf.controller.event.job;

/** One printed page. */
public class PrintPageInfo {
    private long userJobId;
    private long pageNum;
    private int outputDev;
    private int inputDev;
    private int customX;
    private int customY;
    private int paperSize;
    private int paperType;
    private int paperDir;
    private int paperWeight;
    private int duplex;
    private int staple;
    private int punch;
    private int colorMode;

    public PrintPageInfo() {}

    public void setUserJobId(long v) { userJobId = v; }
    public void setPageNum(long v) { pageNum = v; }
    public void setOutputDev(int v) { outputDev = v; }
    public void setInputDev(int v) { inputDev = v; }
    public void setCustomX(int v) { customX = v; }
    public void setCustomY(int v) { customY = v; }
    public void setPaperSize(int v) { paperSize = v; }
    public void setPaperType(int v) { paperType = v; }
    public void setPaperDir(int v) { paperDir = v; }
    public void setPaperWeight(int v) { paperWeight = v; }
    public void setDuplex(int v) { duplex = v; }
    public void setStaple(int v) { staple = v; }
    public void setPunch(int v) { punch = v; }
    public void setColorMode(int v) { colorMode = v; }

    public long getUserJobId() { return userJobId; }
    public long getPageNum() { return pageNum; }
    public int getOutputDev() { return outputDev; }
    public int getInputDev() { return inputDev; }
    public int getCustomX() { return customX; }
    public int getCustomY() { return customY; }
    public int getPaperSize() { return paperSize; }
    public int getPaperType() { return paperType; }
    public int getPaperDir() { return paperDir; }
    public int getPaperWeight() { return paperWeight; }
    public int getDuplex() { return duplex; }
    public int getStaple() { return staple; }
    public int getPunch() { return punch; }
    public int getColorMode() { return colorMode; }

    @Override
    public String toString() {
        return "PrintPageInfo{userJobId=" + userJobId + ", pageNum=" + pageNum + ", outputDev=" + outputDev
                + ", inputDev=" + inputDev + ", customX=" + customX + ", customY=" + customY + ", paperSize="
                + paperSize + ", paperType=" + paperType + ", paperDir=" + paperDir + ", paperWeight="
                + paperWeight + ", duplex=" + duplex + ", staple=" + staple + ", punch=" + punch + ", colorMode="
                + colorMode + "}";
    }
}
