package jbrg.simulator;

/**
 * One document of a user or fax box, as the simulated device holds it.
 *
 * @param documentId the id the device gave it
 * @param name       its name
 * @param pages      its pages
 * @param resolution the device's resolution code (6 when not chosen)
 * @param pagesSize  1 when every page has one paper size ({@code sizeCode}), else the device's mixed code
 * @param sizeCode   the paper size code (8: A4)
 * @param color      the device's colour code (1 when not chosen)
 * @param date       when it was stored, in seconds since 1970
 * @param dataSize   its size in bytes
 */
public record StoredDocument(long documentId, String name, long pages, int resolution, int pagesSize, int sizeCode,
        int color, long date, long dataSize) {
}
