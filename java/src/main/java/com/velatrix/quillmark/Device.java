package com.velatrix.quillmark;

import com.velatrix.quillmark.input.ADCChannelValues;
import com.velatrix.quillmark.input.ADCScanValues;
import com.velatrix.quillmark.input.ButtonEvent;
import com.velatrix.quillmark.input.Coordinate;
import com.velatrix.quillmark.input.DebugCoordinate;
import com.velatrix.quillmark.input.MagneticCardSwipe;
import java.util.List;
import java.util.concurrent.CopyOnWriteArrayList;

/**
 * One signature pad. Get it from {@link DeviceManager#getAttachedDevices()}, {@link #open()} it,
 * add an {@link InputListener} and call {@link #read()} (or {@link #startReading()}), then close
 * it, best with try-with-resources:
 *
 * <pre>{@code
 * try (Device pad = DeviceManager.getAttachedDevices()[0]) {
 *     pad.open();
 *     pad.addInputListener(new InputListener() {
 *         public void coordinate(Device d, Coordinate c) { System.out.println(c); }
 *     });
 *     pad.drawText("Please sign", 10, 10, Device.ALIGN_LEFT, false);
 *     for (int i = 0; i < 10; i++) pad.read();
 * }
 * }</pre>
 *
 * Every operation throws {@link VelatrixException} with the library's message when it fails, and
 * "Device doesn't appear to be open." when the pad is not open. One pad is used by one thread at a
 * time, except that {@link #close()} may come from another thread while a read is running: it
 * waits for that read to end.
 */
public class Device implements AutoCloseable {
    static {
        NativeLibrary.load();
    }

    /** Text alignment of {@link #drawText}: {@code x} is the left edge. */
    public static final int ALIGN_LEFT = 0;
    /** Text alignment of {@link #drawText}: {@code x} is the right edge. */
    public static final int ALIGN_RIGHT = 1;
    /** Text alignment of {@link #drawText}: {@code x} is the centre. */
    public static final int ALIGN_CENTRE = 2;

    private static final String NOT_OPEN = "Device doesn't appear to be open.";

    private final String path;
    private final String model;
    private final String manufacturer;
    private final int vendorId;
    private final int productId;
    // Handles the natives keep: the open C record, and the driver that listed the pad.
    private volatile long ptr;
    private long driverPtr;
    private long driverDefinedPtr;

    private final List<InputListener> listeners = new CopyOnWriteArrayList<>();
    private final Object readerLock = new Object();
    private Thread reader;
    private volatile boolean stopReader;
    private volatile VelatrixException readerFailure;

    /** Made by the library when it lists pads. */
    Device(String path, int productId, int vendorId, String model, String manufacturer) {
        this.path = path;
        this.productId = productId;
        this.vendorId = vendorId;
        this.model = model;
        this.manufacturer = manufacturer;
    }

    /** The platform's name of the pad; stable while the pad stays plugged in the same port. */
    public String getPath() {
        return path;
    }

    /** The pad's product name, or null when it does not tell. */
    public String getModel() {
        return model;
    }

    /** The pad maker's name, or null when the pad does not tell. */
    public String getManufacturer() {
        return manufacturer;
    }

    public int getVendorId() {
        return vendorId;
    }

    public int getProductId() {
        return productId;
    }

    private void setPtr(long ptr) {
        this.ptr = ptr;
    }

    private void setDriverPtr(long driverPtr) {
        this.driverPtr = driverPtr;
    }

    private void setDriverDefinedPtr(long driverDefinedPtr) {
        this.driverDefinedPtr = driverDefinedPtr;
    }

    @Override
    public String toString() {
        return String.format("Device{path=%s, vendorId=0x%04x, productId=0x%04x, model=%s, manufacturer=%s, open=%s}",
                path, vendorId, productId, model, manufacturer, ptr != 0);
    }

    // ---- Input listeners -------------------------------------------------------------------

    public void addInputListener(InputListener listener) {
        if (listener == null) throw new NullPointerException("listener");
        listeners.add(listener);
    }

    public void removeInputListener(InputListener listener) {
        listeners.remove(listener);
    }

    private void pushCoordinateEvent(Coordinate event) {
        for (InputListener l : listeners) l.coordinate(this, event);
    }

    private void pushButtonEvent(ButtonEvent event) {
        for (InputListener l : listeners) l.button(this, event);
    }

