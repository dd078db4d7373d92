package com.velatrix.quillmark.virtual;

import com.velatrix.quillmark.Device;
import com.velatrix.quillmark.NativeLibrary;
import com.velatrix.quillmark.VelatrixException;
import java.awt.Point;
import java.awt.image.BufferedImage;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Objects;

/**
 * A software pad on the library's virtual bus. The built-in driver reaches it exactly as it
 * reaches a real pad, so a program (or a test) can plug pads, move their pen, swipe cards, break
 * their transfers on purpose and look at what the host did to them, all beside the ordinary
 * {@link com.velatrix.quillmark.DeviceManager} and {@link Device} API:
 *
 * <pre>{@code
 * VirtualPad.simulate(1);                 // before DeviceManager.init()
 * DeviceManager.init();
 * VirtualPad pad = VirtualPad.plugged().get(0);
 * try (Device device = DeviceManager.getAttachedDevices()[0]) {
 *     device.open();
 *     pad.playStroke(new Point(10, 10), new Point(60, 40));
 *     while (device.read() == 1) { }
 *     BufferedImage shown = pad.readDisplay();
 * }
 * }</pre>
 *
 * A pad is named by its id (1 and up, never reused); a {@code VirtualPad} object is only that
 * id, so two objects with the same id are equal and both stop working when the pad is unplugged.
 * Every operation on a pad that is no longer plugged, and every request the library refuses,
 * throws {@link VelatrixException} with the library's message. Values that do not fit the wire
 * (a coordinate above 65535, a report id above 255) throw {@link IllegalArgumentException}.
 * All methods are thread-safe.
 */
public final class VirtualPad {
    static {
        NativeLibrary.load();
    }

    private final int id;

    private VirtualPad(int id) {
        this.id = id;
    }

    // ---- Models and the bus -----------------------------------------------------------------

    /**
     * From the next {@link com.velatrix.quillmark.DeviceManager#init()} on, the built-in driver
     * lists {@code count} virtual pads on the virtual bus instead of real pads, exactly as the
     * environment variable {@code VELATRIX_SIMULATE=<count>} would; a negative count returns to
     * the environment's choice. Pads are given the models of {@link #models()} in turn.
     */
    public static native void simulate(int count);

    /** The names of the models {@link #plug} accepts, for example {@code "mono-320"}. */
    public static native String[] models();

    /**
     * Plugs a new pad of the named model.
     *
     * @throws VelatrixException "Unknown virtual pad model: ..." for a name {@link #models()} lacks
     */
    public static VirtualPad plug(String model) {
        Objects.requireNonNull(model, "model");
        return new VirtualPad(nativePlug(model));
    }

    /** The pads plugged in now, in plugging order. */
    public static List<VirtualPad> plugged() {
        List<VirtualPad> pads = new ArrayList<>();
        for (int id : nativePluggedIds()) pads.add(new VirtualPad(id));
        return List.copyOf(pads);
    }

    /** Unplugs every virtual pad. */
    public static native void unplugAll();

    /**
     * The plugged pad that the host lists as {@code device}, or null when {@code device} is not a
     * virtual pad (or its pad has been unplugged).
     */
    public static VirtualPad of(Device device) {
        Objects.requireNonNull(device, "device");
        String path = device.getPath();
        if (path == null) return null;
        for (VirtualPad pad : plugged()) {
            try {
                // The host's path ends with the pad's location id, in hex.
                if (pad.productId() == device.getProductId()
                        && path.endsWith("_" + Integer.toHexString(pad.locationId()))) {
                    return pad;
                }
            } catch (VelatrixException unpluggedMeanwhile) {
                // Not this one.
            }
        }
        return null;
    }

    /** The pad's id: 1 and up, never reused within a process. */
    public int id() {
        return id;
    }

    /** The pad's model name. */
    public String model() {
        return nativeModel(id);
    }

    /** The USB product id the host sees. */
    public int productId() {
        return nativeProductId(id);
    }

    /** The location id the host sees; it ends the pad's {@link Device#getPath() path}, in hex. */
    public int locationId() {
        return nativeLocationId(id);
    }

    public boolean isPlugged() {
        return nativeIsPlugged(id);
    }

    /** Pulls the pad from the bus; the host hears it leave. */
    public void unplug() {
        nativeUnplug(id);
    }

    // ---- Input --------------------------------------------------------------------------------

    /** Sends one pen position; on pads with extended coordinates it also names the region under the pen. */
    public void pen(int x, int y, boolean tip, boolean inRange) {
        nativePen(id, u16(x, "x"), u16(y, "y"), tip, inRange);
    }

    /**
     * Puts the pen down on every point in turn, then lifts it (still in range) at the last one.
     * One point is a tap.
     */
    public void playStroke(Point... points) {
        Objects.requireNonNull(points, "points");
        int[] xy = new int[points.length * 2];
        for (int i = 0; i < points.length; i++) {
            Point p = Objects.requireNonNull(points[i], "point");
            xy[2 * i] = u16(p.x, "x");
            xy[2 * i + 1] = u16(p.y, "y");
        }
        nativePlayStroke(id, xy);
    }

