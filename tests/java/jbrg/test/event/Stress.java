package jbrg.test.event;

import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.atomic.AtomicInteger;
import orvane.qsf.wrapper.appinfo.xamf_amoJNI;
import orvane.qsf.wrapper.job.qsf_fnd_job_moduleJNI;
import orvane.qsf.wrapper.system.cmt_commonJNI;

/** Java threads that keep calling natives while the device delivers events on its own threads. */
public final class Stress {
    private static final List<Thread> callers = new ArrayList<>();
    private static final AtomicInteger wrong = new AtomicInteger();
    private static final AtomicInteger calls = new AtomicInteger();

    private Stress() {}

    /**
     * Starts `threads` Java threads, each making `loops` rounds of native calls and checking the answers; the
     * application list each round builds Java objects through the library's own way into the VM, and should
     * hold `apps` entries.
     */
    public static void start(int threads, int loops, int apps) {
        wrong.set(0);
        calls.set(0);
        for (int t = 0; t < threads; t++) {
            Thread thread = new Thread(() -> {
                long proxy = qsf_fnd_job_moduleJNI.new_qsf_fnd_job_proxy();
                long manager = xamf_amoJNI.xamf_amo_proxy_xamf_amo_get_instance();
                for (int i = 0; i < loops; i++) {
                    long time = cmt_commonJNI.new_cmt_time__SWIG_1(86399L + 86400L * i);
                    if (cmt_commonJNI.cmt_time_getHour(time, null) != 23) wrong.incrementAndGet();
                    cmt_commonJNI.delete_cmt_time(time);
                    if (qsf_fnd_job_moduleJNI.qsf_fnd_job_proxy_get_char_array_size(proxy, null, 4) != 384) {
                        wrong.incrementAndGet();
                    }
                    List<Object> list = new ArrayList<>();
                    if (xamf_amoJNI.xamf_amo_proxy_xamf_amo_get_application_list(manager, null, list, 0) != 0
                            || list.size() != apps) {
                        wrong.incrementAndGet();
                    }
                    calls.addAndGet(3);
                }
                qsf_fnd_job_moduleJNI.delete_qsf_fnd_job_proxy(proxy);
            });
            callers.add(thread);
            thread.start();
        }
    }

    /** Waits for the callers; the number of wrong answers, or -1 if a caller did not finish. */
    public static int join() throws InterruptedException {
        for (Thread thread : callers) {
            thread.join(60000);
            if (thread.isAlive()) return -1;
        }
        callers.clear();
        return wrong.get();
    }

    public static int calls() {
        return calls.get();
    }
}
