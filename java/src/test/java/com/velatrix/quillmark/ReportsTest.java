package com.velatrix.quillmark;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.security.MessageDigest;
import java.util.List;
import java.util.function.BiConsumer;
import java.util.function.Consumer;
import java.util.function.Function;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.Executable;

/** Every information and parameter report through the natives, against every virtual model. */
class ReportsTest {

    /** A parameter report: how to read it, write it, and change it to distinct values. */
    private record Row<T>(String name, Function<Device, T> get, BiConsumer<Device, T> set, Consumer<T> change) {
        void roundTrip(Device device) {
            T record = get.apply(device);
            change.accept(record);
            set.accept(device, record);
            assertEquals(record, get.apply(device), name);
        }
    }

    private static final List<Row<?>> PARAMETER_REPORTS = List.of(
            new Row<DisplaySettings>("display settings", Device::getDisplaySettings, Device::setDisplaySettings, r -> {
                r.setBrightness(7);
                r.setContrast(9);
                r.setRed(1);
                r.setGreen(2);
                r.setBlue(3);
            }),
            new Row<GeneralParameters>("general parameters", Device::getGeneralParameters,
                    Device::setGeneralParameters, r -> {
                r.setXyOutputEnabled(true);
                r.setAdcOutputEnabled(false);
                r.setMapCoordinates(true);
                r.setChannelLockNumber(5);
                r.setCornerLowerLeft(1);
                r.setCornerUpperLeft(2);
                r.setCornerLowerRight(3);
                r.setCornerUpperRight(0);
                r.setSamples(0x1234);
                r.setFilterFrequency(77);
            }),
            new Row<FrequencyAmplitude>("frequency amplitude", Device::getFrequencyAmplitude,
                    Device::setFrequencyAmplitude, r -> {
                r.setFrequency(11);
                r.setPenAmplitude(22);
                r.setTouchAmplitude(33);
            }),
            new Row<PenParameters>("pen parameters", Device::getPenParameters, Device::setPenParameters, r -> {
                r.setProximity(0x0102);
                r.setAutoPenThreshold(0x0304);
                r.setAutoTouchThreshold(0x0506);
                r.setAdcAverage(7);
                r.setCoordinateAverage(8);
                r.setOffsetInterval(0x090A);
                r.setDebouncePreDown(11);
                r.setDebouncePostDown(12);
                r.setDebouncePreUp(13);
                r.setDebouncePostUp(14);
                r.setErrorCorrectionEnabled(true);
                r.setOffsetCorrectionEnabled(false);
                r.setTipInverted(true);
                r.setInterruptRate(0x0F10);
            }),
            new Row<TouchParameters>("touch parameters", Device::getTouchParameters, Device::setTouchParameters, r -> {
                r.setAdcAverage(3);
                r.setCoordinateAverage(4);
                r.setSlopeDown((short) -5);
                r.setSlopeLiftoff((short) 600);
                r.setSlopeMinimum(7);
                r.setPressureSingle(0x0809);
                r.setPressureMultiple(0x0A0B);
                r.setGain(12);
                r.setErrorCorrectionEnabled(true);
                r.setScaleX(0x0D0E);
                r.setOffsetX((short) -15);
                r.setScaleY(0x1011);
                r.setOffsetY((short) 18);
            }),
            new Row<OutputConfiguration>("output configuration", Device::getOutputConfiguration,
                    Device::setOutputConfiguration, r -> {
                r.setOutputReport(0x40010000L);
                r.setOutputMode(OutputConfiguration.TRANSMIT_ON_CONFIRM);
                r.setCompressionEnable(true);
                r.setCompressionHiRes(true);
                r.setPacketsPerSecond(150);
            }),
            new Row<PeripheralConfiguration>("peripheral configuration", Device::getPeripheralConfiguration,
                    Device::setPeripheralConfiguration, r -> r.setMagCardOutput(
                            PeripheralConfiguration.KEYBOARD_OUTPUT | PeripheralConfiguration.KEYBOARD_PREAMBLE)),
            new Row<CalibrationData>("calibration data", Device::getCalibrationData, Device::setCalibrationData, r -> {
                r.setCalibrationType((short) 2);
                r.setCalibrated(true);
                r.setRotationScale(-3);
                r.setLocalMultiplierScale(4);
                r.setHostMultiplierScale(5);
                r.setRotationSINScaled(-6);
                r.setRotationCOSScaled(7);
                r.setLocalWidthCalibrated(800);
                r.setLocalHeightCalibrated(480);
                r.setLocalXMultiplierScaled(-100000);
                r.setLocalXOffset(12);
                r.setLocalYMultiplierScaled(100000);
                r.setLocalYOffset(-13);
                r.setHostXMultiplierScaled(14);
                r.setHostXOffset(-15);
                r.setHostYMultiplierScaled(16);
                r.setHostYOffset(-17);
            }),
            new Row<Configuration>("configuration", Device::getConfiguration, Device::setDeviceConfiguration, r -> {
                r.setDeviceMode(1);
                r.setDeviceId(3);
            }));