    /**
     * Swipes a card with these tracks (null tracks are empty); characters above U+00FF become
     * {@code '?'}.
     *
     * @throws VelatrixException on a pad without a card reader
     */
    public void swipeCard(String track1, String track2, String track3) {
        nativeSwipeCard(id, track1, track2, track3);
    }

    /** Sends an ADC scan report; {@code flags} bits 0 and 4 are the ones the report carries. */
    public void sendAdcScan(int flags, int value1, int value2, int value3, int value4) {
        nativeSendAdc(id, 2, u8(flags, "flags"), u16s(value1, value2, value3, value4));
    }

    /** Sends an ADC channel report. */
    public void sendAdcChannel(int channel, int value1, int value2, int value3, int value4) {
        nativeSendAdc(id, 3, u8(channel, "channel"), u16s(value1, value2, value3, value4));
    }

    /** Sends a debug coordinate report with exactly nine raw values. */
    public void sendDebug(int flags, int[] values, int last) {
        Objects.requireNonNull(values, "values");
        if (values.length != 9) throw new IllegalArgumentException("A debug report carries 9 values, not " + values.length);
        nativeSendDebug(id, u8(flags, "flags"), u16s(values), u8(last, "last"));
    }

    /** Sends an input report as it is, report id first, malformed or not. */
    public void pushInput(byte[] report) {
        nativePushInput(id, Objects.requireNonNull(report, "report"));
    }

    /** How many input reports the pad has sent so far. */
    public int inputCount() {
        return nativeInputCount(id);
    }

    /** A copy of the {@code index}-th input report the pad sent (0 is the first). */
    public byte[] inputReport(int index) {
        if (index < 0) throw new IllegalArgumentException("index " + index + " is negative");
        return nativeInputReport(id, index);
    }

    // ---- Display memory -----------------------------------------------------------------------

    /** What the panel shows now. */
    public BufferedImage readDisplay() {
        int[] size = nativeDisplaySize(id);
        byte[] rgb = nativeFrameRgb(id);
        int width = size[0], height = size[1];
        int[] pixels = new int[width * height];
        for (int i = 0; i < pixels.length; i++) {
            pixels[i] = (rgb[3 * i] & 0xFF) << 16 | (rgb[3 * i + 1] & 0xFF) << 8 | (rgb[3 * i + 2] & 0xFF);
        }
        BufferedImage image = new BufferedImage(width, height, BufferedImage.TYPE_INT_RGB);
        image.setRGB(0, 0, width, height, pixels, 0, width);
        return image;
    }

    /**
     * One pixel as the panel shows it, as {@code 0xRRGGBB} (the form of
     * {@code readDisplay().getRGB(x, y) & 0xFFFFFF}); white outside the panel.
     */
    public int getPixel(int x, int y) {
        return nativeGetPixel(id, x, y) >>> 8;
    }

    // ---- Faults and timing --------------------------------------------------------------------

    /** Makes the {@code nth} transfer from now fail (1 is the next one; 0 cancels). */
    public void failTransfer(int nth) {
        nativeFailTransfer(id, nonNegative(nth, "nth"));
    }

    /** Unplugs the pad at the {@code nth} transfer from now, which fails (0 cancels). */
    public void unplugAtTransfer(int nth) {
        nativeUnplugAtTransfer(id, nonNegative(nth, "nth"));
    }

    /** Busy flags (bits 0 to 5) the status shows until cleared with 0. */
    public void stayBusy(int bits) {
        nativeStayBusy(id, u8(bits, "bits"));
    }

    /** How many status reads the pad stays busy after each command (2 unless changed). */
    public void setBusyPolls(int polls) {
        nativeSetBusyPolls(id, nonNegative(polls, "polls"));
    }

    /** How many status reads from now show the pad initialising. */
    public void setInitializing(int polls) {
        nativeSetInitializing(id, nonNegative(polls, "polls"));
    }

    /** Answers to gets of the report stop after {@code length} bytes. */
    public void shortAnswer(int reportId, int length) {
        nativeShortAnswer(id, u8(reportId, "reportId"), nonNegative(length, "length"));
    }

    /** Answers to gets of the report come back under id + 1 with every payload byte inverted. */
    public void malformedAnswer(int reportId) {
        nativeMalformedAnswer(id, u8(reportId, "reportId"));
    }

    /**
     * The next open of the pad is refused, as a missing permission refuses it ({@code Device.open}
     * throws); the open after it works again.
     */
    public void refuseOpen() {
        nativeRefuseOpen(id);
    }

    /** Ends every fault above, the held busy flags included. */
    public void clearFaults() {
        nativeClearFaults(id);
    }

    /** Transfers (gets and sets, status reads included) the pad has answered or refused so far. */
    public int transferCount() {
        return nativeTransferCount(id);
    }

