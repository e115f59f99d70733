package jbrg.bench;

import java.util.ArrayList;
import java.util.List;
import orvane.qsf.controller.event.proxy.AccProxy;
import orvane.qsf.controller.event.proxy.AppOperationProxy;
import orvane.qsf.controller.event.proxy.CommonProxy;
import orvane.qsf.controller.event.proxy.EventLog;
import orvane.qsf.controller.event.proxy.JobInfoProxy;
import orvane.qsf.controller.event.proxy.JobProxy;
import orvane.qsf.controller.event.proxy.PanelProxy;

/**
 * Events: one platform event through each observer kind of the bridge to its Java proxy, fired by the
 * simulated device from 1 and from 8 native threads, against a bare delivery of the same Java call on the
 * same service thread (attach, static call, detach). The event manager must be initialised first.
 *
 * After every run the proxies are checked to have received exactly the events fired and are cleared, so that
 * what they record does not grow from round to round.
 */
final class Events implements Family {
    static final double GOAL = 1.1;
    static final int[] THREADS = {1, 8};
    private static final int OPS = 2_000;

    /** The observer kinds, numbered as the baseline library numbers them. */
    enum Kind {
        ESM("device status: sleep"),
        PANEL("panel: auto reset"),
        CARD("IC card: reader error"),
        JOB("job: scan count"),
        JOB_INFO("job information: fax page sent"),
        APP("application operation: basis control");

        final String event;

        Kind(String event) {
            this.event = event;
        }
    }

    @Override
    public String name() {
        return "events";
    }

    @Override
    public List<Result> run(Runner runner) throws Exception {
        if (!Baseline.initEvents()) {
            throw new IllegalStateException("the event proxies could not be found");
        }
        List<Result> results = new ArrayList<>();
        int ops = runner.ops(OPS);
        for (int threads : THREADS) {
            for (Kind kind : Kind.values()) {
                String path = kind.event + ", " + threads + (threads == 1 ? " thread" : " threads");
                results.add(runner.ratio(name(), path, "attach + static call + detach",
                        n -> checked(kind, n, Baseline.fire(kind.ordinal(), n, threads)),
                        n -> checked(kind, n, Baseline.bare(kind.ordinal(), n, threads)), ops, GOAL, true));
            }
        }
        clearAll();
        return results;
    }

    /** The elapsed time of a run, or -1 when the proxy did not receive exactly {@code n} events. */
    static long checked(Kind kind, int n, long elapsed) {
        int arrived = received(kind);
        clearAll();
        return arrived == n ? elapsed : -1;
    }

    /** The events the proxy of {@code kind} holds now. */
    static int received(Kind kind) {
        switch (kind) {
            case ESM:
                return CommonProxy.received().length;
            case PANEL:
                return PanelProxy.received().length;
            case CARD:
                return AccProxy.received().length;
            case JOB:
                return JobProxy.received().length;
            case JOB_INFO:
                return JobInfoProxy.received().length;
            case APP:
                return AppOperationProxy.received().length;
            default:
                throw new IllegalArgumentException(kind.toString());
        }
    }

    static void clearAll() {
        CommonProxy.clear();
        PanelProxy.clear();
        AccProxy.clear();
        JobProxy.clear();
        JobInfoProxy.clear();
        AppOperationProxy.clear();
        EventLog.clear();
    }
}
