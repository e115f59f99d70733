package orvane.qsf.controller.event.device;

/** A card the IC card reader read: its id, its type as one bit, and the data read from it. */
public class ICCardInfo {
    private String cardId;
    private byte cardType;
    private SystemData[] systemData;

    public ICCardInfo() {}

    public void setCardId(String cardId) {
        this.cardId = cardId;
    }

    public String getCardId() {
        return cardId;
    }

    /** The card type: 1, 2, 4, 8, 16 or 32 for the reader's types 0 to 5, 0 for a type the reader does not name. */
    public void setCardType(byte cardType) {
        this.cardType = cardType;
    }

    public byte getCardType() {
        return cardType;
    }

    public void setSystemData(SystemData[] systemData) {
        this.systemData = systemData;
    }

    public SystemData[] getSystemData() {
        return systemData;
    }
}
