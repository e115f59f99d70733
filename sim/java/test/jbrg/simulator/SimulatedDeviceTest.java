package jbrg.simulator;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.function.Consumer;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import orvane.qsf.controller.event.proxy.AccProxy;
import orvane.qsf.controller.event.proxy.AppOperationProxy;
import orvane.qsf.controller.event.proxy.CommonProxy;
import orvane.qsf.controller.event.proxy.EventLog;
import orvane.qsf.controller.event.proxy.JobInfoProxy;
import orvane.qsf.controller.event.proxy.JobProxy;
import orvane.qsf.controller.event.proxy.PanelProxy;
import orvane.qsf.controller.event.proxy.SynchronousEventProxy;
import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;
import orvane.qsf.wrapper.system.cmt_commonJNI;
import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/** The control API against the bridge: what a test sets up, forces and fires is what the bridge sees. */
class SimulatedDeviceTest {
    private static final String SCENARIO = "{\"users\": {\"local\": [ {\"login_name\": \"alice\", \"password\": \"a\"} ]},"
            + " \"boxes\": {\"limit\": 3, \"space\": 100, \"user\": [ {\"number\": 1, \"name\": \"first\"} ]}}";

    private long events;

    @BeforeAll
    static void bridge() {
        System.loadLibrary("jbrgCMT");
        long init = cmt_commonJNI.new_cmt_init();
        cmt_commonJNI.cmt_init_init(init, null);
        cmt_commonJNI.delete_cmt_init(init);
    }

    @BeforeEach
    void device() {
        SimulatedDevice.loadScenario(SCENARIO);
        SimulatedDevice.reset();
        for (Runnable clear : List.<Runnable>of(JobProxy::clear, JobInfoProxy::clear, CommonProxy::clear,
                PanelProxy::clear, AccProxy::clear, AppOperationProxy::clear, SynchronousEventProxy::clear,
                EventLog::clear)) {
            clear.run();
        }
        events = qsf_fnd_eventJNI.new_qsf_fnd_event_manager();
        qsf_fnd_eventJNI.qsf_fnd_event_manager_init(events, null);
    }

    @AfterEach
    void stopEvents() {
        SimulatedDevice.awaitIdle();
        qsf_fnd_eventJNI.qsf_fnd_event_manager_terminate(events, null);
        qsf_fnd_eventJNI.delete_qsf_fnd_event_manager(events);
    }

    private static int login(String name, String password) {
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long cert = qsf_fnd_userJNI.new_QSF_FND_CERTIFICATE_ID();
        try {
            return qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_0(auth, null, name, password, 1, cert, null);
        } finally {
            qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
            qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
        }
    }

    @Test
    void aScenarioThatDoesNotReadIsRefusedWithTheDevicesMessageAndChangesNothing() throws Exception {
        IllegalArgumentException e = assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.loadScenario("{\"users\": {\"local\": [ {\"password\": \"x\"} ]}}"));
        assertEquals("scenario: /users/local/0: needs a login_name", e.getMessage());
        assertEquals(0, login("alice", "a"), "the scenario before stays");

