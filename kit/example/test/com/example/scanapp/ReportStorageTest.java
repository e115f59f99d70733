package com.example.scanapp;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;

import jbrg.simulator.SimulatedDevice;
import org.junit.jupiter.api.Test;

/** The application keeps a report in its storage area; the medium may be full or refuse to open. */
class ReportStorageTest extends DeviceTest {
    private static final int APPLICATION_AREA = 45;
    private static final int NO_SPACE = 35;

    @Override
    protected String scenario() {
        return """
            {
              "storage": {"files": [ {"area": 45, "path": "reports/old.txt", "text": "yesterday"} ],
                          "statfs": {"block_size": 4096, "blocks": 1000, "free": 2, "available": 2}}
            }
            """;
    }

    @Test
    void aReportIsWrittenBesideWhatTheAreaHeld() throws Exception {
        app.saveReport("reports/today.txt", "3 pages scanned");
        assertEquals("3 pages scanned", SimulatedDevice.readFile(APPLICATION_AREA, "reports/today.txt"));
        assertEquals("yesterday", SimulatedDevice.readFile(APPLICATION_AREA, "reports/old.txt"));
    }

    @Test
    void aFileTheTestPutsThereIsReplaced() throws Exception {
        SimulatedDevice.writeFile(APPLICATION_AREA, "reports/today.txt", "stale");
        app.saveReport("reports/today.txt", "fresh");
        assertEquals("fresh", SimulatedDevice.readFile(APPLICATION_AREA, "reports/today.txt"));
    }

    @Test
    void aFullMediumRefusesTheReport() {
        // Two blocks of 4096 bytes are left: 10000 bytes do not fit.
        DeviceException e = assertThrows(DeviceException.class,
                () -> app.saveReport("reports/big.txt", "x".repeat(10000)));
        assertEquals("write reports/big.txt", e.step());
        assertEquals(NO_SPACE, e.code());
    }

    @Test
    void anAreaThatCannotBeOpenedIsReportedWithTheStep() {
        SimulatedDevice.forceResult("xdc_strg_fopen", 6);
        DeviceException e = assertThrows(DeviceException.class, () -> app.saveReport("reports/x.txt", "x"));
        assertEquals("open reports/x.txt", e.step());
        assertEquals(29, e.code(), "not permitted");
        assertNull(SimulatedDevice.readFile(APPLICATION_AREA, "reports/x.txt"));
    }
}
