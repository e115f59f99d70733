package orvane.qsf.controller.event.device;

/**
 * One entry of the data read from a card. A sector-organised card (type A) gives sector numbers and, per
 * sector, its blocks; a system-organised card gives its system code, service codes and, per service, its
 * blocks. Blocks are 16 bytes each; one element of the block data carries all blocks of one sector or service.
 */
public class SystemData {
    private int systemCode;
    private int[] serviceCode;
    private int[] sectorNum;
    private byte[][] blockData;

    public SystemData() {}

    public void setSystemCode(int systemCode) {
        this.systemCode = systemCode;
    }

    public int getSystemCode() {
        return systemCode;
    }

    public void setServiceCode(int[] serviceCode) {
        this.serviceCode = serviceCode;
    }

    public int[] getServiceCode() {
        return serviceCode;
    }

    public void setSectorNum(int[] sectorNum) {
        this.sectorNum = sectorNum;
    }

    public int[] getSectorNum() {
        return sectorNum;
    }

    public void setBlockData(byte[][] blockData) {
        this.blockData = blockData;
    }

    public byte[][] getBlockData() {
        return blockData;
    }
}
