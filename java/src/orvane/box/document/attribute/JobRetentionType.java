package orvane.box.document.attribute;

/** Why a print job was kept on the device. */
public enum JobRetentionType {
    QUICK, PROOF, PRIVATE, STORED
}
