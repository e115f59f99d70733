package jbrg.bench;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Paths;

/** The process's resident size and its peak so far (VmRSS, VmHWM of /proc/self/status), in kilobytes. */
final class Memory {
    final long residentKb;
    final long peakKb;

    private Memory(long residentKb, long peakKb) {
        this.residentKb = residentKb;
        this.peakKb = peakKb;
    }

    static Memory now() {
        long rss = -1;
        long peak = -1;
        try {
            for (String line : Files.readAllLines(Paths.get("/proc/self/status"))) {
                if (line.startsWith("VmRSS:")) {
                    rss = kilobytes(line);
                } else if (line.startsWith("VmHWM:")) {
                    peak = kilobytes(line);
                }
            }
        } catch (IOException e) {
            // Not a Linux process: nothing to tell.
        }
        return new Memory(rss, peak);
    }

    private static long kilobytes(String line) {
        return Long.parseLong(line.replaceAll("[^0-9]", ""));
    }

    String describe(int count) {
        return String.format("after the listings of %,d: resident %,d kB, peak %,d kB", count, residentKb, peakKb);
    }
}
