package jbrg.bench;

import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;
import orvane.qsf.wrapper.system.cmt_commonJNI;

/**
 * The Java benchmark of the bridge: each path an application pays for, measured from Java in this VM against
 * a baseline of the same run, as a ratio to it.
 *
 * <pre>
 *   java -Djava.library.path=build/host/lib -cp ... jbrg.bench.Bench [options] [family...]
 *     --rounds N       measured rounds (default 7, at least 5 for a run to be compared)
 *     --warmups N      warm-up rounds (default 3)
 *     --scale X        operations per round times X (default 1; smaller under emulation)
 *     --ratios-only    print ratios, not times (an emulated run)
 *     --json FILE      also write the results as JSON
 *   families: accessors events listings start-up (default: all)
 * </pre>
 */
public final class Bench {
    private Bench() {}

    /** Every family, in the order of the table. */
    static List<Family> families() {
        return List.of(new Accessors(), new Events(), new Listings(), new Startup());
    }

    /**
     * Brings the bridge up in this VM as an application does (the start-up family measures that in fresh VMs):
     * {cmt_init handle, event manager handle}.
     */
    static long[] bringUp() {
        System.loadLibrary("jbrgCMT");
        long init = cmt_commonJNI.new_cmt_init();
        cmt_commonJNI.cmt_init_init(init, null);
        long events = qsf_fnd_eventJNI.new_qsf_fnd_event_manager();
        qsf_fnd_eventJNI.qsf_fnd_event_manager_init(events, null);
        return new long[] {init, events};
    }

    static void bringDown(long[] bridge) {
        qsf_fnd_eventJNI.qsf_fnd_event_manager_terminate(bridge[1], null);
        qsf_fnd_eventJNI.delete_qsf_fnd_event_manager(bridge[1]);
        cmt_commonJNI.delete_cmt_init(bridge[0]);
    }

    public static void main(String[] args) throws Exception {
        int rounds = 7;
        int warmups = 3;
        double scale = 1;
        boolean ratiosOnly = false;
        Path json = null;
        List<String> chosen = new ArrayList<>();
        for (int i = 0; i < args.length; i++) {
            switch (args[i]) {
                case "--rounds":
                    rounds = Integer.parseInt(args[++i]);
                    break;
                case "--warmups":
                    warmups = Integer.parseInt(args[++i]);
                    break;
                case "--scale":
                    scale = Double.parseDouble(args[++i]);
                    break;
                case "--ratios-only":
                    ratiosOnly = true;
                    break;
                case "--json":
                    json = Path.of(args[++i]);
                    break;
                default:
                    chosen.add(args[i]);
            }
        }
        Runner runner = new Runner(warmups, rounds, scale);
        List<Family> run = new ArrayList<>();
        for (Family f : families()) {
            if (chosen.isEmpty() || chosen.contains(f.name())) {
                run.add(f);
            }
        }
        if (run.isEmpty()) {
            System.err.println("no such family: " + chosen + " (accessors, events, start-up)");
            System.exit(2);
        }

        long[] bridge = bringUp();

        String machine = System.getProperty("os.arch") + ", " + Runtime.getRuntime().availableProcessors() + " cpus";
        System.out.printf("Java benchmark of the bridge: %s, %s; %d warm-up and %d measured rounds%n", machine,
                System.getProperty("java.vm.name"), warmups, rounds);
        List<Result> results = new ArrayList<>();
        try {
            for (Family f : run) {
                System.out.println("  " + f.name() + " ...");
                results.addAll(f.run(runner));
            }
        } finally {
            bringDown(bridge);
        }
        System.out.println();
        System.out.print(Report.table(results, ratiosOnly));
        if (json != null) {
            if (json.getParent() != null) {
                Files.createDirectories(json.getParent());
            }
            Files.writeString(json, Report.json(results, runner, machine), StandardCharsets.UTF_8);
            System.out.println("written: " + json);
        }
    }
}
