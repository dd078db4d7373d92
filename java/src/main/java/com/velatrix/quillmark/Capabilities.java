package com.velatrix.quillmark;

import java.util.Objects;

/**
 * What the pad can do: the reports and coordinate modes it supports, the geometry of its display
 * and digitizer, the calibrated area, and whether a card reader and stored screens are available.
 * Codes are the pad firmware's; reserved values are passed on as the pad sent them.
 */
public final class Capabilities {
    private int supportedReports;
    private int coordinateModes;
    private int displayId;
    private int brightnessLevels;
    private int contrastLevels;
    private int colorDepth;
    private int displayWidth;
    private int displayHeight;
    private int digitizerWidth;
    private int digitizerHeight;
    private int coordinateXMin;
    private int coordinateXMax;
    private int coordinateYMin;
    private int coordinateYMax;
    private int calibrationXMin;
    private int calibrationXMax;
    private int calibrationYMin;
    private int calibrationYMax;
    private int reserved4;
    private int reserved5;
    private int magReaderId;
    private int reserved6;
    private int reserved7;
    private boolean supportsScreensResources;
    private int reserved9;
    private int reserved10;
    private int reserved11;
    private int reserved12;
    private int reserved13;
    private int reserved14;

    /**
     * Makes a capabilities record. The pad's reserved byte right after the coordinate modes is not
     * part of it.
     *
     * @param supportedReports the reports the pad supports, as a bit mask the firmware defines
     * @param coordinateModes the coordinate modes the pad supports, as the firmware codes them
     * @param displayId the identifier of the display panel
     * @param brightnessLevels the number of brightness levels of the display
     * @param contrastLevels the number of contrast levels of the display
     * @param colorDepth the number of bits per pixel of the display
     * @param displayWidth the display width in pixels
     * @param displayHeight the display height in pixels
     * @param digitizerWidth the width of the digitizer
     * @param digitizerHeight the height of the digitizer
     * @param coordinateXMin the smallest x coordinate the digitizer reports
     * @param coordinateXMax the largest x coordinate the digitizer reports
     * @param coordinateYMin the smallest y coordinate the digitizer reports
     * @param coordinateYMax the largest y coordinate the digitizer reports
     * @param calibrationXMin the smallest x of the calibrated area
     * @param calibrationXMax the largest x of the calibrated area
     * @param calibrationYMin the smallest y of the calibrated area
     * @param calibrationYMax the largest y of the calibrated area
     * @param reserved4 a reserved value
     * @param reserved5 a reserved value
     * @param magReaderId the identifier of the magnetic card reader, 0 when none is fitted
     * @param reserved6 a reserved value
     * @param reserved7 a reserved value
     * @param supportsScreensResources whether the pad keeps screens and resources
     * @param reserved9 a reserved value
     * @param reserved10 a reserved value
     * @param reserved11 a reserved value
     * @param reserved12 a reserved value
     * @param reserved13 a reserved value
     * @param reserved14 a reserved value
     */
    public Capabilities(
            int supportedReports,
            int coordinateModes,
            int displayId,
            int brightnessLevels,
            int contrastLevels,
            int colorDepth,
            int displayWidth,
            int displayHeight,
            int digitizerWidth,
            int digitizerHeight,
            int coordinateXMin,
            int coordinateXMax,
            int coordinateYMin,
            int coordinateYMax,
            int calibrationXMin,
            int calibrationXMax,
            int calibrationYMin,
            int calibrationYMax,
            int reserved4,
            int reserved5,
            int magReaderId,
            int reserved6,
            int reserved7,
            boolean supportsScreensResources,
            int reserved9,
            int reserved10,
            int reserved11,
            int reserved12,
            int reserved13,
            int reserved14) {
        this.supportedReports = supportedReports;
        this.coordinateModes = coordinateModes;
        this.displayId = displayId;
        this.brightnessLevels = brightnessLevels;
        this.contrastLevels = contrastLevels;
        this.colorDepth = colorDepth;
        this.displayWidth = displayWidth;
        this.displayHeight = displayHeight;
        this.digitizerWidth = digitizerWidth;
        this.digitizerHeight = digitizerHeight;
        this.coordinateXMin = coordinateXMin;
        this.coordinateXMax = coordinateXMax;
        this.coordinateYMin = coordinateYMin;
        this.coordinateYMax = coordinateYMax;
        this.calibrationXMin = calibrationXMin;
        this.calibrationXMax = calibrationXMax;
        this.calibrationYMin = calibrationYMin;
        this.calibrationYMax = calibrationYMax;
        this.reserved4 = reserved4;
        this.reserved5 = reserved5;
        this.magReaderId = magReaderId;
        this.reserved6 = reserved6;
        this.reserved7 = reserved7;
        this.supportsScreensResources = supportsScreensResources;
        this.reserved9 = reserved9;
        this.reserved10 = reserved10;
        this.reserved11 = reserved11;
        this.reserved12 = reserved12;
        this.reserved13 = reserved13;
        this.reserved14 = reserved14;
    }

