package jbrg.bench;

import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.Random;
import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/**
 * Checks of the benchmark itself, run by CTest: that its statistics, table and JSON say what was measured,
 * that the runner measures what it is given, that each hand-written baseline reads and writes the same field
 * as the generated path it stands beside and builds the same objects as each listing, and that every event
 * kind reaches its proxy by both paths. The
 * cases run in a shuffled order, the seed printed first (-Djbrg.seed=N repeats an order).
 */
public final class BenchCheck {
    private interface Case {
        void run() throws Exception;
    }

    private static final List<String> names = new ArrayList<>();
    private static final List<Case> cases = new ArrayList<>();

    private BenchCheck() {}

    private static void add(String name, Case c) {
        names.add(name);
        cases.add(c);
    }

    static void check(boolean condition, String what) {
        if (!condition) {
            throw new AssertionError(what);
        }
    }

    static void near(double expected, double actual, String what) {
        check(Math.abs(expected - actual) < 1e-9, what + ": expected " + expected + ", got " + actual);
    }

    static Stats stats(double... rounds) {
        return Stats.of(rounds);
    }

    public static void main(String[] args) throws Exception {
        statistics();
        results();
        report();
        runner();
        baselines();
        events();
        listings();
        startup();

        long seed = Long.getLong("jbrg.seed", new Random().nextLong());
        System.out.println("seed " + seed);
        List<Integer> order = new ArrayList<>();
        for (int i = 0; i < cases.size(); i++) {
            order.add(i);
        }
        Collections.shuffle(order, new Random(seed));
        long[] bridge = Bench.bringUp();
        int failed = 0;
        try {
            for (int i : order) {
                try {
                    cases.get(i).run();
                } catch (Throwable e) {
                    failed++;
                    System.out.println("FAILED " + names.get(i) + ": " + e);
                }
            }
        } finally {
            Events.clearAll();
            Bench.bringDown(bridge);
        }
        System.out.println((cases.size() - failed) + " of " + cases.size() + " checks passed");
        System.exit(failed == 0 ? 0 : 1);
    }

    // ---- Listings: the baseline builds what the bridge builds ---------------------------------------------

    static void listings() {
        add("each listing's hand-built objects equal the bridge's, field by field, in order", () -> {
            Baseline.loadScenario(Listings.scenario(12));
            long auth = qsf_fnd_userJNI.new_qsf_fnd_authentication();
            long boxes = orvane.qsf.wrapper.box.qsf_fnd_document_box_moduleJNI.qsf_fnd_user_box_manager_qsf_fnd_get_instance();
            long book = orvane.qsf.wrapper.address.cmt_address_book_moduleJNI.new_cmt_address_book();
            try {
                for (Listings.Kind kind : Listings.Kind.values()) {
                    check(Baseline.keep(kind.ordinal()) == 12, kind + " kept");
                    check(Baseline.platform(kind.ordinal()) == 12, kind + " listed by the device alone");
                    Object bridge = Listings.listOnce(kind, auth, boxes, book, Baseline.documentBox());
                    Object hand = Baseline.build(kind.ordinal());
                    check(Listings.size(bridge) == 12, kind + ": the bridge listed " + Listings.size(bridge));
                    String difference = Same.difference(bridge, hand, kind.toString());
                    check(difference == null, difference);
                }
            } finally {
                qsf_fnd_userJNI.delete_qsf_fnd_authentication(auth);
                orvane.qsf.wrapper.address.cmt_address_book_moduleJNI.delete_cmt_address_book(book);
                Baseline.clearLogs();
                Baseline.loadScenario("");
            }
        });
        add("the listings' scenario holds what each count asks for", () -> {
            String s = Listings.scenario(3);
            check(s.contains("\"user00003\"") && !s.contains("user00004"), s);
            check(s.contains("\"documents_generated\": 3") && s.contains("\"personal_generated\": 3"), s);
        });
    }

    // ---- Medians, spread and the rounds that stray ------------------------------------------------------

