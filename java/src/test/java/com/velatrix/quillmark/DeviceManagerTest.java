package com.velatrix.quillmark;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.velatrix.quillmark.virtual.VirtualPad;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.BlockingQueue;
import java.util.concurrent.LinkedBlockingQueue;
import java.util.concurrent.TimeUnit;
import org.junit.jupiter.api.Test;

/** Listing, opening and closing pads, and hearing them come and go. */
class DeviceManagerTest {
    private static final int VENDOR_ID = 0xF055;

    @Test
    void listsEveryVirtualPadWithItsIdentityAndNoOpenHandle() {
        Pads.start();
        List<VirtualPad> plugged = new ArrayList<>();
        try {
            for (String model : VirtualPad.models()) plugged.add(VirtualPad.plug(model));
            for (VirtualPad pad : plugged) {
                Device device = Pads.listed(pad);
                assertEquals(VENDOR_ID, device.getVendorId(), pad.model());
                assertEquals(pad.productId(), device.getProductId(), pad.model());
                assertTrue(device.getPath().endsWith("_" + Integer.toHexString(pad.locationId())), device.getPath());
                assertTrue(device.getModel().startsWith("Quillmark "), device.getModel());
                assertEquals("Velatrix", device.getManufacturer());
                assertNotEquals(0L, Pads.longField(device, "driverPtr"));
                assertEquals(0L, Pads.longField(device, "ptr"));
                assertEquals("REAL", device.getDriverName());
                assertFalse(device.isOpen());
                VelatrixException e = assertThrows(VelatrixException.class, device::isButtonDown);
                assertEquals("Device doesn't appear to be open.", e.getMessage());
            }
        } finally {
            plugged.forEach(VirtualPad::unplug);
        }
    }

    @Test
    void aDeviceWithoutDriverOrPadSaysSo() {
        Pads.start();
        Device nowhere = new Device("nowhere_0000_0000_00_00_0", 0, 0, null, null);
        assertEquals("Driver isn't set.", assertThrows(VelatrixException.class, nowhere::getDriverName).getMessage());
        assertEquals("Unable to find device.", assertThrows(VelatrixException.class, nowhere::open).getMessage());
        assertEquals(0L, Pads.longField(nowhere, "ptr"));
    }

    @Test
    void openSetsTheHandleAndCloseForgetsIt() {
        try (Pads.OpenPad open = Pads.open(Pads.ANY)) {
            Device device = open.device;
            assertNotEquals(0L, Pads.longField(device, "ptr"));
            assertTrue(device.isOpen());
            assertFalse(device.isButtonDown());
            device.close();
            assertEquals(0L, Pads.longField(device, "ptr"));
            assertFalse(device.isOpen());
            assertEquals("Device doesn't appear to be open.",
                    assertThrows(VelatrixException.class, device::close).getMessage());
            device.open();  // the same object opens again
            assertTrue(device.isOpen());
            device.close();
            open.pad.refuseOpen();  // as a missing permission refuses it, once
            assertEquals("Problem opening device (permissions issue?): 13\n",
                    assertThrows(VelatrixException.class, device::open).getMessage());
            assertEquals(0L, Pads.longField(device, "ptr"));
            device.open();
            assertTrue(device.isOpen());
        }
    }

    @Test
    void hotPlugReachesListenersOnTheHotPlugThread() throws InterruptedException {
        Pads.start();
        BlockingQueue<String> events = new LinkedBlockingQueue<>();
        Thread testThread = Thread.currentThread();
        DeviceNotificationListener listener = new DeviceNotificationListener() {
            @Override
            public void deviceAdded(String path) {
                events.add("added " + path + (Thread.currentThread() == testThread ? " on the test thread" : ""));
            }

            @Override
            public void deviceRemoved(String path) {
                events.add("removed " + path + (Thread.currentThread() == testThread ? " on the test thread" : ""));
            }
        };
        DeviceManager.addDeviceNotificationListener(listener);
        try {
            // Listing here would advance the monitor's snapshot and hide the change from it,
            // so the pad is recognised by the location id that ends its path.
            VirtualPad pad = VirtualPad.plug(VirtualPad.models()[0]);
            String suffix = "_" + Integer.toHexString(pad.locationId());
            String added = next(events, suffix);
            assertTrue(added != null && added.startsWith("added USB_") && added.endsWith(suffix), String.valueOf(added));
            String path = added.substring("added ".length());
            pad.unplug();
            assertEquals("removed " + path, next(events, suffix));
        } finally {
            DeviceManager.removeDeviceNotificationListener(listener);
        }
    }

    /** The next notification about the path ending in `suffix`; pads of earlier tests may still be announced. */
    private static String next(BlockingQueue<String> events, String suffix) throws InterruptedException {
        long deadline = System.nanoTime() + TimeUnit.SECONDS.toNanos(10);
        for (String event; (event = events.poll(deadline - System.nanoTime(), TimeUnit.NANOSECONDS)) != null;) {
            if (event.contains(suffix + " ") || event.endsWith(suffix)) return event;
        }
        return null;
    }
}