    @Test
    void parameterReportsRoundTripOnEveryModel() {
        for (Pads.OpenPad open : Pads.openAll(Pads.ANY)) {
            try (open) {
                for (Row<?> row : PARAMETER_REPORTS) row.roundTrip(open.device);
                open.device.setSerialNumber("QM-0042");
                assertEquals("QM-0042", open.device.getSerialNumber(), open.toString());
                assertEquals("QM-0042", open.pad.serial());
                open.device.setPowerState(1);
                assertEquals(1, open.device.getPowerState());
            }
        }
    }

    @Test
    void informationReportsDescribeThePad() {
        for (Pads.OpenPad open : Pads.openAll(Pads.ANY)) {
            try (open) {
                Device device = open.device;
                Display display = device.getDisplayInfo();
                java.awt.image.BufferedImage frame = open.pad.readDisplay();
                assertEquals(List.of(frame.getWidth(), frame.getHeight()), List.of(display.getWidth(), display.getHeight()),
                        open.toString());
                Capabilities capabilities = device.getCapabilities();
                assertEquals(List.of(display.getWidth(), display.getHeight(), display.getColorDepth()),
                        List.of(capabilities.getDisplayWidth(), capabilities.getDisplayHeight(), capabilities.getColorDepth()));
                for (Object report : new Object[] {device.getVersionInfo(), device.getCoordinateRange(),
                        device.getOperatingModes(), device.getDeviceStatus(), device.getCalibrationState()}) {
                    assertNotNull(report);
                }
                assertTrue(device.getDeviceStatus().isIdle() || !device.getDeviceStatus().isInitializing());
                assertEquals(9, device.getAsicRegister().length);
                assertTrue(device.getContactCountMaximum() >= 0);
            }
        }
    }

    /** Every native that takes an object refuses null with its own message, before looking at the pad. */
    @Test
    void nullArgumentsAreRefusedWithTheirMessages() {
        Device closed = new Device("closed", 0, 0, null, null);
        Object[][] cases = {
            {(Executable) () -> closed.setDisplaySettings(null), "Display settings can't be null."},
            {(Executable) () -> closed.setGeneralParameters(null), "General parameters can't be null."},
            {(Executable) () -> closed.setFrequencyAmplitude(null), "Frequency amplitude settings can't be null."},
            {(Executable) () -> closed.setPenParameters(null), "Pen parameters can't be null."},
            {(Executable) () -> closed.setTouchParameters(null), "Touch parameters can't be null."},
            {(Executable) () -> closed.setOutputConfiguration(null), "Output configuration data can't be null."},
            {(Executable) () -> closed.setPeripheralConfiguration(null), "Peripheral configuration data can't be null."},
            {(Executable) () -> closed.setCalibrationData(null), "Calibration data can't be null."},
            {(Executable) () -> closed.setDeviceConfiguration(null), "Device configuration can't be null."},
            {(Executable) () -> closed.setErrorCorrectionTable(null), "Error correction table can't be null."},
            {(Executable) () -> closed.setSerialNumber(null), "Serial number can't be null."},
            {(Executable) () -> closed.setFirmwarePage(null), "Firmware page can't be null."},
            {(Executable) () -> closed.writeDisplayChunk(null), "Display chunk can't be null."},
            {(Executable) () -> closed.drawText(null, 0, 0, Device.ALIGN_LEFT, false), "Text can't be null."},
            {(Executable) () -> closed.setRegion(null), "Region can't be null."},
            {(Executable) () -> closed.setDeviceRegion(null), "Region can't be null."},
            {(Executable) () -> closed.setResource(null), "Resource can't be null."},
            // The raw report natives look at the pad first.
            {(Executable) () -> closed.getFeatureReport(null), "Device doesn't appear to be open."},
            {(Executable) () -> closed.setDisplaySettings(new DisplaySettings()), "Device doesn't appear to be open."},
        };
        Pads.start();
        for (Object[] c : cases) {
            assertEquals(c[1], assertThrows(VelatrixException.class, (Executable) c[0]).getMessage());
        }
    }

