package jbrg.bench;

/**
 * Measures a path against its baseline: warm-up rounds first, then rounds in which both run, the path first
 * in even rounds and the baseline first in odd ones, so that a drift of the machine falls on both.
 */
final class Runner {
    /** One measured run of {@code ops} operations: its elapsed nanoseconds, or -1 when it failed. */
    interface Op {
        long run(int ops) throws Exception;
    }

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
            once(path, ops, "path");
            once(baseline, ops, "baseline");
        }
        double[] p = new double[rounds];
        double[] b = new double[rounds];
        for (int i = 0; i < rounds; i++) {
            if (i % 2 == 0) {
                p[i] = once(path, ops, "path") / (double) ops;
                b[i] = once(baseline, ops, "baseline") / (double) ops;
            } else {
                b[i] = once(baseline, ops, "baseline") / (double) ops;
                p[i] = once(path, ops, "path") / (double) ops;
            }
        }
        return new double[][] {p, b};
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
