package jbrg.bench;

import java.util.ArrayList;
import java.util.List;
import orvane.qsf.wrapper.user.qsf_fnd_userJNI;

/**
 * Accessors: the generated getter and setter of a record field, from Java, against the same field read and
 * written by hand through the same kind of handle, and against an empty native. The record is the user
 * information record of the user module; its rights (an int) and its user name (a text of 193 bytes, given
 * 24 characters here).
 */
final class Accessors implements Family {
    static final double GOAL = 1.05;
    static final String TEXT = "benchmark-user-name-0024";
    private static final int OPS = 2_000_000;
    private static final int TEXT_OPS = 500_000;

    /** Keeps what the loops read, so that nothing is left unused. */
    static volatile long sink;

    @Override
    public String name() {
        return "accessors";
    }

    @Override
    public List<Result> run(Runner runner) throws Exception {
        long generated = qsf_fnd_userJNI.new_XSI_AIS_USERINFO_RECORD();
        long handWritten = Baseline.newRecord();
        try {
            qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_user_name_set(generated, null, TEXT);
            Baseline.setUserName(handWritten, null, TEXT);
            int ops = runner.ops(OPS);
            int textOps = runner.ops(TEXT_OPS);
            List<Result> results = new ArrayList<>();
            results.add(runner.ratio(name(), "int getter (generated)", "int getter (hand-written)",
                    n -> intGetGenerated(generated, n), n -> intGetHand(handWritten, n), ops, GOAL, false));
            results.add(runner.ratio(name(), "int setter (generated)", "int setter (hand-written)",
                    n -> intSetGenerated(generated, n), n -> intSetHand(handWritten, n), ops, GOAL, false));
            // What any JNI call costs: the floor under both getters, shown without a goal.
            double[][] floor = runner.pair(n -> intGetGenerated(generated, n), Accessors::empty, ops);
            results.add(new Result(name(), "int getter (generated) vs empty native", "static native int f(int)",
                    Stats.of(floor[0]), Stats.of(floor[1]), Result.Goal.NONE, 0, false));
            results.add(runner.ratio(name(), "text getter, 24 chars (generated)", "text getter (NewStringUTF)",
                    n -> textGetGenerated(generated, n), n -> textGetHand(handWritten, n), textOps, GOAL, false));
            results.add(runner.ratio(name(), "text setter, 24 chars (generated)", "text setter (GetStringUTFRegion)",
                    n -> textSetGenerated(generated, n), n -> textSetHand(handWritten, n), textOps, GOAL, false));
            return results;
        } finally {
            qsf_fnd_userJNI.delete_XSI_AIS_USERINFO_RECORD(generated);
            Baseline.deleteRecord(handWritten);
        }
    }

    // One loop per call, written out: a loop shared through a lambda would put a call site that sees every
    // accessor between the loop and the native, and measure that as well.

    static long intGetGenerated(long handle, int n) {
        long sum = 0;
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            sum += qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_rights_get(handle, null);
        }
        long elapsed = System.nanoTime() - start;
        sink = sum;
        return elapsed;
    }

    static long intGetHand(long handle, int n) {
        long sum = 0;
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            sum += Baseline.getRights(handle, null);
        }
        long elapsed = System.nanoTime() - start;
        sink = sum;
        return elapsed;
    }

    static long empty(int n) {
        long sum = 0;
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            sum += Baseline.empty(i);
        }
        long elapsed = System.nanoTime() - start;
        sink = sum;
        return elapsed;
    }

    static long intSetGenerated(long handle, int n) {
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_rights_set(handle, null, i & 7);
        }
        return System.nanoTime() - start;
    }

    static long intSetHand(long handle, int n) {
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            Baseline.setRights(handle, null, i & 7);
        }
        return System.nanoTime() - start;
    }

    static long textGetGenerated(long handle, int n) {
        long sum = 0;
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            sum += qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_user_name_get(handle, null).length();
        }
        long elapsed = System.nanoTime() - start;
        sink = sum;
        return elapsed;
    }

    static long textGetHand(long handle, int n) {
        long sum = 0;
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            sum += Baseline.getUserName(handle, null).length();
        }
        long elapsed = System.nanoTime() - start;
        sink = sum;
        return elapsed;
    }

    static long textSetGenerated(long handle, int n) {
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            qsf_fnd_userJNI.XSI_AIS_USERINFO_RECORD_user_name_set(handle, null, TEXT);
        }
        return System.nanoTime() - start;
    }

    static long textSetHand(long handle, int n) {
        long start = System.nanoTime();
        for (int i = 0; i < n; i++) {
            Baseline.setUserName(handle, null, TEXT);
        }
        return System.nanoTime() - start;
    }
}
