package jbrg.bench;

import java.util.List;
import java.util.Locale;

/** The table the runner prints and the JSON it writes, from the same results. */
final class Report {
    private Report() {}

    /**
     * One table: path, ns per operation (median and min-max), baseline, ratio, goal, met or missed; with
     * {@code ratiosOnly} (an emulated run, whose times say nothing of the device) the times are left out.
     */
    static String table(List<Result> results, boolean ratiosOnly) {
        StringBuilder out = new StringBuilder();
        String header = ratiosOnly
                ? String.format(Locale.ROOT, "%-10s %-52s %8s %10s  %s%n", "family", "path", "ratio", "goal", "")
                : String.format(Locale.ROOT, "%-10s %-52s %22s %22s %8s %10s  %s%n", "family", "path",
                        "ns/op (min-max)", "baseline ns (min-max)", "ratio", "goal", "");
        out.append(header);
        for (Result r : results) {
            String status = r.status();
            if (ratiosOnly) {
                // An absolute goal is about the host's times, which an emulated run does not have.
                if (r.goalKind == Result.Goal.ABSOLUTE_NS) {
                    status = "(not judged: times)";
                }
                out.append(String.format(Locale.ROOT, "%-10s %-52s %7.2fx %10s  %s%n", r.family, r.path, r.ratio(),
                        r.goalText(), status));
            } else {
                out.append(String.format(Locale.ROOT, "%-10s %-52s %22s %22s %7.2fx %10s  %s%n", r.family, r.path,
                        spread(r.subject), spread(r.baseline), r.ratio(), r.goalText(), status));
            }
            if (r.perSecond > 0 && !ratiosOnly) {
                out.append(String.format(Locale.ROOT, "%-10s %-52s %s%n", "", "",
                        String.format(Locale.ROOT, "%.0f events/s (baseline %.0f events/s)", r.perSecond,
                                r.baselinePerSecond)));
            }
            if (!r.notes.isEmpty()) {
                out.append(String.format(Locale.ROOT, "%-10s %-52s note: %s%n", "", "", String.join("; ", r.notes)));
            }
        }
        out.append(String.format(Locale.ROOT, "%nbaselines:%n"));
        for (Result r : results) {
            out.append(String.format(Locale.ROOT, "  %-10s %-52s against %s%n", r.family, r.path.trim(), r.baselinePath));
        }
        return out.toString();
    }

    static String spread(Stats s) {
        return String.format(Locale.ROOT, "%s (%s-%s)", number(s.median), number(s.min), number(s.max));
    }

    private static String number(double ns) {
        if (ns >= 1e6) {
            return String.format(Locale.ROOT, "%.2fms", ns / 1e6);
        }
        return ns >= 100 ? String.format(Locale.ROOT, "%.0f", ns) : String.format(Locale.ROOT, "%.1f", ns);
    }

    /** The results as one JSON object, with what the run was made on, so that runs can be compared. */
    static String json(List<Result> results, Runner runner, String machine) {
        StringBuilder out = new StringBuilder();
        out.append("{\n");
        out.append("  \"machine\": ").append(quote(machine)).append(",\n");
        out.append("  \"java\": ").append(quote(System.getProperty("java.vm.name") + " "
                + System.getProperty("java.runtime.version"))).append(",\n");
        out.append("  \"warmups\": ").append(runner.warmups).append(",\n");
        out.append("  \"rounds\": ").append(runner.rounds).append(",\n");
        out.append("  \"scale\": ").append(num(runner.scale)).append(",\n");
        out.append("  \"results\": [");
        for (int i = 0; i < results.size(); i++) {
            Result r = results.get(i);
            out.append(i == 0 ? "\n" : ",\n");
            out.append("    {\"family\": ").append(quote(r.family));
            out.append(", \"path\": ").append(quote(r.path.trim()));
            out.append(", \"baseline\": ").append(quote(r.baselinePath));
            out.append(", \"ns\": ").append(stats(r.subject));
            out.append(", \"baseline_ns\": ").append(stats(r.baseline));
            out.append(", \"ratio\": ").append(num(r.ratio()));
            out.append(", \"goal\": ").append(quote(r.goalText()));
            out.append(", \"met\": ").append(r.goalKind == Result.Goal.NONE ? "null" : Boolean.toString(r.met()));
            if (r.perSecond > 0) {
                out.append(", \"per_second\": ").append(num(r.perSecond));
                out.append(", \"baseline_per_second\": ").append(num(r.baselinePerSecond));
            }
            out.append(", \"notes\": [");
            for (int n = 0; n < r.notes.size(); n++) {
                out.append(n == 0 ? "" : ", ").append(quote(r.notes.get(n)));
            }
            out.append("]}");
        }
        out.append("\n  ]\n}\n");
        return out.toString();
    }

    private static String stats(Stats s) {
        return "{\"median\": " + num(s.median) + ", \"min\": " + num(s.min) + ", \"max\": " + num(s.max)
                + ", \"q1\": " + num(s.q1) + ", \"q3\": " + num(s.q3) + "}";
    }

    static String num(double value) {
        if (Double.isNaN(value) || Double.isInfinite(value)) {
            return "null";
        }
        return String.format(Locale.ROOT, "%.4g", value).replaceFirst("e\\+?", "e");
    }

    static String quote(String text) {
        StringBuilder out = new StringBuilder("\"");
        for (char c : text.toCharArray()) {
            switch (c) {
                case '"':
                    out.append("\\\"");
                    break;
                case '\\':
                    out.append("\\\\");
                    break;
                case '\n':
                    out.append("\\n");
                    break;
                default:
                    if (c < 0x20) {
                        out.append(String.format(Locale.ROOT, "\\u%04x", (int) c));
                    } else {
                        out.append(c);
                    }
            }
        }
        return out.append('"').toString();
    }
}
