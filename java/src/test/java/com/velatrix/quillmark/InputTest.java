package com.velatrix.quillmark;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.velatrix.quillmark.input.ADCChannelValues;
import com.velatrix.quillmark.input.ADCScanValues;
import com.velatrix.quillmark.input.ButtonEvent;
import com.velatrix.quillmark.input.Coordinate;
import com.velatrix.quillmark.input.DebugCoordinate;
import com.velatrix.quillmark.input.MagneticCardSwipe;
import java.awt.Point;
import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import org.junit.jupiter.api.Test;

/** Input reports reaching Java listeners: raw bytes first, then the event, on the reading thread. */
class InputTest {

    /** Writes every call as one line; notes a call that came on another thread than the reader's. */
    private static final class Recorder implements InputListener {
        final List<String> lines = Collections.synchronizedList(new ArrayList<>());
        volatile Thread expectedThread;

        private void add(String line) {
            lines.add(Thread.currentThread() == expectedThread ? line : line + " [other thread]");
        }

        @Override public void coordinate(Device d, Coordinate c) {
            add(String.format("%s tip=%s inRange=%s %d,%d", c.getClass().getSimpleName(), c.isTipSwitch(), c.isInRange(),
                    c.getX(), c.getY()));
        }
        @Override public void button(Device d, ButtonEvent e) {
            add(String.format("%s %d,%d region %d", e.getClass().getSimpleName(), e.getX(), e.getY(), e.getRegion()));
        }
        @Override public void magneticCardSwipe(Device d, MagneticCardSwipe s) {
            add("card " + s.getTrack1() + " | " + s.getTrack2() + " | " + s.getTrack3());
        }
        @Override public void adcScanValues(Device d, ADCScanValues v) {
            add(String.format("scan %s %s %d %d %d %d", v.isFlag1(), v.isFlag2(), v.getValue1(), v.getValue2(),
                    v.getValue3(), v.getValue4()));
        }
        @Override public void adcChannelValues(Device d, ADCChannelValues v) {
            add(String.format("channel %d %d %d %d %d", v.getChannel(), v.getValue1(), v.getValue2(), v.getValue3(),
                    v.getValue4()));
        }
        @Override public void debugCoordinate(Device d, DebugCoordinate c) {
            add(String.format("debug %s %s %d %d %d", c.isTipSwitch(), c.isInRange(), c.getValue1(), c.getValue9(),
                    c.getLast()));
        }
        @Override public void rawInputReport(Device d, byte[] report) {
            add("raw " + (report[0] & 0xFF));
        }

        /** Reads on this thread until `count` lines arrived (or ten reads passed). */
        List<String> readUntil(Device device, int count) {
            expectedThread = Thread.currentThread();
            for (int i = 0; i < 10 && lines.size() < count; i++) device.read();
            List<String> copy = new ArrayList<>(lines);
            lines.clear();
            return copy;
        }
    }

    @Test
    void eachReportArrivesRawThenAsItsEventOnTheReadingThread() {
        for (Pads.OpenPad open : Pads.openAll(Pads.ANY)) {
            try (open) {
                Recorder recorder = new Recorder();
                open.device.addInputListener(recorder);
                open.pad.pen(100, 50, true, true);
                List<String> pen = recorder.readUntil(open.device, 2);
                assertEquals(2, pen.size(), pen.toString());
                assertTrue(pen.get(0).startsWith("raw "), pen.toString());
                assertTrue(pen.get(1).matches("(Extended)?Coordinate tip=true inRange=true 100,50"), pen.toString());

                open.pad.sendAdcScan(0x11, 1, 2, 3, 4);
                assertEquals(List.of("raw 3", "scan true true 2 1 4 3"), recorder.readUntil(open.device, 2));
                open.pad.sendAdcChannel(5, 6, 7, 8, 9);
                assertEquals(List.of("raw 3", "channel 5 6 7 8 9"), recorder.readUntil(open.device, 2));
                open.pad.sendDebug(0x10, new int[] {1, 2, 3, 4, 5, 6, 7, 8, 9}, 10);
                assertEquals(List.of("raw 254", "debug false true 1 9 10"), recorder.readUntil(open.device, 2));
                open.device.removeInputListener(recorder);
            }
        }
    }

