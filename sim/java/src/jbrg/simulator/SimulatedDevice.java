package jbrg.simulator;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Objects;

/**
 * The control surface of the simulated device (libjbrgsim.so), for tests of Java applications that run off the
 * device: what the device holds, what it does with jobs, the events it sends, the faults it answers with, and
 * what the application asked of it. This is the simulated device's own API, not the device's: an application
 * reaches the device only through the bridge's generated classes, and a test steers and observes the device
 * through this class.
 *
 * <p>Every method is static and thread-safe. A text argument that is null throws {@link NullPointerException};
 * a number outside what the device's field holds throws {@link IllegalArgumentException}. The {@code fire...}
 * methods deliver one notification to every observer the bridge registered (its event manager must have been
 * initialised), on the device's own event thread, and wait for the answer: they return the first non-zero
 * answer of an observer, or 0. Do not call them from a listener running on that thread.
 *
 * <p>Loading this class loads {@code libjbrgsimctl.so} (from {@code java.library.path}), which brings in the
 * simulated device.
 */
public final class SimulatedDevice {
    static {
        System.loadLibrary("jbrgsimctl");
    }

    /** Group member kinds of {@link #addGroupMember}: which destination of the personal address joins. */
    public static final int MEMBER_FTP = 0;
    public static final int MEMBER_SMB = 1;
    public static final int MEMBER_IFAX = 2;
    public static final int MEMBER_FAX = 3;
    public static final int MEMBER_EMAIL = 4;

    /** Card types of {@link #fireCardDetected}: type A cards hold sectors, FeliCa cards systems and services. */
    public static final int CARD_TYPE_A = 0;
    public static final int CARD_TYPE_B = 1;
    public static final int CARD_TYPE_FELICA = 2;

    /** Local user rights of {@link #addLocalUser}. */
    public static final int RIGHTS_ADMINISTRATOR = 0;
    public static final int RIGHTS_USER = 1;
    public static final int RIGHTS_GUEST = 2;

    private SimulatedDevice() {}

    // ---- Scenario ---------------------------------------------------------------------------------------

    /**
     * Replaces everything the device holds (users, boxes, addresses, storage, jobs, settings, counters) with
     * the scenario given as JSON; an empty text gives the empty device. Observers the bridge registered stay.
     *
     * @throws IllegalArgumentException with the device's message ({@code scenario <section>: <what>}) when the
     *                                  text is not a scenario; the device is then left as it was
     */
    public static void loadScenario(String json) {
        nativeLoadScenario(Objects.requireNonNull(json, "json"), false);
    }

    /**
     * {@link #loadScenario(String)} with the text of a file.
     *
     * @throws IllegalArgumentException when the file cannot be read or is not a scenario
     */
    public static void loadScenarioFile(Path file) {
        nativeLoadScenario(Objects.requireNonNull(file, "file").toString(), true);
    }

    /**
     * The device powered on again: back to the last scenario loaded, forcings, call log and traces cleared, and
     * every observer registered with the device forgotten (an application's event manager must be initialised
     * again to receive events).
     */
    public static native void reset();

    /**
     * Waits until the device has delivered every notification already under way: the runs of jobs that run by
     * themselves (to their end and their job log update), and whatever each event source was sending. A test
     * calls it before the application stops its event manager, so that no event is still on its way to an
     * observer the application is deleting.
     */
    public static native void awaitIdle();

    // ---- Faults -----------------------------------------------------------------------------------------

    /**
     * The next call of platform operation {@code op} answers {@code code} (a 32-bit result code) and does nothing
     * else; it is still logged.
     */
    public static void forceResult(String op, int code) {
        forceResult(op, code, 1);
    }

    /**
     * The next {@code times} calls of {@code op} answer {@code code}. Forcings of one operation queue up.
     *
     * @throws IllegalArgumentException when {@code times} is below 1
     */
    public static void forceResult(String op, int code, int times) {
        nativeForceResult(Objects.requireNonNull(op, "op"), code, positive(times));
    }

    /**
     * The next call of {@code op} does its work, then reports {@code value} in its out-parameter {@code out}
     * (numbers in decimal or 0x hex). The operations' out-parameter names are in the simulator's documents.
     */
    public static void forceOut(String op, String out, String value) {
        forceOut(op, out, value, 1);
    }

    /** {@link #forceOut(String, String, String)} for the next {@code times} calls. */
    public static void forceOut(String op, String out, String value, int times) {
        nativeForceOut(Objects.requireNonNull(op, "op"), Objects.requireNonNull(out, "out"),
                Objects.requireNonNull(value, "value"), positive(times));
    }