    // ---- State --------------------------------------------------------------------------------

    /** The serial number up to its first zero byte; bytes of 255 read as U+00FF. */
    public String serial() {
        return nativeSerial(id);
    }

    /** Stores a serial number (at most 32 characters are kept); null erases it to bytes of 255. */
    public void setSerial(String serial) {
        nativeSetSerial(id, serial);
    }

    /** 0 idle, 2 running. */
    public int runMode() {
        return nativeRunMode(id);
    }

    /** Why the pad last refused a request, as its status report says; empty when it never did. */
    public String statusText() {
        return nativeStatusText(id);
    }

    /**
     * The payload (the bytes after the report id) of a stored parameter report.
     *
     * @throws VelatrixException when the pad stores no such report
     */
    public byte[] parameter(int reportId) {
        return nativeParameter(id, u8(reportId, "reportId"));
    }

    /** The number of the screen the pad shows. */
    public int activeScreen() {
        return nativeActiveScreen(id);
    }

    /** The data of a stored resource, or null when the pad holds none under that number. */
    public byte[] resource(int number) {
        return nativeResource(id, u8(number, "number"));
    }

    /** The last firmware download status the pad received, or -1 when none arrived. */
    public int downloadStatus() {
        return nativeDownloadStatus(id);
    }

    /**
     * The 128 bytes of the firmware page received at {@code address}.
     *
     * @throws VelatrixException when no page arrived there
     */
    public byte[] firmwarePage(int address) {
        return nativeFirmwarePage(id, address);
    }

    // ---- Object -------------------------------------------------------------------------------

    @Override
    public boolean equals(Object other) {
        return other instanceof VirtualPad pad && pad.id == id;
    }

    @Override
    public int hashCode() {
        return Integer.hashCode(id);
    }

    /** The id and, while plugged, the model: {@code VirtualPad{id=1, model=mono-320}}. */
    @Override
    public String toString() {
        String model;
        try {
            model = model();
        } catch (VelatrixException unplugged) {
            model = "unplugged";
        }
        return "VirtualPad{id=" + id + ", model=" + model + "}";
    }

    // ---- Ranges the C types impose ------------------------------------------------------------

    private static int u8(int value, String name) {
        return inRange(value, 0xFF, name);
    }

    private static int u16(int value, String name) {
        return inRange(value, 0xFFFF, name);
    }

    private static int nonNegative(int value, String name) {
        return inRange(value, Integer.MAX_VALUE, name);
    }

    private static int inRange(int value, int max, String name) {
        if (value < 0 || value > max) throw new IllegalArgumentException(name + " " + value + " is outside 0 to " + max);
        return value;
    }

    private static int[] u16s(int... values) {
        for (int value : values) u16(value, "value");
        return Arrays.copyOf(values, values.length);
    }

    // ---- Natives: the pad's id first ----------------------------------------------------------

    private static native int nativePlug(String model);

    private static native int[] nativePluggedIds();

    private static native boolean nativeIsPlugged(int pad);

    private static native void nativeUnplug(int pad);

    private static native String nativeModel(int pad);

    private static native int nativeProductId(int pad);

    private static native int nativeLocationId(int pad);

    private static native void nativePen(int pad, int x, int y, boolean tip, boolean inRange);

    private static native void nativePlayStroke(int pad, int[] xy);

    private static native void nativeSwipeCard(int pad, String track1, String track2, String track3);

    private static native void nativeSendAdc(int pad, int kind, int flagsOrChannel, int[] values);

    private static native void nativeSendDebug(int pad, int flags, int[] values, int last);

    private static native void nativePushInput(int pad, byte[] report);

    private static native int nativeInputCount(int pad);

    private static native byte[] nativeInputReport(int pad, int index);

    private static native int[] nativeDisplaySize(int pad);

    private static native byte[] nativeFrameRgb(int pad);

    private static native int nativeGetPixel(int pad, int x, int y);

    private static native void nativeFailTransfer(int pad, int nth);

    private static native void nativeUnplugAtTransfer(int pad, int nth);

    private static native void nativeStayBusy(int pad, int bits);

    private static native void nativeSetBusyPolls(int pad, int polls);

    private static native void nativeSetInitializing(int pad, int polls);

    private static native void nativeShortAnswer(int pad, int reportId, int length);

    private static native void nativeMalformedAnswer(int pad, int reportId);

    private static native void nativeRefuseOpen(int pad);

    private static native void nativeClearFaults(int pad);

    private static native int nativeTransferCount(int pad);

    private static native String nativeSerial(int pad);

    private static native void nativeSetSerial(int pad, String serial);

    private static native int nativeRunMode(int pad);

    private static native String nativeStatusText(int pad);

    private static native byte[] nativeParameter(int pad, int reportId);

    private static native int nativeActiveScreen(int pad);

    private static native byte[] nativeResource(int pad, int number);

    private static native int nativeDownloadStatus(int pad);

    private static native byte[] nativeFirmwarePage(int pad, int address);
}
