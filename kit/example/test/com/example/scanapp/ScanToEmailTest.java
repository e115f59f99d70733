package com.example.scanapp;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import jbrg.simulator.JobInfoSet;
import jbrg.simulator.JobState;
import jbrg.simulator.SimulatedDevice;
import org.junit.jupiter.api.Test;

/** Alice scans to an e-mail address from the address book; the page counters follow the scanned pages. */
class ScanToEmailTest extends DeviceTest {
    private static final int CATEGORY_SEND = 3;

    @Override
    protected String scenario() {
        return """
            {
              "users": {"local": [ {"login_name": "alice", "password": "wonder"} ]},
              "address_book": {"personal": [ {"number": 1, "name": "Alice Archer", "pronunciation": "alice",
                                               "email": "alice@example.com"} ]},
              "job": {"pages": 4}
            }
            """;
    }

    @Test
    void theScanGoesToTheAddressOfTheBookAndIsCountedAsScannedPages() throws Exception {
        long before = app.scannedPages();
        long cert = app.login("alice", "wonder");
        long job = app.scanToEmail(cert, "Alice", "Scanned for you");

        JobInfoSet settings = SimulatedDevice.jobInfoSets().get(0);
        assertEquals(CATEGORY_SEND, settings.category());
        assertEquals(1, settings.addresses(), "one destination: the book's address");
        assertEquals(cert, settings.certId());
        SimulatedDevice.finishJob(job);

        assertEquals("COMPLETE", app.jobs().awaitEnd(job, 5000));
        assertEquals(4, app.jobs().pages(job));
        assertEquals(before + 4, app.scannedPages());
        assertEquals(0, SimulatedDevice.openAddressListings(), "the application finished its address search");
    }

    @Test
    void anAddressAddedWhileTheDeviceRunsIsFoundAndAMissingOneRefused() throws Exception {
        long cert = app.login("alice", "wonder");
        assertEquals("find an e-mail address for Zoe",
                assertThrows(DeviceException.class, () -> app.scanToEmail(cert, "Zoe", "x")).step());

        SimulatedDevice.addPersonalAddress("Zoe Zimmer", "zoe", "zoe@example.com", null);
        long job = app.scanToEmail(cert, "Zoe", "Hello Zoe");
        SimulatedDevice.finishJob(job);
        assertEquals("COMPLETE", app.jobs().awaitEnd(job, 5000));
    }

    @Test
    void aJobCancelledAtThePanelIsSeenAsCancelled() throws Exception {
        long cert = app.login("alice", "wonder");
        long job = app.scanToEmail(cert, "Alice", "Will be cancelled");

        // The device reports the end as a cancel, as when the user presses Stop at the panel.
        SimulatedDevice.fireJobStateChanged(JobState.of(JobState.STATE_END, job, JobState.RESULT_CANCEL, "alice"));
        assertEquals("CANCEL", app.jobs().awaitEnd(job, 5000));
        assertEquals(0, app.jobs().pages(job));
    }

    @Test
    void pagesTheDeviceReportsAreCountedForTheirJob() throws Exception {
        SimulatedDevice.fireScanPage(77, 1);
        SimulatedDevice.fireScanPage(77, 2);
        SimulatedDevice.fireScanPage(78, 1);
        assertEquals(2, app.jobs().pages(77));
        assertEquals(1, app.jobs().pages(78));
    }
}
