package com.velatrix.quillmark;

import com.velatrix.quillmark.virtual.VirtualPad;
import java.lang.reflect.Field;
import java.util.ArrayList;
import java.util.List;
import java.util.function.Predicate;

/**
 * Virtual pads for the tests. Tests ask for a capability and get every virtual model that has
 * it, plugged and opened; they never name a model.
 */
final class Pads {
    private static boolean started;

    private Pads() {}

    /** Starts the library once per test run, on the virtual bus with no pads of its own. */
    static synchronized void start() {
        if (started) return;
        VirtualPad.simulate(0);
        DeviceManager.init();
        started = true;
    }

    /** A plugged virtual pad, opened through the ordinary API. Closing unplugs it. */
    static final class OpenPad implements AutoCloseable {
        final VirtualPad pad;
        final Device device;

        OpenPad(VirtualPad pad, Device device) {
            this.pad = pad;
            this.device = device;
        }

        @Override
        public void close() {
            try {
                if (device.isOpen()) device.close();
            } finally {
                if (pad.isPlugged()) pad.unplug();
            }
        }

        @Override
        public String toString() {
            return pad.model();
        }
    }

    static Device listed(VirtualPad pad) {
        for (Device device : DeviceManager.getAttachedDevices()) {
            if (pad.equals(VirtualPad.of(device))) return device;
        }
        throw new AssertionError("virtual pad " + pad + " is not listed");
    }

    static OpenPad plugAndOpen(String model) {
        start();
        VirtualPad pad = VirtualPad.plug(model);
        Device device = listed(pad);
        device.open();
        return new OpenPad(pad, device);
    }

    /** Every model whose pad satisfies {@code need}, each plugged and opened; the caller closes them. */
    static List<OpenPad> openAll(Predicate<Device> need) {
        start();
        List<OpenPad> pads = new ArrayList<>();
        for (String model : VirtualPad.models()) {
            OpenPad open = plugAndOpen(model);
            if (need.test(open.device)) {
                pads.add(open);
            } else {
                open.close();
            }
        }
        if (pads.isEmpty()) throw new AssertionError("no virtual model has the capability");
        return pads;
    }

    /** The first model whose pad satisfies {@code need}. */
    static OpenPad open(Predicate<Device> need) {
        List<OpenPad> all = openAll(need);
        for (OpenPad extra : all.subList(1, all.size())) extra.close();
        return all.get(0);
    }

    static final Predicate<Device> ANY = d -> true;
    static final Predicate<Device> CARD_READER = d -> d.getCapabilities().hasCardReader();
    static final Predicate<Device> SCREENS = d -> d.getCapabilities().isSupportsScreensResources();

    static long longField(Object object, String name) {
        try {
            Field field = object.getClass().getDeclaredField(name);
            field.setAccessible(true);
            return field.getLong(object);
        } catch (ReflectiveOperationException e) {
            throw new AssertionError(e);
        }
    }
}