    /** The reports the pad supports, as a bit mask the firmware defines. */
    public int getSupportedReports() {
        return supportedReports;
    }

    /** Changes {@link #getSupportedReports()}. */
    public void setSupportedReports(int supportedReports) {
        this.supportedReports = supportedReports;
    }

    /** The coordinate modes the pad supports, as the firmware codes them. */
    public int getCoordinateModes() {
        return coordinateModes;
    }

    /** Changes {@link #getCoordinateModes()}. */
    public void setCoordinateModes(int coordinateModes) {
        this.coordinateModes = coordinateModes;
    }

    /** The identifier of the display panel. */
    public int getDisplayId() {
        return displayId;
    }

    /** Changes {@link #getDisplayId()}. */
    public void setDisplayId(int displayId) {
        this.displayId = displayId;
    }

    /** The number of brightness levels of the display. */
    public int getBrightnessLevels() {
        return brightnessLevels;
    }

    /** Changes {@link #getBrightnessLevels()}. */
    public void setBrightnessLevels(int brightnessLevels) {
        this.brightnessLevels = brightnessLevels;
    }

    /** The number of contrast levels of the display. */
    public int getContrastLevels() {
        return contrastLevels;
    }

    /** Changes {@link #getContrastLevels()}. */
    public void setContrastLevels(int contrastLevels) {
        this.contrastLevels = contrastLevels;
    }

    /** The number of bits per pixel of the display. */
    public int getColorDepth() {
        return colorDepth;
    }

    /** Changes {@link #getColorDepth()}. */
    public void setColorDepth(int colorDepth) {
        this.colorDepth = colorDepth;
    }

    /** The display width in pixels. */
    public int getDisplayWidth() {
        return displayWidth;
    }

    /** Changes {@link #getDisplayWidth()}. */
    public void setDisplayWidth(int displayWidth) {
        this.displayWidth = displayWidth;
    }

    /** The display height in pixels. */
    public int getDisplayHeight() {
        return displayHeight;
    }

    /** Changes {@link #getDisplayHeight()}. */
    public void setDisplayHeight(int displayHeight) {
        this.displayHeight = displayHeight;
    }

    /** The width of the digitizer. */
    public int getDigitizerWidth() {
        return digitizerWidth;
    }

    /** Changes {@link #getDigitizerWidth()}. */
    public void setDigitizerWidth(int digitizerWidth) {
        this.digitizerWidth = digitizerWidth;
    }

    /** The height of the digitizer. */
    public int getDigitizerHeight() {
        return digitizerHeight;
    }

    /** Changes {@link #getDigitizerHeight()}. */
    public void setDigitizerHeight(int digitizerHeight) {
        this.digitizerHeight = digitizerHeight;
    }

    /** The smallest x coordinate the digitizer reports. */
    public int getCoordinateXMin() {
        return coordinateXMin;
    }

    /** Changes {@link #getCoordinateXMin()}. */
    public void setCoordinateXMin(int coordinateXMin) {
        this.coordinateXMin = coordinateXMin;
    }

    /** The largest x coordinate the digitizer reports. */
    public int getCoordinateXMax() {
        return coordinateXMax;
    }

    /** Changes {@link #getCoordinateXMax()}. */
    public void setCoordinateXMax(int coordinateXMax) {
        this.coordinateXMax = coordinateXMax;
    }