    static void statistics() {
        add("statistics: median of an odd and an even number of rounds, spread and quartiles; no rounds refused",
                () -> {
            near(3, stats(5, 1, 3).median, "odd");
            near(2.5, stats(4, 1, 3, 2).median, "even");
            near(7, stats(7).median, "one round");
            Stats s = stats(10, 40, 20, 30, 50);
            near(10, s.min, "min");
            near(50, s.max, "max");
            near(20, s.q1, "q1");
            near(40, s.q3, "q3");
            near(17.5, stats(10, 20, 30, 40).q1, "q1 interpolated");
            try {
                Stats.of(new double[0]);
                check(false, "no rounds: no exception");
            } catch (IllegalArgumentException expected) {
                // refused
            }
        });
        add("statistics: a round more than 20% off the median strays, one within it does not", () -> {
            Stats s = stats(100, 101, 99, 125, 100, 85);
            check(s.strays.equals(List.of(3)), "strays " + s.strays);
            check(stats(100, 100, 100, 79).strays.size() == 1, "79 of 100 strays");
            check(stats(100, 100, 100, 81, 119).strays.isEmpty(), "81 and 119 of 100 do not");
        });
    }

    // ---- Ratios, goals and notes ------------------------------------------------------------------------

    static void results() {
        add("result: the ratio of medians against a ratio goal", () -> {
            Result met = new Result("f", "p", "b", stats(104, 105, 103), stats(100, 100, 100), Result.Goal.RATIO,
                    1.05, false);
            near(1.04, met.ratio(), "ratio");
            check(met.met() && met.status().equals("met"), "1.04x meets 1.05x");
            Result missed = new Result("f", "p", "b", stats(106), stats(100), Result.Goal.RATIO, 1.05, false);
            check(!missed.met() && missed.status().equals("MISSED"), "1.06x misses 1.05x");
        });
        add("result: an absolute goal looks at the path's median alone; a path without a goal is neither met nor "
                + "missed", () -> {
            Result r = new Result("f", "p", "b", stats(4e6, 6e6, 4.5e6), stats(1e9), Result.Goal.ABSOLUTE_NS, 5e6,
                    false);
            check(r.met(), "4.5 ms meets 5 ms");
            check(r.goalText().equals("<= 5.0 ms"), r.goalText());
            check(!new Result("f", "p", "b", stats(5.1e6), stats(1), Result.Goal.ABSOLUTE_NS, 5e6, false).met(),
                    "5.1 ms misses");
            Result none = new Result("f", "p", "b", stats(9), stats(1), Result.Goal.NONE, 0, false);
            check(none.status().equals("-") && none.goalText().equals("-"), none.status() + " " + none.goalText());
        });
        add("result: rates and the notes of straying rounds", () -> {
            Result r = new Result("f", "p", "b", stats(1000, 1000, 2000), stats(500, 500, 500), Result.Goal.RATIO,
                    1.1, true);
            near(1e6, r.perSecond, "events per second");
            near(2e6, r.baselinePerSecond, "baseline per second");
            check(r.notes.size() == 1 && r.notes.get(0).equals("path round 3 more than 20% off the median"), r.notes.toString());
            near(0, new Result("f", "p", "b", stats(1), stats(1), Result.Goal.RATIO, 1, false).perSecond,
                    "no rate unless asked");
        });
    }

    // ---- The table and the JSON -------------------------------------------------------------------------

    static List<Result> sample() {
        List<Result> list = new ArrayList<>();
        list.add(new Result("accessors", "int getter", "hand", stats(12, 11, 13), stats(10, 10, 10),
                Result.Goal.RATIO, 1.05, false));
        list.add(new Result("events", "sleep \"quoted\"", "bare", stats(2000, 2000, 3000), stats(1000),
                Result.Goal.RATIO, 1.1, true));
        return list;
    }

