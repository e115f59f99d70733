package jbrg.bench;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/** What the runner says about the rounds of one measurement: median, spread, and the rounds that stray. */
final class Stats {
    /** A round further than this from the median (as a fraction of it) is reported. */
    static final double STRAY = 0.20;

    final double median;
    final double min;
    final double max;
    final double q1;
    final double q3;
    /** Indexes (from 0) of the rounds more than {@link #STRAY} off the median. */
    final List<Integer> strays;

    private Stats(double median, double min, double max, double q1, double q3, List<Integer> strays) {
        this.median = median;
        this.min = min;
        this.max = max;
        this.q1 = q1;
        this.q3 = q3;
        this.strays = strays;
    }

    static Stats of(double[] rounds) {
        if (rounds.length == 0) {
            throw new IllegalArgumentException("no rounds");
        }
        double[] sorted = rounds.clone();
        Arrays.sort(sorted);
        double median = quantile(sorted, 0.5);
        List<Integer> strays = new ArrayList<>();
        for (int i = 0; i < rounds.length; i++) {
            if (Math.abs(rounds[i] - median) > STRAY * Math.abs(median)) {
                strays.add(i);
            }
        }
        return new Stats(median, sorted[0], sorted[sorted.length - 1], quantile(sorted, 0.25),
                quantile(sorted, 0.75), strays);
    }

    /** Linear interpolation between the closest ranks of a sorted array. */
    static double quantile(double[] sorted, double q) {
        double position = q * (sorted.length - 1);
        int below = (int) Math.floor(position);
        int above = (int) Math.ceil(position);
        return sorted[below] + (sorted[above] - sorted[below]) * (position - below);
    }
}
