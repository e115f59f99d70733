package jbrg.bench;

/**
 * Measures a path against its baseline: warm-up rounds first, then rounds in which both run. A round is cut
 * into slices that alternate between the two sides (the path first in even rounds, the baseline first in odd
 * ones), so that what else the machine does during a round falls on both sides alike.
 */
final class Runner {
    /** One measured run of {@code ops} operations: its elapsed nanoseconds, or -1 when it failed. */
    interface Op {
        long run(int ops) throws Exception;
    }

    /** The slices of each side in a round. */
    static final int SLICES = 10;

    final int warmups;
    final int rounds;
    /** Scales every family's operations per round (smaller for a quick run or under emulation). */
    final double scale;

    Runner(int warmups, int rounds, double scale) {
        if (rounds < 1 || warmups < 0 || scale <= 0) {
            throw new IllegalArgumentException("rounds >= 1, warm-ups >= 0, scale > 0");
        }
        this.warmups = warmups;
        this.rounds = rounds;
        this.scale = scale;
    }

    int ops(int base) {
        return Math.max(1, (int) Math.round(base * scale));
    }

    /** Nanoseconds per operation of each round of path and baseline: {path rounds, baseline rounds}. */
    double[][] pair(Op path, Op baseline, int ops) throws Exception {
        for (int i = 0; i < warmups; i++) {
            round(path, baseline, ops, true);
        }
        double[] p = new double[rounds];
        double[] b = new double[rounds];
        for (int i = 0; i < rounds; i++) {
            long[] elapsed = round(path, baseline, ops, i % 2 == 0);
            p[i] = elapsed[0] / (double) ops;
            b[i] = elapsed[1] / (double) ops;
        }
        return new double[][] {p, b};
    }

    /** One round of {@code ops} operations of each side, in slices: {path ns, baseline ns}. */
    private static long[] round(Op path, Op baseline, int ops, boolean pathFirst) throws Exception {
        long[] elapsed = new long[2];
        int slices = Math.min(SLICES, ops);
        for (int s = 0; s < slices; s++) {
            int n = ops / slices + (s < ops % slices ? 1 : 0);
            if (pathFirst) {
                elapsed[0] += once(path, n, "path");
                elapsed[1] += once(baseline, n, "baseline");
            } else {
                elapsed[1] += once(baseline, n, "baseline");
                elapsed[0] += once(path, n, "path");
            }
        }
        return elapsed;
    }

    Result ratio(String family, String path, String baselinePath, Op subject, Op baseline, int ops, double goal,
                 boolean rate) throws Exception {
        double[][] r = pair(subject, baseline, ops);
        return new Result(family, path, baselinePath, Stats.of(r[0]), Stats.of(r[1]), Result.Goal.RATIO, goal, rate);
    }

    private static long once(Op op, int ops, String which) throws Exception {
        long elapsed = op.run(ops);
        if (elapsed < 0) {
            throw new IllegalStateException("the " + which + " failed to run " + ops + " operations");
        }
        return elapsed;
    }
}