    static void report() {
        add("report: the table has every path, its times, ratio, goal and status", () -> {
            String t = Report.table(sample(), false);
            check(t.contains("int getter") && t.contains("12.0 (11.0-13.0)") && t.contains("1.20x")
                    && t.contains("<= 1.05x") && t.contains("MISSED"), t);
            check(t.contains("500000 events/s (baseline 1000000 events/s)"), t);
            check(t.contains("note: path round 3 more than 20% off the median"), t);
            Result two = new Result("f", "p", "b", stats(1, 5, 5, 5, 9), stats(1), Result.Goal.RATIO, 1, false);
            check(two.notes.equals(List.of("path rounds 1, 5 more than 20% off the median")), two.notes.toString());
        });
        add("report: ratios only leaves the times out", () -> {
            String t = Report.table(sample(), true);
            check(t.contains("1.20x") && !t.contains("12.0 (11.0-13.0)") && !t.contains("ns/op"), t);
            check(!t.contains("events/s"), "no rates: " + t);
            List<Result> absolute = List.of(new Result("start-up", "init", "vm", stats(9e6), stats(1e8),
                    Result.Goal.ABSOLUTE_NS, 5e6, false));
            check(Report.table(absolute, true).contains("(not judged: times)"), Report.table(absolute, true));
            check(Report.table(absolute, false).contains("MISSED"), Report.table(absolute, false));
        });
        add("report: the JSON holds each result with its medians, spread, goal and notes", () -> {
            String j = Report.json(sample(), new Runner(1, 3, 0.5), "test machine");
            check(j.contains("\"machine\": \"test machine\"") && j.contains("\"rounds\": 3"), j);
            check(j.contains("\"path\": \"sleep \\\"quoted\\\"\""), "quotes escaped: " + j);
            check(j.contains("\"ns\": {\"median\": 12.00, \"min\": 11.00, \"max\": 13.00"), j);
            check(j.contains("\"met\": false") && j.contains("\"per_second\": 5.000e05"), j);
            int depth = 0;
            for (char c : j.toCharArray()) {
                depth += c == '{' || c == '[' ? 1 : c == '}' || c == ']' ? -1 : 0;
                check(depth >= 0, "balanced");
            }
            check(depth == 0, "balanced at the end");
        });
        add("report: numbers JSON cannot hold and control characters", () -> {
            check(Report.num(Double.NaN).equals("null") && Report.num(Double.POSITIVE_INFINITY).equals("null"),
                    "NaN and infinity are null");
            check(Report.num(1.5e9).equals("1.500e09"), Report.num(1.5e9));
            check(Report.quote("a\\b\n\u0001").equals("\"a\\\\b\\n\\u0001\""), Report.quote("a\\b\n\u0001"));
        });
    }

    // ---- The runner -------------------------------------------------------------------------------------

    static void runner() {
        add("runner: warm-ups are run and dropped, slices alternate, rounds change which side goes first", () -> {
            List<String> calls = new ArrayList<>();
            List<Integer> sizes = new ArrayList<>();
            Runner r = new Runner(1, 2, 1);
            double[][] rounds = r.pair(n -> {
                calls.add("p");
                sizes.add(n);
                return 10L * n;
            }, n -> {
                calls.add("b");
                return 5L * n;
            }, 23);
            String slices = "pb".repeat(Runner.SLICES);
            check(String.join("", calls).equals(slices + slices + "bp".repeat(Runner.SLICES)), String.join("", calls));
            check(sizes.stream().mapToInt(Integer::intValue).sum() == 3 * 23, "every operation run, " + sizes);
            check(rounds[0].length == 2 && rounds[1].length == 2, "two rounds each");
            near(10, rounds[0][1], "ns per operation of the path");
            near(5, rounds[1][1], "ns per operation of the baseline");
        });
        add("runner: fewer operations than slices run one at a time", () -> {
            List<Integer> sizes = new ArrayList<>();
            new Runner(0, 1, 1).pair(n -> {
                sizes.add(n);
                return n;
            }, n -> n, 3);
            check(sizes.equals(List.of(1, 1, 1)), sizes.toString());
        });
        add("runner: a side that fails stops the measurement", () -> {
            Runner r = new Runner(0, 5, 1);
            try {
                r.pair(n -> 1, n -> -1, 3);
                check(false, "no exception");
            } catch (IllegalStateException expected) {
                check(expected.getMessage().contains("baseline"), expected.getMessage());
            }
        });
        add("runner: the scale sets the operations per round, never below one", () -> {
            check(new Runner(0, 5, 0.01).ops(1000) == 10, "1000 at 0.01");
            check(new Runner(0, 5, 1e-9).ops(1000) == 1, "at least one");
            try {
                new Runner(0, 0, 1);
                check(false, "zero rounds accepted");
            } catch (IllegalArgumentException expected) {
                // refused
            }
        });
    }

    // ---- Each baseline against the bridge path it stands beside -------------------------------------