    @Test
    void cardTracksArriveAsText() {
        try (Pads.OpenPad open = Pads.open(Pads.CARD_READER)) {
            Recorder recorder = new Recorder();
            open.device.addInputListener(recorder);
            open.pad.swipeCard("%B4111^DOE/JANE^2512?", ";4111=2512?", null);
            assertEquals(List.of("raw 12", "card %B4111^DOE/JANE^2512? | ;4111=2512? | "),
                    recorder.readUntil(open.device, 2));
        }
    }

    @Test
    void aTouchOnAButtonRegionBecomesButtonEvents() {
        try (Pads.OpenPad open = Pads.open(d -> firstButton(d) != null)) {
            Region button = firstButton(open.device);
            int x = (button.getX1() + button.getX2()) / 2;
            int y = (button.getY1() + button.getY2()) / 2;
            Recorder recorder = new Recorder();
            open.device.addInputListener(recorder);
            String region = " region " + button.getNumber();
            // A tap: down and lifted inside the button.
            open.pad.playStroke(new Point(x, y));
            List<String> tap = new ArrayList<>(recorder.readUntil(open.device, 4));
            tap.removeIf(line -> line.startsWith("raw "));
            assertEquals(List.of("ButtonDown " + x + "," + y + region, "ButtonPress " + x + "," + y + region), tap);
            // Down inside, moved within, dragged out (which ends the button), lifted outside.
            int outside = button.getY1() - 5;
            open.pad.playStroke(new Point(x, y), new Point(x + 1, y), new Point(x + 1, outside));
            List<String> drag = new ArrayList<>(recorder.readUntil(open.device, 8));
            drag.removeIf(line -> line.startsWith("raw "));
            assertEquals(List.of("ButtonDown " + x + "," + y + region, "ButtonMove " + (x + 1) + "," + y + region,
                    "ButtonUp " + (x + 1) + "," + outside + region,
                    "ExtendedCoordinate tip=false inRange=true " + (x + 1) + "," + outside), drag);
        }
    }

    private static Region firstButton(Device device) {
        for (Region region : device.getRegions()) {
            if (region instanceof RegionButton && region.isInUse()) return region;
        }
        return null;
    }

    /** A listener's exception ends the read with it, after the report's other calls were made. */
    @Test
    void aListenersExceptionReachesTheReader() {
        try (Pads.OpenPad open = Pads.open(Pads.ANY)) {
            Recorder recorder = new Recorder();
            IllegalStateException failure = new IllegalStateException("listener failed");
            open.device.addInputListener(new InputListener() {
                @Override public void rawInputReport(Device d, byte[] report) {
                    throw failure;
                }
            });
            open.device.addInputListener(recorder);
            open.pad.pen(10, 20, true, true);
            recorder.expectedThread = Thread.currentThread();
            IllegalStateException thrown = null;
            for (int i = 0; i < 10 && thrown == null; i++) {
                try {
                    open.device.read();
                } catch (IllegalStateException e) {
                    thrown = e;
                }
            }
            assertSame(failure, thrown);
            assertEquals(1, recorder.lines.stream().filter(l -> l.startsWith("Coordinate") || l.startsWith("Extended")).count(),
                    recorder.lines.toString());
        }
    }

    /** The background reader delivers on its own thread and ends quietly when another thread closes the pad. */
    @Test
    void closeFromAnotherThreadEndsTheBackgroundReader() throws InterruptedException {
        try (Pads.OpenPad open = Pads.open(Pads.ANY)) {
            List<Thread> threads = Collections.synchronizedList(new ArrayList<>());
            open.device.addInputListener(new InputListener() {
                @Override public void rawInputReport(Device d, byte[] report) {
                    threads.add(Thread.currentThread());
                }
            });
            open.device.startReading();
            open.pad.pen(5, 5, true, true);
            for (int i = 0; i < 100 && threads.isEmpty(); i++) Thread.sleep(20);
            assertEquals(1, threads.size());
            assertTrue(threads.get(0).getName().startsWith("quillmark-reader"), threads.get(0).getName());
            open.device.close();
            threads.get(0).join(3000);
            assertTrue(!threads.get(0).isAlive(), "the reader ended");
            assertNull(open.device.getReaderFailure());
            assertEquals("Device doesn't appear to be open.",
                    assertThrows(VelatrixException.class, open.device::read).getMessage());
        }
    }
}