    /** Drops every forcing not yet used. */
    public static native void clearForcing();

    // ---- Call log and traces ----------------------------------------------------------------------------

    /** Every platform call since the last load, reset or {@link #clearCalls()}, in order. */
    public static List<Call> calls() {
        return toCalls(nativeCalls(null));
    }

    /** The calls of one platform operation, in order. */
    public static List<Call> callsOf(String op) {
        return toCalls(nativeCalls(Objects.requireNonNull(op, "op")));
    }

    /** Forgets the calls logged so far. */
    public static native void clearCalls();

    /** The lines the bridge traced (the last 20000), oldest first. */
    public static List<TraceLine> traces() {
        List<TraceLine> out = new ArrayList<>();
        for (String[] t : nativeTraces()) {
            out.add(new TraceLine(Long.parseLong(t[0]), Long.parseLong(t[1]), Long.parseLong(t[2]), t[3], t[4]));
        }
        return out;
    }

    /** Forgets the trace lines kept so far. */
    public static native void clearTraces();

    // ---- Users ------------------------------------------------------------------------------------------

    /**
     * Registers a local user, as an administrator would on the panel; the user can log in at once (with the
     * password, or with the IC card whose id is {@code card}, when not empty). Gone at the next load or reset.
     *
     * @param rights {@link #RIGHTS_ADMINISTRATOR}, {@link #RIGHTS_USER} or {@link #RIGHTS_GUEST}
     * @throws IllegalArgumentException for an empty login name or one already in use
     */
    public static void addLocalUser(String loginName, String password, String userName, String email, String card,
            int rights) {
        if (!nativeAddLocalUser(Objects.requireNonNull(loginName, "loginName"),
                Objects.requireNonNull(password, "password"), Objects.requireNonNull(userName, "userName"),
                Objects.requireNonNull(email, "email"), Objects.requireNonNull(card, "card"), rights)) {
            throw new IllegalArgumentException("the device refuses the local user \"" + loginName
                    + "\": empty login name, or one already in use");
        }
    }

    /** Whether {@code certId} names a current login (handed out by a login, not ended by a logout). */
    public static native boolean isLoggedIn(long certId);

    // ---- Boxes ------------------------------------------------------------------------------------------

    /**
     * Makes a user box, as the panel would. Documents go in with {@link #storeDocument}.
     *
     * @param ownerLoginName the owner's login name; "" for a box without an owner
     * @param password       "" for a box without a password
     * @param capacity       megabytes; 0 for no limit
     * @return the new box id
     * @throws IllegalArgumentException when the device refuses it: number 0 or in use, a text too long for the
     *                                  device, the box limit reached, or no space left for the capacity
     */
    public static long addUserBox(long number, String name, String ownerLoginName, String password, long capacity) {
        long id = nativeAddBox(false, unsigned(number, 32, "number"), Objects.requireNonNull(name, "name"),
                Objects.requireNonNull(ownerLoginName, "ownerLoginName"), Objects.requireNonNull(password, "password"),
                unsigned(capacity, 32, "capacity"));
        if (id == 0) {
            throw new IllegalArgumentException("the device refuses user box " + number);
        }
        return id;
    }

    /**
     * Stores a document in a box, as a scan stored to it would (dated now).
     *
     * @param dataSize bytes; counted against the box's capacity
     * @return the new document id
     * @throws IllegalArgumentException when the box does not exist or cannot hold it
     */
    public static long storeDocument(long boxId, String name, long pages, long dataSize) {
        long id = nativeStoreDocument(unsigned(boxId, 32, "boxId"), Objects.requireNonNull(name, "name"),
                unsigned(pages, 32, "pages"), unsigned(dataSize, 32, "dataSize"));
        if (id == 0) {
            throw new IllegalArgumentException("box " + boxId + " does not exist or cannot hold \"" + name + "\"");
        }
        return id;
    }

    /** The user boxes with their documents, by box number. */
    public static List<Box> boxes() {
        return boxesOf(false);
    }

    /** The fax boxes with their documents, by box number. */
    public static List<Box> faxBoxes() {
        return boxesOf(true);
    }

    /** The box (user or fax) with this id and its documents; null when there is none. */
    public static Box box(long boxId) {
        String[][] rows = nativeBox(boxId);
        return rows == null ? null : toBox(rows);
    }

    // ---- Address book -----------------------------------------------------------------------------------

