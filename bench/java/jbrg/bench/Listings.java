package jbrg.bench;

import java.util.ArrayList;
import java.util.List;
import orvane.qsf.wrapper.address.cmt_address_book_moduleJNI;
import orvane.qsf.wrapper.box.qsf_fnd_document_box_moduleJNI;
import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/**
 * Listings: the local users, the user boxes, the documents of a box and the personal addresses, each listed
 * from Java through the generated exports with 10, 1,000 and 10,000 entries on the simulated device, per entry
 * against the bare JNI work of building the same Java objects from the same records (Baseline.build), and
 * beside it the device's listing alone (Baseline.platform), which is in the bridge's time and not in the
 * baseline's: the line under each path is the path less the device's listing, the bridge's own part. After
 * each count the process's resident size and its peak are noted.
 */
final class Listings implements Family {
    static final double GOAL = 1.2;
    static final int[] COUNTS = {10, 1_000, 10_000};
    /** Entries listed per round at each count (fewer listings of more entries). */
    private static final int ENTRIES_PER_ROUND = 20_000;

    enum Kind {
        USERS("local users"), BOXES("user boxes"), DOCUMENTS("documents of a box"), ADDRESSES("personal addresses");

        final String title;

        Kind(String title) {
            this.title = title;
        }
    }

    static volatile Object sink;

    @Override
    public String name() {
        return "listings";
    }

    @Override
    public List<Result> run(Runner runner) throws Exception {
        List<Result> results = new ArrayList<>();
        long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
        long boxes = qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_get_instance();
        long book = cmt_address_book_moduleJNI.new_cmt_address_book();
        try {
            for (int count : COUNTS) {
                Baseline.loadScenario(scenario(count));
                for (Kind kind : Kind.values()) {
                    int kept = Baseline.keep(kind.ordinal());
                    if (kept != count) {
                        throw new IllegalStateException(kind.title + ": the device listed " + kept + " of " + count);
                    }
                    long box = Baseline.documentBox();
                    Runner.Op path = n -> list(kind, auth, boxes, book, box, count, n);
                    Runner.Op bare = n -> timed(n, count, () -> Baseline.build(kind.ordinal()));
                    Runner.Op device = n -> timed(n, count, () -> Baseline.platform(kind.ordinal()));
                    int ops = Math.max(1, runner.ops(ENTRIES_PER_ROUND) / count);
                    String label = kind.title + ", " + count;
                    double[][] r = perEntry(runner.pair(path, bare, ops), count);
                    Result line = new Result(name(), label + " (generated)", "the same objects built by hand",
                            Stats.of(r[0]), Stats.of(r[1]), Result.Goal.RATIO, GOAL, false);
                    results.add(line);
                    // The bridge's own part: its time less the device's listing, round by round.
                    double[][] p = perEntry(runner.pair(device, bare, ops), count);
                    double[] own = new double[r[0].length];
                    for (int i = 0; i < own.length; i++) {
                        own[i] = Math.max(0, r[0][i] - p[0][i]);
                    }
                    Result part = new Result(name(), "  " + label + ", less the device's listing",
                            "the same objects built by hand", Stats.of(own), Stats.of(r[1]), Result.Goal.NONE, 0,
                            false);
                    part.notes.add(String.format("the device's listing alone: %.0f ns an entry", Stats.of(p[0]).median));
                    results.add(part);
                }
                results.get(results.size() - 1).notes.add(Memory.now().describe(count));
            }
        } finally {
            qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
            cmt_address_book_moduleJNI.delete_cmt_address_book(book);
            Baseline.loadScenario("");
        }
        return results;
    }

    private static double[][] perEntry(double[][] perListing, int count) {
        for (double[] side : perListing) {
            for (int i = 0; i < side.length; i++) {
                side[i] /= count;
            }
        }
        return perListing;
    }

    /** One listing through the generated export of its kind. */
    static Object listOnce(Kind kind, long auth, long boxes, long book, long box) {
        switch (kind) {
            case USERS: {
                ArrayList<Object> users = new ArrayList<>();
                int result = qsf_fnd_userJNI.qsf_fnd_authentication_get_local_user_list(auth, null, users);
                return result == 0 ? users : null;
            }
            case BOXES:
                return qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_get_user_box_list__SWIG_0(
                        boxes, null);
            case DOCUMENTS: {
                ArrayList<Object> documents = new ArrayList<>();
                int result = qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_get_document_list__SWIG_0(
                        boxes, null, box, "", documents);
                return result == 0 ? documents : null;
            }
            default:
                return cmt_address_book_moduleJNI.cmt_address_book_get_all_address(book, null, 1);
        }
    }

    /** The number of entries a listing gave: the list's size or the array's length. */
    static int size(Object listing) {
        if (listing instanceof List) {
            return ((List<?>) listing).size();
        }
        return listing instanceof Object[] ? ((Object[]) listing).length : -1;
    }

    private static long list(Kind kind, long auth, long boxes, long book, long box, int count, int n) {
        long elapsed = 0;
        for (int i = 0; i < n; i++) {
            long start = System.nanoTime();
            Object listing = listOnce(kind, auth, boxes, book, box);
            elapsed += System.nanoTime() - start;
            if (size(listing) != count) {
                return -1;
            }
            sink = listing;
            // The simulated device keeps every call and trace line for the tests; a device keeps neither.
            Baseline.clearLogs();
        }
        return elapsed;
    }

    interface Listing {
        Object run();
    }

    private static long timed(int n, int count, Listing listing) {
        long elapsed = 0;
        for (int i = 0; i < n; i++) {
            long start = System.nanoTime();
            Object made = listing.run();
            elapsed += System.nanoTime() - start;
            if (made instanceof Integer ? (Integer) made != count : size(made) != count) {
                return -1;
            }
            sink = made;
            Baseline.clearLogs();
        }
        return elapsed;
    }

    /** A device with `count` local users, user boxes (the first holding `count` documents) and addresses. */
    static String scenario(int count) {
        StringBuilder s = new StringBuilder(count * 300);
        s.append("{\"users\": {\"local\": [");
        for (int i = 1; i <= count; i++) {
            s.append(i == 1 ? "" : ",").append(String.format(
                    "{\"login_name\": \"user%05d\", \"user_name\": \"User %05d\", \"email\": \"user%05d@example.com\","
                            + " \"rights\": %d}", i, i, i, i % 2));
        }
        s.append("]}, \"boxes\": {\"limit\": ").append(count).append(", \"user\": [");
        for (int i = 1; i <= count; i++) {
            s.append(i == 1 ? "" : ",").append(String.format(
                    "{\"number\": %d, \"name\": \"box %05d\", \"owner_login_name\": \"user%05d\","
                            + " \"owner_name\": \"User %05d\", \"share\": %d%s}", i, i, i, i, i % 2,
                    i == 1 ? ", \"documents_generated\": " + count : ""));
        }
        s.append("]}, \"address_book\": {\"personal_generated\": ").append(count).append("}}");
        return s.toString();
    }
}
