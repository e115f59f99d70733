package orvane.box.document.attribute;

/** The colour mode a document was stored in. */
public enum ColorMode {
    UNKNOWN, MONOCHROME, GRAYSCALE, COLOR, MIXED
}