    /** The smallest y coordinate the digitizer reports. */
    public int getCoordinateYMin() {
        return coordinateYMin;
    }

    /** Changes {@link #getCoordinateYMin()}. */
    public void setCoordinateYMin(int coordinateYMin) {
        this.coordinateYMin = coordinateYMin;
    }

    /** The largest y coordinate the digitizer reports. */
    public int getCoordinateYMax() {
        return coordinateYMax;
    }

    /** Changes {@link #getCoordinateYMax()}. */
    public void setCoordinateYMax(int coordinateYMax) {
        this.coordinateYMax = coordinateYMax;
    }

    /** The smallest x of the calibrated area. */
    public int getCalibrationXMin() {
        return calibrationXMin;
    }

    /** Changes {@link #getCalibrationXMin()}. */
    public void setCalibrationXMin(int calibrationXMin) {
        this.calibrationXMin = calibrationXMin;
    }

    /** The largest x of the calibrated area. */
    public int getCalibrationXMax() {
        return calibrationXMax;
    }

    /** Changes {@link #getCalibrationXMax()}. */
    public void setCalibrationXMax(int calibrationXMax) {
        this.calibrationXMax = calibrationXMax;
    }

    /** The smallest y of the calibrated area. */
    public int getCalibrationYMin() {
        return calibrationYMin;
    }

    /** Changes {@link #getCalibrationYMin()}. */
    public void setCalibrationYMin(int calibrationYMin) {
        this.calibrationYMin = calibrationYMin;
    }

    /** The largest y of the calibrated area. */
    public int getCalibrationYMax() {
        return calibrationYMax;
    }

    /** Changes {@link #getCalibrationYMax()}. */
    public void setCalibrationYMax(int calibrationYMax) {
        this.calibrationYMax = calibrationYMax;
    }

    /** A reserved value. */
    public int getReserved4() {
        return reserved4;
    }

    /** Changes {@link #getReserved4()}. */
    public void setReserved4(int reserved4) {
        this.reserved4 = reserved4;
    }

    /** A reserved value. */
    public int getReserved5() {
        return reserved5;
    }

    /** Changes {@link #getReserved5()}. */
    public void setReserved5(int reserved5) {
        this.reserved5 = reserved5;
    }

    /** The identifier of the magnetic card reader, 0 when none is fitted. */
    public int getMagReaderId() {
        return magReaderId;
    }

    /** Changes {@link #getMagReaderId()}. */
    public void setMagReaderId(int magReaderId) {
        this.magReaderId = magReaderId;
    }

    /** A reserved value. */
    public int getReserved6() {
        return reserved6;
    }

    /** Changes {@link #getReserved6()}. */
    public void setReserved6(int reserved6) {
        this.reserved6 = reserved6;
    }

    /** A reserved value. */
    public int getReserved7() {
        return reserved7;
    }

    /** Changes {@link #getReserved7()}. */
    public void setReserved7(int reserved7) {
        this.reserved7 = reserved7;
    }

    /** Whether the pad keeps screens and resources. */
    public boolean isSupportsScreensResources() {
        return supportsScreensResources;
    }

    /** Changes {@link #isSupportsScreensResources()}. */
    public void setSupportsScreensResources(boolean supportsScreensResources) {
        this.supportsScreensResources = supportsScreensResources;
    }

    /** A reserved value. */
    public int getReserved9() {
        return reserved9;
    }

    /** Changes {@link #getReserved9()}. */
    public void setReserved9(int reserved9) {
        this.reserved9 = reserved9;
    }

    /** A reserved value. */
    public int getReserved10() {
        return reserved10;
    }

    /** Changes {@link #getReserved10()}. */
    public void setReserved10(int reserved10) {
        this.reserved10 = reserved10;
    }

    /** A reserved value. */
    public int getReserved11() {
        return reserved11;
    }

    /** Changes {@link #getReserved11()}. */
    public void setReserved11(int reserved11) {
        this.reserved11 = reserved11;
    }

    /** A reserved value. */
    public int getReserved12() {
        return reserved12;
    }