        e = assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.loadScenario("[1, 2]"));
        assertFalse(e.getMessage().isEmpty());

        // A file rather than a temporary folder: a 32-bit VM under an emulator cannot list (and so not remove) a
        // folder of a 64-bit host.
        Path file = Files.createTempFile("bob", ".json");
        try {
            Path missing = Path.of(file + ".missing");
            e = assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.loadScenarioFile(missing));
            assertTrue(e.getMessage().contains(missing.toString()), e.getMessage());

            Files.writeString(file, "{\"users\": {\"local\": [ {\"login_name\": \"bob\", \"password\": \"b\"} ]}}");
            SimulatedDevice.loadScenarioFile(file);
            assertEquals(0, login("bob", "b"));
            assertEquals(2, login("alice", "a"), "not found: the file replaced the users");
        } finally {
            Files.delete(file);
        }
    }

    @Test
    void nullsAndOutOfRangeNumbersAreRefusedBeforeTheyReachTheDevice() {
        assertThrows(NullPointerException.class, () -> SimulatedDevice.loadScenario(null));
        assertThrows(NullPointerException.class, () -> SimulatedDevice.forceResult(null, 1));
        assertThrows(NullPointerException.class, () -> SimulatedDevice.forceOut("op", null, "1"));
        assertThrows(NullPointerException.class, () -> SimulatedDevice.addLocalUser("x", "p", "n", null, "", 1));
        assertThrows(NullPointerException.class, () -> SimulatedDevice.fireCardDetected(1, null));
        assertThrows(NullPointerException.class, () -> SimulatedDevice.fireCardDetected(1, "id", (byte[]) null));
        assertThrows(NullPointerException.class, () -> SimulatedDevice.fireJobStateChanged(JobState.of(0, 1, 0, null)));
        assertThrows(NullPointerException.class, () -> SimulatedDevice.firePanelApplicationStart(null));

        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.forceResult("op", 1, 0));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.fireTonerStatus(256, 0));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.firePaperStatus(-1, 0));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.fireScanCount(1L << 32, 0));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.setJobPages(-1));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.firePrintPage(1, 1, new int[13]));
        assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.sectorEntry(new int[] {1}, new byte[][] {new byte[15]}));
        assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.systemEntry(1, new int[] {1, 2}, new byte[][] {new byte[16]}));
        assertEquals(List.of(), Arrays.asList(JobProxy.received()), "nothing was fired");
    }

    @Test
    void aForcedResultReachesTheBridgeOnceAndTheCallLogShowsItsArguments() {
        SimulatedDevice.forceResult("xsi_ais_auth_account_login", 0xC102040C);
        assertEquals(5, login("alice", "a"), "the bridge's code for the login limit");
        assertEquals(0, login("alice", "a"), "a forcing is used once");

        List<Call> logins = SimulatedDevice.callsOf("xsi_ais_auth_account_login");
        assertEquals(2, logins.size());
        assertEquals(List.of("alice", "a", "1"), logins.get(0).args().subList(0, 3));
        assertTrue(logins.get(0).toString().startsWith("xsi_ais_auth_account_login(alice, a, 1, "));
        assertTrue(SimulatedDevice.calls().containsAll(logins));

        SimulatedDevice.forceResult("xsi_ais_auth_account_login", 0xC1020401, 2);
        SimulatedDevice.clearForcing();
        assertEquals(0, login("alice", "a"), "cleared forcings are not used");
        SimulatedDevice.clearCalls();
        assertEquals(List.of(), SimulatedDevice.calls());
    }

    @Test
    void theBridgesTraceLinesAreReadBackAndCleared() {
        SimulatedDevice.forceResult("xsi_ais_auth_account_login", 0xC1020401);
        login("alice", "wrong");
        List<TraceLine> lines = SimulatedDevice.traces();
        assertFalse(lines.isEmpty());
        String wanted = "result = [" + 0xC1020401 + "]";
        assertTrue(lines.stream().anyMatch(t -> t.text().contains(wanted)), lines.toString());
        SimulatedDevice.clearTraces();
        assertEquals(List.of(), SimulatedDevice.traces());
    }

    @Test
    void eachEventFamilyFiredReachesItsProxyAndTheListeners() {
        List<String> heard = Collections.synchronizedList(new ArrayList<>());
        List<Thread> threads = Collections.synchronizedList(new ArrayList<>());
        Consumer<String> listener = text -> {
            heard.add(text);
            threads.add(Thread.currentThread());
        };
        EventLog.addListener(listener);
        try {
            assertEquals(0, SimulatedDevice.fireScanCount(3, 4));
            assertEquals(0, SimulatedDevice.fireJobStateChanged(JobState.of(JobState.STATE_END, 7,
                    JobState.RESULT_CANCEL, "alice")));
            assertEquals(0, SimulatedDevice.fireScanPage(7, 2));
            assertEquals(0, SimulatedDevice.fireSleep(2));
            assertEquals(0, SimulatedDevice.fireTonerStatus(10, 255));
            assertEquals(0, SimulatedDevice.firePanelAutoReset());
            assertEquals(0, SimulatedDevice.fireCardError(3, 0));
            SimulatedDevice.fireResidentAppStateChanged(1);
            SimulatedDevice.requestBasisControl(2);
        } finally {
            EventLog.removeListener(listener);
        }
        SimulatedDevice.fireScanCount(9, 9);

        assertEquals("scanCount 3 4", JobProxy.received()[0]);
        assertEquals(1, JobProxy.jobs().length);
        assertTrue(JobProxy.received()[1].startsWith("state "), JobProxy.received()[1]);
        assertTrue(JobProxy.received()[1].contains("alice"), JobProxy.received()[1]);
        assertTrue(JobInfoProxy.received()[0].startsWith("page ScanPageInfo"), JobInfoProxy.received()[0]);
        assertArrayEquals(new String[] {"fireSleepEvent(2)", "fireTonerLevelEvent(255, 10)"}, CommonProxy.received(),
                "the second toner's level comes first");
        assertArrayEquals(new String[] {"autoReset"}, PanelProxy.received());
        assertArrayEquals(new String[] {"fireICCardErrorEvent(3)"}, AccProxy.received());
        assertArrayEquals(new String[] {"fireResidentAppsStateChanged(1)"}, SynchronousEventProxy.received());
        assertArrayEquals(new String[] {"6"}, AppOperationProxy.received(), "basis control 2 is the application event 6");

        assertEquals(9, heard.size(), heard.toString());
        assertEquals("scanCount 3 4", heard.get(0));
        assertEquals("fireSleepEvent(2)", heard.get(3));
        assertTrue(heard.contains("autoReset") && heard.contains("6"), heard.toString());
        assertFalse(heard.contains("scanCount 9 9"), "a removed listener hears nothing more");
        assertFalse(threads.contains(Thread.currentThread()), "listeners run on the device's threads");
        assertEquals(4, EventLog.all().length, "the log keeps the job and job information events only");
    }

    @Test
    void aCardWithDataAndTheReaderComingAndGoingReachTheCardProxy() {
        byte[] block = new byte[16];
        block[0] = 0x42;
        byte[] entry = SimulatedDevice.sectorEntry(new int[] {5}, new byte[][] {block});
        assertEquals(1 + 1 + 1 + 16, entry.length, "the count, then the sector's number, block count and data");
        assertEquals(0, SimulatedDevice.fireCardDetected(SimulatedDevice.CARD_TYPE_A, "CARD-1", entry));
        assertEquals(0, SimulatedDevice.fireReaderAdded(0x1234, 0x0042, 0b10));
        assertTrue(SimulatedDevice.readerAttached());
        assertEquals(0, SimulatedDevice.fireReaderRemoved());
        assertFalse(SimulatedDevice.readerAttached());

        assertEquals(1, AccProxy.cards().length);
        String card = AccProxy.received()[0];
        assertTrue(card.contains("CARD-1") && card.contains("42"), card);
        assertEquals("fireICCardDeviceEvent(4660, 66, true, 2)", AccProxy.received()[1]);
        assertTrue(AccProxy.received()[2].contains("false"), AccProxy.received()[2]);
    }

    @Test
    void usersAddedAtRunTimeLogInAndDuplicatesAreRefused() {
        assertEquals(2, login("carol", "c"));
        SimulatedDevice.addLocalUser("carol", "c", "Carol", "carol@example.com", "", SimulatedDevice.RIGHTS_USER);
        assertEquals(0, login("carol", "c"));
        IllegalArgumentException e = assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.addLocalUser("alice", "x", "", "", "", SimulatedDevice.RIGHTS_USER));
        assertTrue(e.getMessage().contains("alice"));
        assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.addLocalUser("", "x", "", "", "", SimulatedDevice.RIGHTS_USER));
        SimulatedDevice.reset();
        assertEquals(2, login("carol", "c"), "a reset goes back to the scenario");
    }

    @Test
    void boxesAndDocumentsAddedAtRunTimeAreReadBackWithTheDevicesIds() {
        long id = SimulatedDevice.addUserBox(2, "Scans", "alice", "1234", 10);
        long doc = SimulatedDevice.storeDocument(id, "scan-1", 3, 2048);
        Box box = SimulatedDevice.box(id);
        assertEquals(2, box.number());
        assertEquals("Scans", box.name());
        assertEquals("alice", box.ownerLoginName());
        assertEquals("1234", box.password());
        assertEquals(1, box.usedSize(), "2 KiB take one megabyte");
        assertEquals(1, box.documents().size());
        StoredDocument d = box.documents().get(0);
        assertEquals(doc, d.documentId());
        assertEquals("scan-1", d.name());
        assertEquals(3, d.pages());
        assertEquals(2048, d.dataSize());
        assertTrue(d.date() > 1700000000L, "dated when stored");

        assertEquals(List.of(1L, 2L), SimulatedDevice.boxes().stream().map(Box::number).toList());
        assertEquals(List.of(), SimulatedDevice.faxBoxes());
        assertNull(SimulatedDevice.box(999));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.addUserBox(2, "again", "", "", 0));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.addUserBox(3, "big", "", "", 200));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.storeDocument(999, "x", 1, 0));
    }

    @Test
    void addressesAndGroupsAreCountedAndUnknownMembersRefused() {
        long before = SimulatedDevice.personalAddressCount();
        long number = SimulatedDevice.addPersonalAddress("Dora", "dora", "dora@example.com", null);
        int group = SimulatedDevice.addGroup("Team", "team");
        SimulatedDevice.addGroupMember(group, number, SimulatedDevice.MEMBER_EMAIL);
        assertEquals(before + 1, SimulatedDevice.personalAddressCount());
        assertEquals(1, SimulatedDevice.groupCount());
        assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.addGroupMember(group, number, SimulatedDevice.MEMBER_FAX), "Dora has no fax");
        assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.addGroupMember(group, number + 100, SimulatedDevice.MEMBER_EMAIL));
        assertThrows(IllegalArgumentException.class,
                () -> SimulatedDevice.addPersonalAddress("x".repeat(400), "", "a@b", null));
        assertEquals(0, SimulatedDevice.openAddressListings());
    }

    @Test
    void filesOfAStorageAreaAreTheAreasHostFolder() throws Exception {
        SimulatedDevice.writeFile(45, "forms/a.txt", "hello");
        assertEquals("hello", Files.readString(SimulatedDevice.storageFolder(45).resolve("forms/a.txt")));
        assertEquals("hello", SimulatedDevice.readFile(45, "forms/a.txt"));
        assertNull(SimulatedDevice.readFile(45, "forms/none.txt"));
        assertEquals(List.of("forms/a.txt"), SimulatedDevice.files(45));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.writeFile(45, "../escape.txt", "x"));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.storageFolder(12345));
        SimulatedDevice.loadScenario(SCENARIO);
        assertEquals(List.of(), SimulatedDevice.files(45), "a load lays out a clean medium");
    }

    /** One control call and the text its event arrives with. */
    private record Routed(String what, java.util.function.IntSupplier fire, String arrives) {}

    @Test
    void everyNotificationOfAFamilyReachesTheProxyMethodOfItsOwnKind() {
        List<String> heard = Collections.synchronizedList(new ArrayList<>());
        Consumer<String> listener = heard::add;
        List<Routed> routes = List.of(
                new Routed("start prohibition", () -> SimulatedDevice.fireStartProhibition(5), "startProhibition 5"),
                new Routed("combination", () -> SimulatedDevice.fireCombinationConstraint(6), "combConstraint 6"),
                new Routed("main message", () -> SimulatedDevice.fireMainMessage(7), "panelMessageUpdate 7"),
                new Routed("printed page", () -> SimulatedDevice.firePrintPage(11, 2, 1, 3),
                        "page PrintPageInfo{userJobId=11, pageNum=2"),
                new Routed("fax page", () -> SimulatedDevice.fireFaxSendPage(12, 4),
                        "page FaxSendPageInfo{userJobId=12, pageNum=4}"),
                new Routed("job log", () -> SimulatedDevice.fireJobLogUpdate(13, 99),
                        "jobLog JobLogInfo{userJobId=13, receiptId=99}"),
                new Routed("interpreter", () -> SimulatedDevice.fireInterpreterStart(14, "print.pdf", 2, 0),
                        "interpreter InterpreterInfo{userJobId=14"),
                new Routed("logout", () -> SimulatedDevice.fireLogout(1), "fireLogoutEvent()"),
                new Routed("connection", () -> SimulatedDevice.fireConnectionError(3), "fireCommunicationErrorEvent()"),
                new Routed("usb", () -> SimulatedDevice.fireUsbMemoryStatus(0x80000001L),
                        "fireUSBDeviceEvent(-2147483647)"),
                new Routed("waste toner", () -> SimulatedDevice.fireWasteTonerStatus(200), "fireWasteTonerEvent(200)"),
                new Routed("paper", () -> SimulatedDevice.firePaperStatus(65535, 9),
                        "firePaperSourceLevelEvent(65535, 9)"),
                new Routed("cover", () -> SimulatedDevice.fireCoverStatus(0x80000000L), "fireCoverEvent(2147483648)"),
                new Routed("coin vendor", () -> SimulatedDevice.fireCoinVendorStatus(8), "fireCoinVendorEvent(8)"),
                new Routed("key card", () -> SimulatedDevice.fireKeyCardStatus(1), "fireKeyDeviceEvent(1)"),
                new Routed("key counter", () -> SimulatedDevice.fireKeyCounterStatus(2), "fireKeyDeviceEvent(2)"),
                new Routed("application start", () -> SimulatedDevice.firePanelApplicationStart("app.one"), null),
                new Routed("application stop", () -> SimulatedDevice.firePanelApplicationStop("app.one"), null),
                new Routed("card lost", SimulatedDevice::fireCardLost, null),
                new Routed("jam", () -> SimulatedDevice.fireJamStatus(1), null),
                new Routed("processor cover", () -> SimulatedDevice.fireDocumentProcessorCoverStatus(1), null),
                new Routed("processor jam", () -> SimulatedDevice.fireDocumentProcessorJamStatus(1), null));
        EventLog.addListener(listener);
        try {
            for (Routed route : routes) {
                heard.clear();
                assertEquals(0, route.fire().getAsInt(), route.what());
                if (route.arrives() == null) {
                    assertEquals(List.of(), heard, route.what() + " reaches no Java method");
                } else {
                    assertEquals(1, heard.size(), route.what() + ": " + heard);
                    assertTrue(heard.get(0).startsWith(route.arrives()), route.what() + ": " + heard.get(0));
                }
            }
        } finally {
            EventLog.removeListener(listener);
        }
    }

    @Test
    void aForcedOutValueIsWhatTheBridgeHandsToJava() {
        SimulatedDevice.forceOut("xsi_ais_auth_account_login", "cert_id", "77");
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long cert = qsf_fnd_userJNI.new_QSF_FND_CERTIFICATE_ID();
        try {
            assertEquals(0, qsf_fnd_userJNI.qsf_fnd_authentication_login__SWIG_0(auth, null, "alice", "a", 1, cert,
                    null));
            assertEquals(77, qsf_fnd_userJNI.QSF_FND_CERTIFICATE_ID_id_get(cert, null));
        } finally {
            qsf_fnd_userJNI.delete_QSF_FND_CERTIFICATE_ID(cert);
            qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
        }
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.forceOut("op", "out", "1", 0));
    }

    @Test
    void theDevicesStateIsReadBackAsItStarts() {
        assertTrue(SimulatedDevice.resetTimerRunning());
        assertEquals(-1, SimulatedDevice.panelScreen(), "no screen asked for yet");
        assertEquals(List.of(), SimulatedDevice.panelEvents());
        assertEquals(List.of(), SimulatedDevice.panelBuzzes());
        assertFalse(SimulatedDevice.energySavingProhibited());
        assertEquals(List.of(), SimulatedDevice.deepSleepSuspendedBy());
        assertEquals(List.of(), SimulatedDevice.appResults());
        assertTrue(SimulatedDevice.expireResetTimer(), "nobody holds the timer: the observers hear the reset");
        assertArrayEquals(new String[] {"autoReset"}, PanelProxy.received());
    }

    @Test
    void jobsThatDoNotExistAreReportedAsSuch() {
        assertNull(SimulatedDevice.userJob(4242));
        assertThrows(IllegalArgumentException.class, () -> SimulatedDevice.finishJob(4242));
        assertEquals(List.of(), SimulatedDevice.jobInfoSets());
        assertNotEquals(-1, SimulatedDevice.sleepState());
    }
}
