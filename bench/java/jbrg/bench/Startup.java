package jbrg.bench;

import java.io.BufferedReader;
import java.io.File;
import java.io.IOException;
import java.io.InputStreamReader;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/**
 * Start-up: what bringing the bridge up costs an application in a fresh VM (loadLibrary of the bridge,
 * cmt_init, the event manager's init), measured inside child VMs, beside the start-up of a child VM that does
 * nothing. Each round starts one idle child, one that brings the bridge up, and one that does the same after
 * loading the Java classes the event manager's observers look up.
 */
final class Startup implements Family {
    static final double GOAL_NS = 5e6;

    @Override
    public String name() {
        return "start-up";
    }

    @Override
    public List<Result> run(Runner runner) throws Exception {
        int rounds = runner.rounds;
        double[] idle = new double[rounds];
        double[] wall = new double[rounds];
        double[][] steps = new double[3][rounds];
        double[] preloaded = new double[rounds];
        for (int i = -runner.warmups; i < rounds; i++) {
            long idleNs = child("idle", null);
            long[] step = new long[3];
            long wallNs = child("init", step);
            long[] preloadedStep = new long[3];
            child("preloaded", preloadedStep);
            if (i < 0) {
                continue;
            }
            idle[i] = idleNs;
            wall[i] = wallNs;
            for (int s = 0; s < 3; s++) {
                steps[s][i] = step[s];
            }
            preloaded[i] = preloadedStep[0] + preloadedStep[1] + preloadedStep[2];
        }
        double[] total = new double[rounds];
        for (int i = 0; i < rounds; i++) {
            total[i] = steps[0][i] + steps[1][i] + steps[2][i];
        }
        Stats vm = Stats.of(idle);
        String baseline = "VM start-up (a child that does nothing)";
        List<Result> results = new ArrayList<>();
        results.add(new Result(name(), "loadLibrary + cmt_init + event manager init", baseline, Stats.of(total), vm,
                Result.Goal.ABSOLUTE_NS, GOAL_NS, false));
        String[] names = {"  System.loadLibrary(\"jbrgCMT\")", "  cmt_init init", "  event manager init"};
        for (int s = 0; s < 3; s++) {
            results.add(new Result(name(), names[s], baseline, Stats.of(steps[s]), vm, Result.Goal.NONE, 0, false));
        }
        // The same three steps in a VM that has already loaded the classes the observers look up: the bridge's
        // own part of the start-up, shown without a goal beside the line that has one.
        results.add(new Result(name(), "the same, the observers' classes loaded beforehand", baseline,
                Stats.of(preloaded), vm, Result.Goal.NONE, 0, false));
        results.add(new Result(name(), "child VM bringing the bridge up, start to exit", baseline, Stats.of(wall), vm,
                Result.Goal.NONE, 0, false));
        return results;
    }

    /**
     * Runs one child VM with the same class and library path as this one; its wall time from start to exit.
     * An "init" child's three step times are read into {@code steps}.
     */
    static long child(String mode, long[] steps) throws IOException, InterruptedException {
        List<String> command = new ArrayList<>(javaCommand());
        command.add("-Djava.library.path=" + System.getProperty("java.library.path"));
        command.add("-cp");
        command.add(System.getProperty("java.class.path"));
        command.add(StartupChild.class.getName());
        command.add(mode);
        ProcessBuilder builder = new ProcessBuilder(command).redirectError(ProcessBuilder.Redirect.INHERIT);
        long start = System.nanoTime();
        Process process = builder.start();
        String line;
        try (BufferedReader out = new BufferedReader(
                new InputStreamReader(process.getInputStream(), StandardCharsets.UTF_8))) {
            line = out.readLine();
            while (out.readLine() != null) {
                // the rest is not looked at
            }
        }
        int exit = process.waitFor();
        long elapsed = System.nanoTime() - start;
        if (exit != 0) {
            throw new IllegalStateException("the " + mode + " child ended with " + exit);
        }
        if (steps != null) {
            parseSteps(line, steps);
        }
        return elapsed;
    }

    /** The child's line "load init events" into {@code steps}. */
    static void parseSteps(String line, long[] steps) {
        String[] fields = line == null ? new String[0] : line.trim().split("\\s+");
        if (fields.length != steps.length) {
            throw new IllegalStateException("the init child printed \"" + line + "\"");
        }
        for (int i = 0; i < steps.length; i++) {
            steps[i] = Long.parseLong(fields[i]);
        }
    }

    /**
     * The command that starts a child VM: the property jbrg.bench.java when set (words separated by spaces,
     * for example an emulator and the VM it runs), else this VM's own java.
     */
    static List<String> javaCommand() {
        String configured = System.getProperty("jbrg.bench.java", "").trim();
        if (!configured.isEmpty()) {
            return Arrays.asList(configured.split("\\s+"));
        }
        return List.of(System.getProperty("java.home") + File.separator + "bin" + File.separator + "java");
    }
}
