package jbrg.bench;

import orvane.qsf.wrapper.event.qsf_fnd_eventJNI;
import orvane.qsf.wrapper.system.cmt_commonJNI;

/**
 * The child VM of the start-up family. "idle" does nothing; "init" brings the bridge up as an application
 * does (loadLibrary, cmt_init, the event manager's init) and prints the nanoseconds of each step on one line,
 * "load init events". "preloaded" does the same after loading and initialising, untimed, the Java classes the
 * event manager's observers look up: what is left is the bridge's own start-up, without the VM's first loading
 * of those classes (which a device whose framework has loaded its proxies before the bridge does not pay).
 */
public final class StartupChild {
    private StartupChild() {}

    public static void main(String[] args) {
        if (args.length == 1 && args[0].equals("idle")) {
            return;
        }
        if (args.length != 1 || !(args[0].equals("init") || args[0].equals("preloaded"))) {
            System.err.println("usage: StartupChild idle|init|preloaded");
            System.exit(2);
        }
        if (args[0].equals("preloaded")) {
            preload();
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

    /** The classes the observers find in their init: the proxies they call and the event objects they build. */
    static final String[] OBSERVED_CLASSES = {
        "orvane.qsf.controller.event.proxy.JobProxy", "orvane.qsf.controller.event.job.Job",
        "orvane.qsf.controller.event.job.JobState", "orvane.qsf.controller.event.proxy.PanelProxy",
        "orvane.qsf.controller.event.proxy.AccProxy", "orvane.qsf.controller.event.device.ICCardInfo",
        "orvane.qsf.controller.event.device.SystemData", "orvane.qsf.controller.event.proxy.JobInfoProxy",
        "orvane.qsf.controller.event.job.PrintPageInfo", "orvane.qsf.controller.event.job.ScanPageInfo",
        "orvane.qsf.controller.event.job.FaxSendPageInfo", "orvane.qsf.controller.event.job.JobLogInfo",
        "orvane.qsf.controller.event.job.InterpreterInfo", "orvane.qsf.controller.event.proxy.CommonProxy",
        "orvane.qsf.controller.event.proxy.SynchronousEventProxy",
        "orvane.qsf.controller.event.proxy.AppOperationProxy",
    };

    private static void preload() {
        try {
            for (String name : OBSERVED_CLASSES) {
                Class.forName(name, true, StartupChild.class.getClassLoader());
            }
        } catch (ClassNotFoundException e) {
            throw new IllegalStateException("a class the observers look up is missing: " + e.getMessage(), e);
        }
    }
}
