package jbrg.bench;

import java.util.ArrayList;
import java.util.List;

/** One line of the table: a bridge path, its baseline, and whether it meets its goal. */
final class Result {
    /** How a goal is stated: a ratio to the baseline, or an absolute time in nanoseconds. */
    enum Goal { RATIO, ABSOLUTE_NS, NONE }

    final String family;
    final String path;
    final String baselinePath;
    final Stats subject;
    final Stats baseline;
    final Goal goalKind;
    final double goal;
    /** Operations per second of the path, for the paths where a rate says more (events); 0 otherwise. */
    final double perSecond;
    final double baselinePerSecond;
    /** What the runner noticed about the rounds, one line each. */
    final List<String> notes = new ArrayList<>();

    Result(String family, String path, String baselinePath, Stats subject, Stats baseline, Goal goalKind,
           double goal, boolean rate) {
        this.family = family;
        this.path = path;
        this.baselinePath = baselinePath;
        this.subject = subject;
        this.baseline = baseline;
        this.goalKind = goalKind;
        this.goal = goal;
        this.perSecond = rate && subject.median > 0 ? 1e9 / subject.median : 0;
        this.baselinePerSecond = rate && baseline.median > 0 ? 1e9 / baseline.median : 0;
        note("path", subject);
        note("baseline", baseline);
    }

    private void note(String which, Stats stats) {
        if (stats.strays.isEmpty()) {
            return;
        }
        StringBuilder rounds = new StringBuilder();
        for (int round : stats.strays) {
            rounds.append(rounds.length() == 0 ? "" : ", ").append(round + 1);
        }
        notes.add(String.format("%s round%s %s more than %.0f%% off the median", which,
                stats.strays.size() == 1 ? "" : "s", rounds, Stats.STRAY * 100));
    }

    double ratio() {
        return baseline.median > 0 ? subject.median / baseline.median : Double.NaN;
    }

    /** Whether the path meets its goal; a path without a goal meets it. */
    boolean met() {
        switch (goalKind) {
            case RATIO:
                return ratio() <= goal;
            case ABSOLUTE_NS:
                return subject.median <= goal;
            default:
                return true;
        }
    }

    String goalText() {
        switch (goalKind) {
            case RATIO:
                return String.format("<= %.2fx", goal);
            case ABSOLUTE_NS:
                return String.format("<= %.1f ms", goal / 1e6);
            default:
                return "-";
        }
    }

    String status() {
        return goalKind == Goal.NONE ? "-" : met() ? "met" : "MISSED";
    }
}