    /**
     * Adds a personal address with an e-mail and/or a fax destination, as the panel would.
     *
     * @param email     its e-mail address; null for none
     * @param faxNumber its fax number; null for none
     * @return the number the address has in the book
     * @throws IllegalArgumentException when the book cannot take it
     */
    public static long addPersonalAddress(String name, String pronunciation, String email, String faxNumber) {
        long number = nativeAddPersonal(Objects.requireNonNull(name, "name"),
                Objects.requireNonNull(pronunciation, "pronunciation"), email, faxNumber);
        if (number == 0) {
            throw new IllegalArgumentException("the address book cannot take \"" + name + "\"");
        }
        return number;
    }

    /**
     * Adds a group.
     *
     * @return the group's id (the one group members are added with)
     * @throws IllegalArgumentException when the book cannot take it
     */
    public static int addGroup(String name, String pronunciation) {
        int id = nativeAddGroup(Objects.requireNonNull(name, "name"),
                Objects.requireNonNull(pronunciation, "pronunciation"));
        if (id == 0) {
            throw new IllegalArgumentException("the address book cannot take the group \"" + name + "\"");
        }
        return id;
    }

    /**
     * Makes one destination of a personal address a member of a group.
     *
     * @param type {@link #MEMBER_EMAIL}, {@link #MEMBER_FAX}, ...
     * @throws IllegalArgumentException when the group or address is unknown or the address has no such destination
     */
    public static void addGroupMember(int groupId, long number, int type) {
        if (!nativeAddMember(unsigned(groupId, 16, "groupId"), unsigned(number, 32, "number"), type)) {
            throw new IllegalArgumentException("no member " + number + " (type " + type + ") for group " + groupId);
        }
    }

    /** Personal addresses the book holds. */
    public static native long personalAddressCount();

    /** Groups the book holds. */
    public static native long groupCount();

    /** Address book listings opened and not yet finished (an application that finishes what it opens leaves 0). */
    public static native long openAddressListings();

    // ---- Storage ----------------------------------------------------------------------------------------

    /**
     * The host folder behind a storage area: what an application writes to the area is there, and files put
     * there are what the application reads.
     *
     * @throws IllegalArgumentException for an area the device does not have
     */
    public static Path storageFolder(int area) {
        String folder = nativeAreaFolder(area);
        if (folder.isEmpty()) {
            throw new IllegalArgumentException("the device has no storage area " + area);
        }
        return Path.of(folder);
    }

