package com.example.scanapp;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.Arrays;
import java.util.List;
import jbrg.simulator.Box;
import jbrg.simulator.SimulatedDevice;
import jbrg.simulator.StoredDocument;
import jbrg.simulator.UserJob;
import org.junit.jupiter.api.Test;
import orvane.qsf.controller.event.proxy.EventLog;

/** Alice logs in and scans into her box; the device holds the document afterwards. */
class ScanToBoxTest extends DeviceTest {
    private static final int CATEGORY_BOX = 5;
    private static final int LOGIN_LIMIT = 0xC102040C;

    @Override
    protected String scenario() {
        return """
            {
              "users": {"local": [ {"login_name": "alice", "password": "wonder", "user_name": "Alice Archer"} ]},
              "boxes": {"user": [ {"number": 1, "name": "Alice's scans", "owner_login_name": "alice",
                                   "password": "1234", "capacity": 100} ]},
              "job": {"run_jobs": true, "pages": 3}
            }
            """;
    }

    private static long aliceBox() {
        return SimulatedDevice.boxes().get(0).boxId();
    }

    @Test
    void aScanIntoTheBoxEndsCompleteWithItsPagesAndLeavesADocumentThere() throws Exception {
        long cert = app.login("alice", "wonder");
        long job = app.scanToBox(cert, aliceBox(), "1234");

        assertEquals("COMPLETE", app.jobs().awaitEnd(job, 5000));
        assertEquals(3, app.jobs().pages(job));
        List<StoredDocument> documents = SimulatedDevice.box(aliceBox()).documents();
        assertEquals(1, documents.size());
        assertEquals(3, documents.get(0).pages());

        UserJob held = SimulatedDevice.userJob(job);
        assertEquals(CATEGORY_BOX, held.category());
        assertEquals(cert, held.certId(), "the job was made for Alice's login");
        assertTrue(held.ended());
        SimulatedDevice.awaitIdle();
        String logged = "jobLog JobLogInfo{userJobId=" + job + ",";
        assertTrue(Arrays.stream(EventLog.all()).anyMatch(e -> e.startsWith(logged)), "the job log entry follows the end");
        app.logout(cert);
        assertFalse(SimulatedDevice.isLoggedIn(cert));
    }

    @Test
    void aJobTheDeviceHoldsBackEndsOnlyWhenTheDeviceLetsItRun() throws Exception {
        SimulatedDevice.runJobs(false);
        SimulatedDevice.setJobPages(2);
        long cert = app.login("alice", "wonder");
        long job = app.scanToBox(cert, aliceBox(), "1234");

        assertNull(app.jobs().awaitEnd(job, 200), "nothing runs yet");
        assertEquals(List.of(), SimulatedDevice.box(aliceBox()).documents());
        SimulatedDevice.finishJob(job);
        assertEquals("COMPLETE", app.jobs().awaitEnd(job, 5000));
        assertEquals(2, app.jobs().pages(job));
        assertEquals(1, SimulatedDevice.box(aliceBox()).documents().size());
    }

    @Test
    void aLoginTheDeviceRefusesTellsWhy() {
        DeviceException wrong = assertThrows(DeviceException.class, () -> app.login("alice", "guess"));
        assertEquals(1, wrong.code(), "wrong password");
        assertEquals(2, assertThrows(DeviceException.class, () -> app.login("mallory", "x")).code(), "no such user");

        SimulatedDevice.forceResult("xsi_ais_auth_account_login", LOGIN_LIMIT);
        assertEquals(5, assertThrows(DeviceException.class, () -> app.login("alice", "wonder")).code());
    }

    @Test
    void aUserAndBoxAddedWhileTheDeviceRunsWorkLikeTheScenarios() throws Exception {
        SimulatedDevice.addLocalUser("bob", "builder", "Bob", "bob@example.com", "", SimulatedDevice.RIGHTS_USER);
        long box = SimulatedDevice.addUserBox(2, "Bob's", "bob", "", 10);
        long cert = app.login("bob", "builder");
        long job = app.scanToBox(cert, box, "");

        assertEquals("COMPLETE", app.jobs().awaitEnd(job, 5000));
        Box held = SimulatedDevice.box(box);
        assertEquals(1, held.documents().size());
        assertEquals(List.of(), SimulatedDevice.box(aliceBox()).documents(), "Alice's box is untouched");
    }

    @Test
    void aJobTheDeviceCannotStartIsReportedWithTheStep() throws Exception {
        long cert = app.login("alice", "wonder");
        SimulatedDevice.forceResult("xsi_ais_job_kick", 0xC1030001);
        DeviceException e = assertThrows(DeviceException.class, () -> app.scanToBox(cert, aliceBox(), "1234"));
        assertEquals("start the job", e.step());
        assertEquals(List.of(), SimulatedDevice.box(aliceBox()).documents());
    }
}