    /** Changes {@link #getReserved12()}. */
    public void setReserved12(int reserved12) {
        this.reserved12 = reserved12;
    }

    /** A reserved value. */
    public int getReserved13() {
        return reserved13;
    }

    /** Changes {@link #getReserved13()}. */
    public void setReserved13(int reserved13) {
        this.reserved13 = reserved13;
    }

    /** A reserved value. */
    public int getReserved14() {
        return reserved14;
    }

    /** Changes {@link #getReserved14()}. */
    public void setReserved14(int reserved14) {
        this.reserved14 = reserved14;
    }

    /** Whether a magnetic card reader is fitted: {@link #getMagReaderId()} is not 0. */
    public boolean hasCardReader() {
        return magReaderId != 0;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Capabilities that = (Capabilities) o;
        return supportedReports == that.supportedReports
                && coordinateModes == that.coordinateModes
                && displayId == that.displayId
                && brightnessLevels == that.brightnessLevels
                && contrastLevels == that.contrastLevels
                && colorDepth == that.colorDepth
                && displayWidth == that.displayWidth
                && displayHeight == that.displayHeight
                && digitizerWidth == that.digitizerWidth
                && digitizerHeight == that.digitizerHeight
                && coordinateXMin == that.coordinateXMin
                && coordinateXMax == that.coordinateXMax
                && coordinateYMin == that.coordinateYMin
                && coordinateYMax == that.coordinateYMax
                && calibrationXMin == that.calibrationXMin
                && calibrationXMax == that.calibrationXMax
                && calibrationYMin == that.calibrationYMin
                && calibrationYMax == that.calibrationYMax
                && reserved4 == that.reserved4
                && reserved5 == that.reserved5
                && magReaderId == that.magReaderId
                && reserved6 == that.reserved6
                && reserved7 == that.reserved7
                && supportsScreensResources == that.supportsScreensResources
                && reserved9 == that.reserved9
                && reserved10 == that.reserved10
                && reserved11 == that.reserved11
                && reserved12 == that.reserved12
                && reserved13 == that.reserved13
                && reserved14 == that.reserved14;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                supportedReports, coordinateModes, displayId, brightnessLevels, contrastLevels,
                colorDepth, displayWidth, displayHeight, digitizerWidth, digitizerHeight,
                coordinateXMin, coordinateXMax, coordinateYMin, coordinateYMax, calibrationXMin,
                calibrationXMax, calibrationYMin, calibrationYMax, reserved4, reserved5,
                magReaderId, reserved6, reserved7, supportsScreensResources, reserved9, reserved10,
                reserved11, reserved12, reserved13, reserved14);
    }

    @Override
    public String toString() {
        return "Capabilities{supportedReports=" + supportedReports
                + ", coordinateModes=" + coordinateModes
                + ", displayId=" + displayId
                + ", brightnessLevels=" + brightnessLevels
                + ", contrastLevels=" + contrastLevels
                + ", colorDepth=" + colorDepth
                + ", displayWidth=" + displayWidth
                + ", displayHeight=" + displayHeight
                + ", digitizerWidth=" + digitizerWidth
                + ", digitizerHeight=" + digitizerHeight
                + ", coordinateXMin=" + coordinateXMin
                + ", coordinateXMax=" + coordinateXMax
                + ", coordinateYMin=" + coordinateYMin
                + ", coordinateYMax=" + coordinateYMax
                + ", calibrationXMin=" + calibrationXMin
                + ", calibrationXMax=" + calibrationXMax
                + ", calibrationYMin=" + calibrationYMin
                + ", calibrationYMax=" + calibrationYMax
                + ", reserved4=" + reserved4
                + ", reserved5=" + reserved5
                + ", magReaderId=" + magReaderId
                + ", reserved6=" + reserved6
                + ", reserved7=" + reserved7
                + ", supportsScreensResources=" + supportsScreensResources
                + ", reserved9=" + reserved9
                + ", reserved10=" + reserved10
                + ", reserved11=" + reserved11
                + ", reserved12=" + reserved12
                + ", reserved13=" + reserved13
                + ", reserved14=" + reserved14
                + "}";
    }
}
