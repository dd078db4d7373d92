package com.velatrix.quillmark.demo;

import com.velatrix.quillmark.Device;
import com.velatrix.quillmark.DeviceManager;
import com.velatrix.quillmark.Display;
import com.velatrix.quillmark.InputListener;
import com.velatrix.quillmark.SignatureCapture;
import com.velatrix.quillmark.VelatrixException;
import com.velatrix.quillmark.Version;
import com.velatrix.quillmark.virtual.VirtualPad;
import java.awt.Point;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.atomic.AtomicInteger;
import javax.imageio.ImageIO;

/**
 * The library end to end on the first pad found, a virtual one when no real pad is attached: its
 * identity, a prompt on its display, a signature, and the signature written as PNG and SVG into
 * the directory named by the first argument (the current directory without one).
 *
 * <pre>
 * java -jar velatrix-quillmark.jar /tmp/out
 * </pre>
 */
public final class Main {
    private static final long REAL_PAD_SIGNING_MILLIS = 10_000;
    private static final long VIRTUAL_PAD_READ_MILLIS = 3_000;

    private Main() {}

    public static void main(String[] args) {
        Path outDir = Path.of(args.length > 0 ? args[0] : ".");
        try {
            run(outDir);
        } catch (VelatrixException e) {
            fail(e.getMessage());
        } catch (Exception | LinkageError e) {
            // Outside the library's own errors the kind of failure is half the message
            // (a file-system exception's message may be nothing but the path).
            fail(e.toString());
        }
        // Returning lets the program end on its own: every thread the library starts is gone after
        // DeviceManager.destroy(), or is a daemon.
    }

    private static void run(Path outDir) throws IOException, InterruptedException {
        final long start = System.nanoTime();
        System.out.println("Velatrix Quillmark " + DeviceManager.getLibraryVersion());
        DeviceManager.init();
        try {
            Device[] pads = DeviceManager.getAttachedDevices();
            boolean simulated = System.getenv("VELATRIX_SIMULATE") != null;
            if (pads.length == 0 && !simulated) {
                System.out.println("No pad attached: using a virtual pad.");
                DeviceManager.destroy();
                VirtualPad.simulate(1);
                simulated = true;
                DeviceManager.init();
                pads = DeviceManager.getAttachedDevices();
            }
            System.out.println(pads.length + " pad(s) found");
            if (pads.length == 0) throw new VelatrixException("no pad to run the demo on");
            try (Device device = pads[0]) {
                demo(device, simulated, outDir);
            }
        } finally {
            DeviceManager.destroy();
        }
        System.out.printf("time:       %d ms%n", (System.nanoTime() - start) / 1_000_000);
    }

    private static void demo(Device device, boolean simulated, Path outDir) throws IOException, InterruptedException {
        device.open();
        Version version = device.getVersionInfo();
        Display display = device.getDisplayInfo();
        System.out.println("path:       " + device.getPath());
        System.out.println("model:      " + orDash(device.getModel()) + " (" + orDash(device.getManufacturer()) + ")");
        System.out.println("firmware:   " + version.firmwareVersion() + " (kernel " + version.kernelVersion() + ")");
        System.out.printf("display:    %d x %d, %d bit(s)%n", display.getWidth(), display.getHeight(),
                display.getColorDepth());

        final int width = display.getWidth(), height = display.getHeight();
        device.clearScreen();
        device.drawText("Please sign below", width / 2, Math.max(4, height / 20), Device.ALIGN_CENTRE, false);
        device.drawText("X", width / 10, height * 3 / 4 - device.getTextHeight("X"), Device.ALIGN_LEFT, false);

        SignatureCapture signature = new SignatureCapture();
        AtomicInteger reports = new AtomicInteger();
        InputListener counter = new InputListener() {
            @Override
            public void rawInputReport(Device from, byte[] report) {
                reports.incrementAndGet();
            }
        };
        device.addInputListener(counter);
        signature.attach(device);

        VirtualPad pad = simulated ? VirtualPad.of(device) : null;
        if (pad != null) {
            int before = pad.inputCount();
            for (Point[] stroke : signatureStrokes(width, height)) pad.playStroke(stroke);
            int expected = pad.inputCount() - before;
            long until = System.nanoTime() + VIRTUAL_PAD_READ_MILLIS * 1_000_000;
            while (reports.get() < expected && System.nanoTime() < until) device.read();
        } else {
            System.out.println("Sign on the pad (" + REAL_PAD_SIGNING_MILLIS / 1000 + " seconds)...");
            device.startReading();
            Thread.sleep(REAL_PAD_SIGNING_MILLIS);
            device.stopReading();
            if (device.getReaderFailure() != null) throw device.getReaderFailure();
        }
        signature.detach(device);
        device.removeInputListener(counter);

        Files.createDirectories(outDir);
        Path png = outDir.resolve("signature.png");
        Path svg = outDir.resolve("signature.svg");
        signature.writePng(png, width, height);
        signature.writeSvg(svg, width, height);
        List<Path> written = new ArrayList<>(List.of(png, svg));
        if (pad != null) {
            // What the virtual panel shows, to compare with the prompt that was drawn.
            Path shown = outDir.resolve("display.png");
            if (ImageIO.write(pad.readDisplay(), "png", shown.toFile())) written.add(shown);
        }
        List<SignatureCapture.Stroke> strokes = signature.getStrokes();
        System.out.printf("signature:  %d stroke(s), %d point(s) from %d input report(s)%n", strokes.size(),
                signature.getPointCount(), reports.get());
        if (pad != null) System.out.println("reports:    " + pad.transferCount() + " feature transfers with the pad");
        for (Path file : written) System.out.println("wrote:      " + file);
    }

    // A signature-like set of strokes across the signing area of a w x h display: a flowing
    // name, an underline and the dot of an i (a tap).
    static List<Point[]> signatureStrokes(int w, int h) {
        List<Point[]> strokes = new ArrayList<>();
        final double left = w * 0.15, span = w * 0.7, middle = h * 0.6, amplitude = h * 0.1;
        Point[] name = new Point[121];
        for (int i = 0; i < name.length; i++) {
            double t = i / 120.0;
            double x = left + span * t + 12 * Math.sin(t * 19);
            double y = middle + amplitude * Math.sin(t * 11) * Math.cos(t * 3);
            name[i] = new Point((int) x, (int) y);
        }
        strokes.add(name);
        Point[] underline = new Point[21];
        for (int i = 0; i < underline.length; i++) {
            double t = i / 20.0;
            underline[i] = new Point((int) (left + span * 0.9 * t), (int) (middle + amplitude * 1.6 + 3 * Math.sin(t * 3)));
        }
        strokes.add(underline);
        strokes.add(new Point[] {new Point((int) (left + span * 0.55), (int) (middle - amplitude * 1.8))});
        return strokes;
    }

    private static void fail(String message) {
        System.err.println("quillmark: " + message);
        System.exit(1);
    }

    private static String orDash(String text) {
        return text != null ? text : "-";
    }
}