    private void pushMagneticCardSwipeEvent(MagneticCardSwipe event) {
        for (InputListener l : listeners) l.magneticCardSwipe(this, event);
    }

    private void pushADCScanValuesEvent(ADCScanValues event) {
        for (InputListener l : listeners) l.adcScanValues(this, event);
    }

    private void pushADCChannelValuesEvent(ADCChannelValues event) {
        for (InputListener l : listeners) l.adcChannelValues(this, event);
    }

    private void pushDebugCoordinateEvent(DebugCoordinate event) {
        for (InputListener l : listeners) l.debugCoordinate(this, event);
    }

    private void pushRawInputReport(byte[] report) {
        for (InputListener l : listeners) l.rawInputReport(this, report);
    }

    // ---- Background reading ----------------------------------------------------------------

    /**
     * Reads on a daemon thread of its own until the pad is closed, {@link #stopReading()} is called
     * or a read fails (see {@link #getReaderFailure()}). Listeners are then called on that thread.
     * Does nothing when a reader already runs.
     */
    public void startReading() {
        synchronized (readerLock) {
            if (reader != null && reader.isAlive()) return;
            stopReader = false;
            readerFailure = null;
            reader = new Thread(this::readUntilStopped, "quillmark-reader " + path);
            reader.setDaemon(true);
            reader.start();
        }
    }

    /** Ends the background reader and waits for it (at most about one read, a second). */
    public void stopReading() {
        Thread running;
        synchronized (readerLock) {
            running = reader;
            stopReader = true;
        }
        if (running == null || running == Thread.currentThread()) return;
        boolean interrupted = false;
        while (running.isAlive()) {
            try {
                running.join();
            } catch (InterruptedException e) {
                interrupted = true;
            }
        }
        if (interrupted) Thread.currentThread().interrupt();
    }

    /** The error that ended the background reader, or null when it ended on request or on close. */
    public VelatrixException getReaderFailure() {
        return readerFailure;
    }

    private void readUntilStopped() {
        while (!stopReader && ptr != 0) {
            try {
                read();
            } catch (VelatrixException e) {
                // A close from another thread ends the reading; that is not a failure.
                if (!stopReader && ptr != 0 && !NOT_OPEN.equals(e.getMessage())) readerFailure = e;
                return;
            }
        }
    }

    // ---- Natives: the pad itself -----------------------------------------------------------

    /** Opens the pad (found again by its path). */
    public native void open();

    /**
     * Closes the pad and forgets it, also when the pad refused to close (the exception says so).
     * A background reader ends.
     */
    @Override
    public native void close();

    /**
     * Waits up to about a second for input and delivers what arrives to the listeners, on this
     * thread. Returns the driver's result (1 when input was read).
     */
    public native int read();

    public native boolean isOpen();

    /** Whether the pen is down on a button region now. */
    public native boolean isButtonDown();

    /** The pad's 16-byte identifier (a digest of its error-correction table). */
    public native byte[] getUuid();

    /** The display as the pad described it when it was opened. */
    public native Display getDisplayInfo();

    public native Capabilities getCapabilities();

    public native Version getVersionInfo();

    public native int getRegionIndex();

    public native void setRegionIndex(int index);

    /** Sets the pad up to report pen data to the host (not stored as the pad's default). */
    public native void setQuillmarkMode();

    /** Sets the pad up to type its output as a keyboard (not stored as the pad's default). */
    public native void setCorvantineMode();

    public native void restoreDefaultRegions();

    public native DisplaySettings getDisplaySettings();

    public native void setDisplaySettings(DisplaySettings settings);

    /** The 2048-byte error-correction table. */
    public native byte[] getErrorCorrectionTable();

    /** Writes the error-correction table; it must hold exactly 2048 bytes. */
    public native void setErrorCorrectionTable(byte[] table);

    public native CoordinateRange getCoordinateRange();

    public native String getSerialNumber();

    /** Stores a serial number of at most 31 characters. */
    public native void setSerialNumber(String serialNumber);

    public native int getPowerState();

    public native void setPowerState(int state);

    public native OperatingModes getOperatingModes();

    public native GeneralParameters getGeneralParameters();

    public native void setGeneralParameters(GeneralParameters parameters);

    public native FrequencyAmplitude getFrequencyAmplitude();

    public native void setFrequencyAmplitude(FrequencyAmplitude frequencyAmplitude);

    /** The digitizer chip's register report: its id and eight register bytes. */
    public native byte[] getAsicRegister();

