package jbrg.bench;

import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;
import orvane.qsf.wrapper.system.cmt_commonJNI;

/**
 * The child VM of the start-up family. "idle" does nothing; "init" brings the bridge up as an application
 * does (loadLibrary, cmt_init, the event manager's init) and prints the nanoseconds of each step on one line,
 * "load init events".
 */
public final class StartupChild {
    private StartupChild() {}

    public static void main(String[] args) {
        if (args.length == 1 && args[0].equals("idle")) {
            return;
        }
        if (args.length != 1 || !args[0].equals("init")) {
            System.err.println("usage: StartupChild idle|init");
            System.exit(2);
        }
        long t0 = System.nanoTime();
        System.loadLibrary("jbrgCMT");
        long t1 = System.nanoTime();
        long init = cmt_commonJNI.new_cmt_init();
        cmt_commonJNI.cmt_init_init(init, null);
        long t2 = System.nanoTime();
        long events = qsf_fnd_eventJNI.new_qsf_fnd_event_manager();
        qsf_fnd_eventJNI.qsf_fnd_event_manager_init(events, null);
        long t3 = System.nanoTime();
        System.out.println((t1 - t0) + " " + (t2 - t1) + " " + (t3 - t2));
        qsf_fnd_eventJNI.qsf_fnd_event_manager_terminate(events, null);
        qsf_fnd_eventJNI.delete_qsf_fnd_event_manager(events);
        cmt_commonJNI.delete_cmt_init(init);
    }
}