    static void baselines() {
        add("baselines: the hand-written int accessors read and write the generated path's field", () -> {
            long a = qsf_fnd_userJNI.new_XSI_AIS_USERINFO_RECORD();
            long b = Baseline.newRecord();
            try {
                qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_rights_set(a, null, 5);
                check(Baseline.getRights(a, null) == 5, "hand-written reads the generated write");
                Baseline.setRights(b, null, 6);
                check(qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_rights_get(b, null) == 6,
                        "generated reads the hand-written write");
                check(Baseline.getRights(0, null) == 0, "a zero handle reads 0");
            } finally {
                qsf_fnd_userJNI.delete_XSI_AIS_USERINFO_RECORD(a);
                Baseline.deleteRecord(b);
            }
        });
        add("baselines: the hand-written text accessors agree with the generated ones", () -> {
            long a = qsf_fnd_userJNI.new_XSI_AIS_USERINFO_RECORD();
            long b = Baseline.newRecord();
            try {
                check(Accessors.TEXT.length() == 24, "a 24-character text");
                qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_user_name_set(a, null, Accessors.TEXT);
                check(Baseline.getUserName(a, null).equals(Accessors.TEXT), "hand-written reads the generated write");
                Baseline.setUserName(b, null, "longer text written first");
                Baseline.setUserName(b, null, "short");
                check(qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_user_name_get(b, null).equals("short"),
                        "the zero ends a shorter text");
                String full = "x".repeat(192);
                Baseline.setUserName(b, null, full);
                check(qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_user_name_get(b, null).equals(full), "192 fit");
                Baseline.setUserName(b, null, full + "y");
                check(Baseline.getUserName(b, null).equals(full), "193 do not, and leave the field as it was");
            } finally {
                qsf_fnd_userJNI.delete_XSI_AIS_USERINFO_RECORD(a);
                Baseline.deleteRecord(b);
            }
        });
    }

    // ---- Every event kind arrives, by both paths -------------------------------------------------------

    static void events() {
        add("events: every observer kind delivers each event fired to its proxy, from 1 and 8 threads", () -> {
            check(Baseline.initEvents(), "proxies found");
            for (Events.Kind kind : Events.Kind.values()) {
                for (int threads : Events.THREADS) {
                    Events.clearAll();
                    long elapsed = Baseline.fire(kind.ordinal(), 11, threads);
                    check(elapsed >= 0, kind + " fired from " + threads);
                    check(Events.received(kind) == 11, kind + " arrived " + Events.received(kind) + " of 11");
                }
            }
            Events.clearAll();
        });
        add("events: the bare delivery makes the same call of the same proxy", () -> {
            check(Baseline.initEvents(), "proxies found");
            for (Events.Kind kind : Events.Kind.values()) {
                Events.clearAll();
                check(Events.checked(kind, 9, Baseline.bare(kind.ordinal(), 9, 8)) >= 0, kind + " bare, 8 threads");
                check(Events.received(kind) == 0, "checked() clears the proxies");
            }
        });
        add("events: a run whose events did not all arrive is a failure", () -> {
            Events.clearAll();
            check(Events.checked(Events.Kind.ESM, 1, 1234) == -1, "none arrived");
            check(Baseline.fire(99, 1, 1) == -1 && Baseline.bare(-1, 1, 1) == -1, "no such kind");
            check(Baseline.fire(0, 1, 0) == -1, "no threads");
        });
    }

    // ---- Start-up in child VMs --------------------------------------------------------------------------

    static void startup() {
        add("start-up: a child that brings the bridge up reports its three steps, with or without the "
                + "observers' classes loaded first (each of which exists)", () -> {
            for (String mode : new String[] {"init", "preloaded"}) {
                long[] steps = new long[3];
                check(Startup.child(mode, steps) > 0, mode + ": wall time");
                for (long s : steps) {
                    check(s > 0, mode + ": step time " + s);
                }
            }
            check(Startup.child("idle", null) > 0, "an idle child");
        });
        add("start-up: the child's line is read strictly", () -> {
            long[] steps = new long[3];
            Startup.parseSteps(" 1 22 333\n", steps);
            check(steps[0] == 1 && steps[1] == 22 && steps[2] == 333, "three numbers");
            for (String bad : new String[] {null, "", "1 2", "1 2 3 4"}) {
                try {
                    Startup.parseSteps(bad, steps);
                    check(false, "accepted \"" + bad + "\"");
                } catch (IllegalStateException expected) {
                    // refused
                }
            }
        });
    }
}