    @Test
    void sizeChecksHoldAtTheirBoundaries() throws Exception {
        try (Pads.OpenPad open = Pads.open(Pads.ANY)) {
            Device device = open.device;
            String pixelCount = "Pixel count must be greater than zero and less than 256.";
            assertEquals(pixelCount, assertThrows(VelatrixException.class, () -> device.getDisplayBuffer(0, 0, 0)).getMessage());
            assertEquals(pixelCount, assertThrows(VelatrixException.class, () -> device.getDisplayBuffer(0, 0, 257)).getMessage());
            assertEquals(4, device.getDisplayBuffer(0, 0, 1).length);
            assertEquals(1024, device.getDisplayBuffer(0, 0, 256).length);

            device.writeDisplayChunk(new DisplayChunk(0, 0, 8, 8, (byte) 1, new byte[2039]));
            assertEquals("Graphic is too big.", assertThrows(VelatrixException.class,
                    () -> device.writeDisplayChunk(new DisplayChunk(0, 0, 8, 8, (byte) 1, new byte[2040]))).getMessage());

            for (int length : new int[] {2047, 2049}) {
                assertEquals("Error correction table length is not correct.", assertThrows(VelatrixException.class,
                        () -> device.setErrorCorrectionTable(new byte[length])).getMessage());
            }
            byte[] table = new byte[2048];
            for (int i = 0; i < table.length; i++) table[i] = (byte) (i * 7);
            device.setErrorCorrectionTable(table);
            assertArrayEquals(table, device.getErrorCorrectionTable());
            assertArrayEquals(MessageDigest.getInstance("MD5").digest(table), device.getUuid());

            byte[] page = new byte[128];
            for (int i = 0; i < page.length; i++) page[i] = (byte) (255 - i);
            device.setFirmwarePage(new FirmwarePage(0x4000, page, (byte) 0x5A));
            assertArrayEquals(page, open.pad.firmwarePage(0x4000));
            assertEquals("Firmware page is too long.", assertThrows(VelatrixException.class,
                    () -> device.setFirmwarePage(new FirmwarePage(0x4080, new byte[129], (byte) 0))).getMessage());
            device.setFirmwareComplete();
            assertEquals(1, open.pad.downloadStatus());

            // A one-byte buffer is refused but still handed to the driver, which asks the pad.
            int before = open.pad.transferCount();
            assertEquals("Buffer must have length greater than 1", assertThrows(VelatrixException.class,
                    () -> device.getFeatureReport(new byte[] {13})).getMessage());
            assertEquals(before + 1, open.pad.transferCount());
            byte[] status = new byte[80];
            status[0] = 13;
            device.getFeatureReport(status);
            assertEquals(13, status[0]);
        }
    }

    @Test
    void textIsMeasuredAndDrawnInThePadsFont() {
        try (Pads.OpenPad open = Pads.open(Pads.ANY)) {
            Device device = open.device;
            int width = device.getTextWidth("Sign here");
            assertTrue(width > device.getTextWidth("Sign"), "longer text is wider");
            assertTrue(device.getTextHeight("Sign here") > 0);
            device.clearScreen();
            device.drawText("Sign here", 10, 10, Device.ALIGN_LEFT, false);
            java.awt.image.BufferedImage shown = open.pad.readDisplay();
            int ink = 0;
            for (int y = 10; y < 10 + device.getTextHeight("Sign here"); y++) {
                for (int x = 10; x < 10 + width; x++) if ((shown.getRGB(x, y) & 0xFFFFFF) != 0xFFFFFF) ink++;
            }
            assertTrue(ink > 20, "the text left ink on the display: " + ink);
        }
    }
}
