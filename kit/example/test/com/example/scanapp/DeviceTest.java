package com.example.scanapp;

import jbrg.simulator.SimulatedDevice;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;

/**
 * What every test of the application shares: the simulated device holding the test class's scenario, powered
 * on again before each test (no forcing, event observer or job of another test left), and the application
 * running on it.
 */
abstract class DeviceTest {
    protected ScanApp app;

    /** The device the tests of the class start from, as a scenario (JSON). */
    protected abstract String scenario();

    @BeforeEach
    void startDevice() {
        SimulatedDevice.loadScenario(scenario());
        SimulatedDevice.reset();
        app = new ScanApp();
    }

    @AfterEach
    void stopApplication() {
        // Events still on their way (a job's last log update) are delivered before the application stops
        // listening.
        SimulatedDevice.awaitIdle();
        app.close();
    }
}
