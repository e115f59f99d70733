package orvane.box.document.attribute;

/** The resolution a document was stored in. */
public enum Resolution {
    UNKNOWN, R200x100, R200x200, R200x400, R300x300, R400x400, R600x600, R1200x1200, MIXED
}
