package jbrg.simulator;

import java.util.List;

/**
 * One user box or fax box, as the simulated device holds it.
 *
 * @param boxId          the id the device gave it
 * @param fax            true for a fax box
 * @param number         its box number
 * @param name           its name
 * @param ownerLoginName its owner's login name ("" for a box without an owner)
 * @param ownerName      its owner's display name
 * @param password       its password ("" for none)
 * @param share          the device's sharing code (0 private, 1 shared)
 * @param capacity       its capacity in megabytes (0: no limit)
 * @param usedSize       megabytes its documents take
 * @param documents      its documents, in the order they were stored
 */
public record Box(long boxId, boolean fax, long number, String name, String ownerLoginName, String ownerName,
        String password, int share, long capacity, long usedSize, List<StoredDocument> documents) {
    public Box {
        documents = List.copyOf(documents);
    }
}
