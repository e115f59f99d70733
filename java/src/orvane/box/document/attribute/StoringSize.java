package orvane.box.document.attribute;

/** The paper size of a stored document's pages: one standard size, or non-standard, mixed or unknown. */
public enum StoringSize {
    AUTO, LETTER, LEGAL, A4, B5, A3, B4, LEDGER, A5, A6, B6, HAGAKI, OUFUKU_HAGAKI, OFICIO_II, SIZE_8K, SIZE_16K, SIZE_11_X_15, SIZE_8_5_X_13_5, STATEMENT, FOLIO, OFICIO_MEXICO, NONSTANDARD, MIXED, UNKNOWN
}
