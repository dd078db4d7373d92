package com.velatrix.quillmark;

import com.velatrix.quillmark.virtual.VirtualPad;

/**
 * A whole Java program as a user writes it: versions before anything else (and text measuring,
 * which fills no cache, as the very first native), then start, list,
 * open, read and close a virtual pad, and return from main. CTest runs it in a JVM of its own
 * with a time limit: the VM must end by itself, with the library's hot-plug thread still running.
 */
public final class ProgramEnds {
    private ProgramEnds() {}

    public static void main(String[] args) {
        // Text measuring skips the cache fill; as the very first native it must still answer.
        Device never = new Device("nowhere", 0, 0, null, null);
        check(failure(() -> never.getTextWidth("x")).equals("Device doesn't appear to be open."), "measure first");
        check(failure(() -> never.getTextHeight(null)).equals("Text can't be null."), "measure null");
        // The version natives work before init and fill no cache.
        check("2.0.98".equals(DeviceManager.getLibraryVersion()), "version " + DeviceManager.getLibraryVersion());
        check(DeviceManager.getLibraryVersionMajor() == 2 && DeviceManager.getLibraryVersionMinor() == 0
                && DeviceManager.getLibraryVersionRelease() == 98, "version numbers");
        check("2018-11-16 15:17:44-0500".equals(DeviceManager.getLibraryBuildDateString()), "build date");

        VirtualPad.simulate(1);
        DeviceManager.init();
        Device[] devices = DeviceManager.getAttachedDevices();
        check(devices.length == 1, devices.length + " pads listed");
        try (Device device = devices[0]) {
            device.open();
            VirtualPad.of(device).pen(1, 2, true, true);
            int[] reports = {0};
            device.addInputListener(new InputListener() {
                @Override public void rawInputReport(Device d, byte[] report) {
                    reports[0]++;
                }
            });
            for (int i = 0; i < 5 && reports[0] == 0; i++) device.read();
            check(reports[0] == 1, reports[0] + " reports read");
        }
        System.out.println("ProgramEnds: returning from main");
    }

    private static String failure(Runnable call) {
        try {
            call.run();
        } catch (VelatrixException e) {
            return e.getMessage();
        }
        return "no exception";
    }

    private static void check(boolean condition, String what) {
        if (!condition) throw new AssertionError(what);
    }
}