    public native void setAsicRegister(int address, int value);

    /** Resets the digitizer chip (both reset requests). */
    public native void asicReset();

    public native PenParameters getPenParameters();

    public native void setPenParameters(PenParameters parameters);

    public native TouchParameters getTouchParameters();

    public native void setTouchParameters(TouchParameters parameters);

    public native OutputConfiguration getOutputConfiguration();

    public native void setOutputConfiguration(OutputConfiguration configuration);

    public native PeripheralConfiguration getPeripheralConfiguration();

    public native void setPeripheralConfiguration(PeripheralConfiguration configuration);

    public native CalibrationData getCalibrationData();

    public native void setCalibrationData(CalibrationData data);

    public native DeviceStatus getDeviceStatus();

    public native CalibrationState getCalibrationState();

    /** Starts the pad's own calibration. */
    public native void calibrate();

    public native void cancelCalibration();

    public native int getContactCountMaximum();

    public native Configuration getConfiguration();

    public native void setDeviceConfiguration(Configuration configuration);

    public native void setRunMode(int mode);

    public native void setStartupMode(int mode);

    /** Clears the error text the pad keeps about its last refused request. */
    public native void clearLastError();

    public native void clearScreen();

    public native void deleteRegion(int number);

    public native void deleteDeviceRegion(int number);

    /** Chooses what the display shows (the region or screen number the pad expects). */
    public native void setPrimaryRegion(int number);

    /** Makes the pad store its regions. */
    public native void saveRegions();

    /** Makes the pad store its regions and screens. */
    public native void saveScreensRegions();

    /** Sends one firmware page (at most 128 bytes). */
    public native void setFirmwarePage(FirmwarePage page);

    /** Tells the pad the firmware image is complete. */
    public native void setFirmwareComplete();

    /** Sends one rectangle of packed pixels; its raster holds at most 2039 bytes. */
    public native void writeDisplayChunk(DisplayChunk chunk);

    /** Draws text in the pad's font at (x, y); alignment is one of the ALIGN constants. */
    public native void drawText(String text, int x, int y, int alignment, boolean inverse);

    /** The width in pixels the text takes in the pad's font; -1 after an exception. */
    public native int getTextWidth(String text);

    /** The height in pixels the text takes in the pad's font; -1 after an exception. */
    public native int getTextHeight(String text);

    /** The name of the driver that listed the pad; works without opening it. */
    public native String getDriverName();

    /** Makes the pad behave as if the pen touched it. */
    public native void simulatePenInput(int identifier, int x, int y, boolean penDown);

    /** Reads {@code count} (1 to 256) pixels back from the display, four bytes each. */
    public native byte[] getDisplayBuffer(int x, int y, int count);

    /** Sends a whole feature report, report id first, straight to the driver. */
    public native void setFeatureReport(byte[] report);

    /** Reads a feature report into the array; its first byte names the report. */
    public native void getFeatureReport(byte[] report);

    /** Sends a whole output report, report id first, straight to the driver. */
    public native void setOutputReport(byte[] report);

    // ---- Natives: regions, screens and resources -------------------------------------------

    /** Every region slot of the pad's region table, by slot. */
    public native Region[] getRegions();

    public native Region[] getDeviceRegions();

    /** The device region at the pad's region index. */
    public native Region getDeviceRegion();

    public native Region[] getDefaultRegions();

    public native void setRegion(Region region);

    public native void setDeviceRegion(Region region);

    /** Changes a region's enable and visible flags and its foreground colour in place. */
    public native void updateRegion(Region region);

    public native int getResourceIndex();

    public native void setResourceIndex(int index);

    public native ResourceInfo getResourceInfo();

    public native ResourceAvailability getResourceAvailability();

    /** The resource at the pad's resource index, as a text, a graphic or an invalid resource. */
    public native Resource getResource();

    /** Stores a text or graphic resource under its number. */
    public void setResource(Resource resource) {
        setResourceImpl(resource);
    }

    private native void setResourceImpl(Resource resource);

    public native void deleteResource(int number);

    public native Screen getScreen();

    public native ScreenRegionInfo getScreenRegionInfo();

    public native void setScreen(Screen screen);

    public native int getScreenIndex();

    public native void setScreenIndex(int index);

    public native int getActiveScreen();

    public native void setActiveScreen(int number);

    public native void deleteScreen(int number);

    public native void modifyScreen(ScreenModify modification);
}
