package orvane.box.attribute;

/** Whether a document stored under the name of one already in the box replaces it. */
public enum OverwriteSetting {
    PERMIT, PROHIBIT, UNKNOWN
}