    /**
     * Puts a file into a storage area (its folders made as needed), as if written on the device.
     *
     * @param path relative to the area, e.g. {@code "forms/a.txt"}
     * @throws IllegalArgumentException for an unknown area or a path that leaves the area
     * @throws UncheckedIOException     when the host cannot write it
     */
    public static void writeFile(int area, String path, String text) {
        Path file = inArea(area, path);
        try {
            Files.createDirectories(file.getParent());
            Files.writeString(file, Objects.requireNonNull(text, "text"), StandardCharsets.UTF_8);
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
    }

    /**
     * The text of a file of a storage area; null when there is none.
     *
     * @throws IllegalArgumentException for an unknown area or a path that leaves the area
     */
    public static String readFile(int area, String path) {
        Path file = inArea(area, path);
        try {
            return Files.isRegularFile(file) ? Files.readString(file, StandardCharsets.UTF_8) : null;
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
    }

    /** The files of a storage area, as paths relative to it ({@code /}-separated), sorted. */
    public static List<String> files(int area) {
        storageFolder(area);
        // Listed by the device: a 32-bit VM under an emulator cannot list the folders of a 64-bit host itself.
        return List.of(nativeAreaFiles(area));
    }

    // ---- Jobs -------------------------------------------------------------------------------------------

    /**
     * Whether jobs kicked from now on run to their end by themselves (start, pages, end reported to the
     * observers), or wait for {@link #finishJob}. Until the next load, which takes the scenario's choice.
     */
    public static native void runJobs(boolean on);

    /**
     * The pages each job kicked from now on has (until the next load).
     *
     * @throws IllegalArgumentException for a negative count
     */
    public static void setJobPages(int pages) {
        if (pages < 0) {
            throw new IllegalArgumentException("pages must not be negative: " + pages);
        }
        nativeSetPages(pages);
    }

    /**
     * Lets a user job run to its end (or, cancelled, to its cancelled end) and waits until it has ended: its
     * start, pages and end reach the observers first.
     *
     * @throws IllegalArgumentException for an id the device never handed out
     */
    public static void finishJob(long userJobId) {
        if (!nativeFinish(unsigned(userJobId, 32, "userJobId"))) {
            throw new IllegalArgumentException("no user job " + userJobId);
        }
    }

    /** The user job with this id as the device holds it; null for an id the device never handed out. */
    public static UserJob userJob(long userJobId) {
        long[] f = nativeUserJob(userJobId);
        if (f == null) {
            return null;
        }
        byte[] stream = nativeUserJobStream(userJobId);
        return new UserJob(f[0], f[1], f[2], (int) f[3], f[4], f[5] != 0, f[6], f[7] != 0, f[8] != 0,
                stream == null ? new byte[0] : stream, f[9], (int) f[10], f[11] != 0, f[12], f[13], f[14] != 0,
                (int) f[15]);
    }

    /** The job information sets that exist now, by handler id. */
    public static List<JobInfoSet> jobInfoSets() {
        List<JobInfoSet> out = new ArrayList<>();
        for (String[] r : nativeJobInfos()) {
            out.add(new JobInfoSet(Long.parseLong(r[0]), Integer.parseInt(r[1]), Long.parseLong(r[2]),
                    Long.parseLong(r[3]), r[4]));
        }
        return out;
    }

    // ---- Job events -------------------------------------------------------------------------------------

    /** A job state change, to the job observers (the job proxy's {@code fireJobStateChangedEvent}). */
    public static int fireJobStateChanged(JobState state) {
        Objects.requireNonNull(state, "state");
        Objects.requireNonNull(state.userName(), "userName");
        long[] words = {unsigned(state.state(), 32, "state"), unsigned(state.userJobId(), 32, "userJobId"),
            unsigned(state.result(), 32, "result"), unsigned(state.jobMode(), 16, "jobMode"),
            unsigned(state.inDevice(), 8, "inDevice"), unsigned(state.outDevice(), 8, "outDevice"),
            unsigned(state.inputBoxId(), 32, "inputBoxId"), unsigned(state.outputBoxId(), 32, "outputBoxId"),
            unsigned(state.formBoxId(), 32, "formBoxId"), unsigned(state.receiptId(), 32, "receiptId"),
            unsigned(state.systemUserJobId(), 32, "systemUserJobId")};
        return nativeJobState(words, state.userName());
    }

    /** Scan counts, to the job observers (the job proxy's {@code fireScanCountEvent}). */
    public static int fireScanCount(long count1, long count2) {
        return nativeJob(0, unsigned(count1, 32, "count1"), unsigned(count2, 32, "count2"));
    }

    /** A start prohibition value (the job proxy's {@code fireStartProhibitionEvent}). */
    public static int fireStartProhibition(long value) {
        return nativeJob(1, unsigned(value, 32, "value"), 0);
    }

    /** A combination constraint (disable information) value (the job proxy's {@code fireCombConstraintEvent}). */
    public static int fireCombinationConstraint(long value) {
        return nativeJob(2, unsigned(value, 32, "value"), 0);
    }

    /** A panel main message number (the job proxy's {@code firePanelMessageUpdateEvent}). */
    public static int fireMainMessage(long value) {
        return nativeJob(3, unsigned(value, 32, "value"), 0);
    }

    // ---- Job information events -------------------------------------------------------------------------

    /**
     * A printed page, to the job information observers (the job information proxy's {@code firePageEvent}).
     *
     * @param attributes the page's further fields in the record's order, each a signed 32-bit number, those not
     *                   given 0: output tray, paper source, custom width, custom height (0.1 mm), paper size,
     *                   paper type, paper direction, paper weight, duplex, staple, punch, colour mode
     * @throws IllegalArgumentException for more than 12 attributes
     */
    public static int firePrintPage(long userJobId, long pageNumber, int... attributes) {
        return nativeJobInfo(0, pageWords(userJobId, pageNumber, attributes, 12), null);
    }

    /**
     * A scanned page (the job information proxy's {@code firePageEvent}).
     *
     * @param attributes further fields in the record's order, those not given 0: custom width, custom height,
     *                   scan paper size, scan paper direction, duplex, colour or mono, resolution (dots per inch)
     * @throws IllegalArgumentException for more than 7 attributes
     */
    public static int fireScanPage(long userJobId, long pageNumber, int... attributes) {
        return nativeJobInfo(1, pageWords(userJobId, pageNumber, attributes, 7), null);
    }

    /** A fax page sent (the job information proxy's {@code firePageEvent}). */
    public static int fireFaxSendPage(long userJobId, long pageNumber) {
        return nativeJobInfo(2, pageWords(userJobId, pageNumber, new int[0], 0), null);
    }

    /** A job log entry written or changed (the job information proxy's {@code fireJobLogEvent}). */
    public static int fireJobLogUpdate(long userJobId, long receiptId) {
        return nativeJobInfo(3, new long[] {unsigned(userJobId, 32, "userJobId"), unsigned(receiptId, 32,
            "receiptId")}, null);
    }

    /**
     * An interpreter (print language) job started (the job information proxy's {@code fireInterpreterEvent}).
     *
     * @param jobName the job's name; null for a job without one
     */
    public static int fireInterpreterStart(long userJobId, String jobName, long receivingInterface,
            long systemUserJobId) {
        return nativeJobInfo(4, new long[] {unsigned(userJobId, 32, "userJobId"),
            unsigned(receivingInterface, 32, "receivingInterface"), unsigned(systemUserJobId, 32, "systemUserJobId")},
            jobName);
    }

    /** An image log's creation status for a job. */
    public static int fireImageLogStatus(long userJobId, long imageId, int status) {
        return nativeJobInfo(5, new long[] {unsigned(userJobId, 32, "userJobId"), unsigned(imageId, 32, "imageId"),
            status}, null);
    }

    // ---- Panel ------------------------------------------------------------------------------------------

    /** The panel's automatic reset, to the panel observers (the panel proxy's {@code fireAutoResetEvent}). */
    public static int firePanelAutoReset() {
        return nativePanel(0, "");
    }

    /**
     * An application started from the panel, to the panel observers. The bridge's panel observer answers it
     * without calling Java, as the device's does: the panel proxy hears nothing.
     */
    public static int firePanelApplicationStart(String appId) {
        return nativePanel(1, Objects.requireNonNull(appId, "appId"));
    }

    /** An application stopped from the panel; as {@link #firePanelApplicationStart}, it does not reach Java. */
    public static int firePanelApplicationStop(String appId) {
        return nativePanel(2, Objects.requireNonNull(appId, "appId"));
    }

    /**
     * The panel's reset time runs out: when no application holds the reset timer, the observers hear the
     * automatic reset and true is returned; otherwise nothing happens and false is returned.
     */
    public static native boolean expireResetTimer();

    /** Whether the reset timer runs (no application holds it stopped). */
    public static native boolean resetTimerRunning();

    /** The Start key LED: 0 off, 1 on. */
    public static native int startLed();

    /** The screen shown on an application's request (the panel's numbering); -1 before any. */
    public static native int panelScreen();

    /** The panel events applications raised, in order, as {@code "appId:event"}. */
    public static List<String> panelEvents() {
        return List.of(nativePanelTexts(0));
    }

    /** The buzzer sounds applications asked for, in order, as {@code "appId:type"}. */
    public static List<String> panelBuzzes() {
        return List.of(nativePanelTexts(1));
    }

    // ---- Device status ----------------------------------------------------------------------------------

    /** A sleep state change (the common proxy's {@code fireSleepEvent}); does not change {@link #sleepState()}. */
    public static int fireSleep(int state) {
        return nativeEsm(0, state, 0);
    }

    /** A user logged out at the panel (the common proxy's {@code fireLogoutEvent}). */
    public static int fireLogout(long userId) {
        return nativeEsm(1, unsigned(userId, 32, "userId"), 0);
    }

    /** A connection error of the platform (the common proxy's {@code fireCommunicationErrorEvent}). */
    public static int fireConnectionError(int error) {
        return nativeEsm(2, error, 0);
    }

    /** A USB memory status (the common proxy's {@code fireUSBDeviceEvent}). */
    public static int fireUsbMemoryStatus(long status) {
        return nativeEsm(3, unsigned(status, 32, "status"), 0);
    }

    /**
     * Toner levels of the first and second toner, 0..255. The common proxy's {@code fireTonerLevelEvent} receives
     * them the other way round (second first), as the device's applications expect.
     */
    public static int fireTonerStatus(int first, int second) {
        return nativeEsm(4, unsigned(first, 8, "first"), unsigned(second, 8, "second"));
    }

    /** The waste toner bottle's status, 0..255 (the common proxy's {@code fireWasteTonerEvent}). */
    public static int fireWasteTonerStatus(int status) {
        return nativeEsm(5, unsigned(status, 8, "status"), 0);
    }

    /**
     * The paper left in a paper source (the common proxy's {@code firePaperSourceLevelEvent}).
     *
     * @param source the paper source, 0..65535
     * @param level  the level, 0..255
     */
    public static int firePaperStatus(int source, int level) {
        return nativeEsm(6, unsigned(source, 16, "source"), unsigned(level, 8, "level"));
    }

    /** A cover status (the common proxy's {@code fireCoverEvent}). */
    public static int fireCoverStatus(long status) {
        return nativeEsm(7, unsigned(status, 32, "status"), 0);
    }

    /** The document processor's cover status, 0..255; the bridge's observer answers it without calling Java. */
    public static int fireDocumentProcessorCoverStatus(int status) {
        return nativeEsm(8, unsigned(status, 8, "status"), 0);
    }

    /** A paper jam status; the bridge's observer answers it without calling Java. */
    public static int fireJamStatus(long status) {
        return nativeEsm(9, unsigned(status, 32, "status"), 0);
    }

    /** The document processor's jam status, 0..255; the bridge's observer answers it without calling Java. */
    public static int fireDocumentProcessorJamStatus(int status) {
        return nativeEsm(10, unsigned(status, 8, "status"), 0);
    }

    /** A coin vendor status (the common proxy's {@code fireCoinVendorEvent}). */
    public static int fireCoinVendorStatus(long status) {
        return nativeEsm(11, unsigned(status, 32, "status"), 0);
    }

    /** A key card status, 0..255 (the common proxy's {@code fireKeyDeviceEvent}). */
    public static int fireKeyCardStatus(int status) {
        return nativeEsm(12, unsigned(status, 8, "status"), 0);
    }

    /** A key counter status (the common proxy's {@code fireKeyDeviceEvent}). */
    public static int fireKeyCounterStatus(long status) {
        return nativeEsm(13, unsigned(status, 32, "status"), 0);
    }

    /** The resident applications' state changed (the synchronous event proxy). */
    public static int fireResidentAppStateChanged(int state) {
        return nativeEsm(14, state, 0);
    }

    /** The machine's energy state now (the device's sleep state numbering). */
    public static native int sleepState();

    /**
     * Someone touches the panel: the machine wakes; when it was not awake the observers hear the sleep event
     * with the awake state and their answer is returned (0 otherwise).
     */
    public static native int wakeUp();

    /** Whether an application prohibits energy saving now. */
    public static native boolean energySavingProhibited();

    /** The applications that suspend deep sleep now, in the order they suspended it. */
    public static List<String> deepSleepSuspendedBy() {
        return List.of(nativeDeepSleepSuspenders());
    }

    // ---- IC card reader ---------------------------------------------------------------------------------

    /**
     * A card held to the reader (the card proxy's {@code fireICCardEvent}).
     *
     * @param cardType {@link #CARD_TYPE_A}, {@link #CARD_TYPE_FELICA}, ... (the device's numbering)
     * @param cardId   the card's id text
     * @param entries  its data entries, each made with {@link #sectorEntry} (type A cards) or {@link #systemEntry}
     *                 (the other types); none: no data
     */
    public static int fireCardDetected(int cardType, String cardId, byte[]... entries) {
        Objects.requireNonNull(cardId, "cardId");
        for (byte[] entry : Objects.requireNonNull(entries, "entries")) {
            Objects.requireNonNull(entry, "entry");
        }
        return nativeCardDetected(cardType, cardId, entries);
    }

    /**
     * One data entry of a sector-organised card: the sectors with their numbers and blocks.
     *
     * @param blocks for each sector, its data: whole blocks of 16 bytes
     * @throws IllegalArgumentException when the counts differ or a sector's data is not whole blocks
     */
    public static byte[] sectorEntry(int[] sectorNumbers, byte[][] blocks) {
        checkEntry(sectorNumbers, blocks);
        return nativeSectorEntry(sectorNumbers, blocks);
    }

    /**
     * One data entry of a system-organised card: its system code and services with their codes and blocks.
     *
     * @throws IllegalArgumentException when the counts differ or a service's data is not whole blocks
     */
    public static byte[] systemEntry(int systemCode, int[] serviceCodes, byte[][] blocks) {
        checkEntry(serviceCodes, blocks);
        return nativeSystemEntry(systemCode, serviceCodes, blocks);
    }

    /** The card left the reader. */
    public static int fireCardLost() {
        return nativeCard(0, 0, 0);
    }

    /** The reader reports an error (the card proxy's {@code fireICCardErrorEvent}). */
    public static int fireCardError(int error, long detail) {
        return nativeCard(1, error, unsigned(detail, 32, "detail"));
    }

    /**
     * A reader is attached (the card proxy's {@code fireICCardDeviceEvent} with added true).
     *
     * @param cardTypes one bit per card type the reader reads (bit n for type n)
     */
    public static int fireReaderAdded(int vendor, int productId, long cardTypes) {
        return nativeReaderAdded(unsigned(vendor, 16, "vendor"), unsigned(productId, 16, "productId"),
                unsigned(cardTypes, 32, "cardTypes"));
    }

    /** The reader is detached (the card proxy's {@code fireICCardDeviceEvent} with added false). */
    public static int fireReaderRemoved() {
        return nativeCard(2, 0, 0);
    }

    /** Whether a card reader is attached now. */
    public static native boolean readerAttached();

    // ---- Application management -------------------------------------------------------------------------

    /** The device asks to run an application (the application operation proxy); the observers' answer. */
    public static int requestRunApp(String appId) {
        return nativeApps(0, Objects.requireNonNull(appId, "appId"), 0);
    }

    /** The device asks to terminate an application. */
    public static int requestTerminateApp(String appId) {
        return nativeApps(1, Objects.requireNonNull(appId, "appId"), 0);
    }

    /** The device asks an application to open its window. */
    public static int requestOpenWindow(String appId) {
        return nativeApps(2, Objects.requireNonNull(appId, "appId"), 0);
    }

    /** The device asks an application to close its window. */
    public static int requestCloseWindow(String appId) {
        return nativeApps(3, Objects.requireNonNull(appId, "appId"), 0);
    }

    /** The device's basis control request. */
    public static int requestBasisControl(int control) {
        return nativeApps(4, "", control);
    }

    /** The device asks whether an application may be run now. */
    public static int requestIsEnableRunApp() {
        return nativeApps(5, "", 0);
    }

    /** The answers applications gave to the requests above, in order. */
    public static List<AppResult> appResults() {
        List<AppResult> out = new ArrayList<>();
        for (String[] r : nativeAppResults()) {
            out.add(new AppResult(r[0], r[1], Integer.parseInt(r[2])));
        }
        return out;
    }

    // ---- Device information -----------------------------------------------------------------------------

    /**
     * A page counter as the device holds it; counters advance as the device's jobs print, scan and send.
     *
     * @param kind      the counter kind (the device's numbering: 0 printed in all, 4 scanned in all, ...)
     * @param paperSize the paper size; 0 sums over all
     * @param color     the colour; 0 sums over all
     * @return 0 for a combination the device does not count
     */
    public static long pageCount(int kind, int paperSize, int color) {
        return nativePageCount(kind, paperSize, color);
    }

    /** A machine setting as a number; null when the device has no such numeric setting. */
    public static Long setting(int key) {
        long[] value = nativeSetting(key);
        return value == null ? null : value[0];
    }

    /** A machine setting as text; null when the device has no such text setting. */
    public static native String settingText(int key);

    /** The application that holds a web service now; "" when none does. */
    public static native String webServiceReservedBy(int kind);

    /** Blocks of the platform's memory partition not yet given back (an application that frees what it takes leaves as many as before). */
    public static native long blocksInUse();

    // ---- Helpers ----------------------------------------------------------------------------------------

    private static int positive(int times) {
        if (times < 1) {
            throw new IllegalArgumentException("times must be at least 1: " + times);
        }
        return times;
    }

    /** {@code value} when it fits an unsigned field of {@code bits} bits. */
    private static long unsigned(long value, int bits, String name) {
        if (value < 0 || value >= (1L << bits)) {
            throw new IllegalArgumentException(name + " does not fit an unsigned " + bits + "-bit field: " + value);
        }
        return value;
    }

    private static long[] pageWords(long userJobId, long pageNumber, int[] attributes, int max) {
        Objects.requireNonNull(attributes, "attributes");
        if (attributes.length > max) {
            throw new IllegalArgumentException("at most " + max + " page attributes, not " + attributes.length);
        }
        long[] words = new long[2 + max];
        words[0] = unsigned(userJobId, 32, "userJobId");
        words[1] = unsigned(pageNumber, 32, "pageNumber");
        for (int i = 0; i < attributes.length; i++) {
            words[2 + i] = attributes[i];
        }
        return words;
    }

    private static void checkEntry(int[] codes, byte[][] blocks) {
        Objects.requireNonNull(codes, "codes");
        Objects.requireNonNull(blocks, "blocks");
        if (codes.length != blocks.length) {
            throw new IllegalArgumentException(codes.length + " codes but " + blocks.length + " block arrays");
        }
        for (byte[] b : blocks) {
            if (Objects.requireNonNull(b, "blocks").length % 16 != 0) {
                throw new IllegalArgumentException("card data comes in blocks of 16 bytes, not " + b.length);
            }
        }
    }

    private static Path inArea(int area, String path) {
        Path root = storageFolder(area).normalize();
        Path file = root.resolve(Objects.requireNonNull(path, "path")).normalize();
        if (Path.of(path).isAbsolute() || !file.startsWith(root) || file.equals(root)) {
            throw new IllegalArgumentException("not a file path inside storage area " + area + ": " + path);
        }
        return file;
    }

    private static List<Call> toCalls(String[][] rows) {
        List<Call> out = new ArrayList<>(rows.length);
        for (String[] r : rows) {
            out.add(new Call(r[0], Arrays.asList(r).subList(1, r.length)));
        }
        return out;
    }

    private static List<Box> boxesOf(boolean fax) {
        List<Box> out = new ArrayList<>();
        for (long id : nativeBoxIds(fax)) {
            Box b = box(id);
            if (b != null) {
                out.add(b);
            }
        }
        return out;
    }

    private static Box toBox(String[][] rows) {
        String[] b = rows[0];
        List<StoredDocument> documents = new ArrayList<>();
        for (int i = 1; i < rows.length; i++) {
            String[] d = rows[i];
            documents.add(new StoredDocument(Long.parseLong(d[0]), d[1], Long.parseLong(d[2]), Integer.parseInt(d[3]),
                    Integer.parseInt(d[4]), Integer.parseInt(d[5]), Integer.parseInt(d[6]), Long.parseLong(d[7]),
                    Long.parseLong(d[8])));
        }
        return new Box(Long.parseLong(b[0]), b[1].equals("1"), Long.parseLong(b[2]), b[3], b[4], b[5], b[6],
                Integer.parseInt(b[7]), Long.parseLong(b[8]), Long.parseLong(b[9]), documents);
    }

    // ---- Natives (libjbrgsimctl.so) ---------------------------------------------------------------------

    private static native void nativeLoadScenario(String textOrPath, boolean isFile);
    private static native void nativeForceResult(String op, int code, int times);
    private static native void nativeForceOut(String op, String out, String value, int times);
    private static native String[][] nativeCalls(String op);
    private static native String[][] nativeTraces();
    private static native String[] nativeAreaFiles(int area);
    private static native boolean nativeAddLocalUser(String loginName, String password, String userName,
            String email, String card, int rights);
    private static native long nativeAddBox(boolean fax, long number, String name, String ownerLoginName,
            String password, long capacity);
    private static native long nativeStoreDocument(long boxId, String name, long pages, long dataSize);
    private static native long[] nativeBoxIds(boolean fax);
    private static native String[][] nativeBox(long boxId);
    private static native long nativeAddPersonal(String name, String pronunciation, String email, String fax);
    private static native int nativeAddGroup(String name, String pronunciation);
    private static native boolean nativeAddMember(long groupId, long number, int type);
    private static native String nativeAreaFolder(int area);
    private static native void nativeSetPages(int pages);
    private static native boolean nativeFinish(long userJobId);
    private static native long[] nativeUserJob(long userJobId);
    private static native byte[] nativeUserJobStream(long userJobId);
    private static native String[][] nativeJobInfos();
    private static native int nativeJobState(long[] words, String userName);
    private static native int nativeJob(int kind, long a, long b);
    private static native int nativeJobInfo(int kind, long[] words, String name);
    private static native int nativePanel(int kind, String appId);
    private static native String[] nativePanelTexts(int kind);
    private static native int nativeEsm(int kind, long a, long b);
    private static native String[] nativeDeepSleepSuspenders();
    private static native int nativeCardDetected(int cardType, String cardId, byte[][] entries);
    private static native byte[] nativeSectorEntry(int[] numbers, byte[][] blocks);
    private static native byte[] nativeSystemEntry(int systemCode, int[] codes, byte[][] blocks);
    private static native int nativeCard(int kind, int a, long b);
    private static native int nativeReaderAdded(long vendor, long productId, long cardTypes);
    private static native int nativeApps(int kind, String appId, int value);
    private static native String[][] nativeAppResults();
    private static native long nativePageCount(int kind, int paperSize, int color);
    private static native long[] nativeSetting(int key);
}
