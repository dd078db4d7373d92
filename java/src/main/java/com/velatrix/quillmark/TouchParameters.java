package com.velatrix.quillmark;

import java.util.Objects;

/**
 * Tuning of touch detection: averaging, the slopes that detect a touch going down and lifting off,
 * pressure thresholds, gain, error correction, and the scale and offset of the touch coordinates.
 * Units and valid ranges are the pad firmware's.
 */
public final class TouchParameters {
    private int adcAverage;
    private int coordinateAverage;
    private short slopeDown;
    private short slopeLiftoff;
    private int slopeMinimum;
    private int pressureSingle;
    private int pressureMultiple;
    private int gain;
    private boolean errorCorrectionEnabled;
    private int reserved;
    private int scaleX;
    private short offsetX;
    private int scaleY;
    private short offsetY;

    /** Makes touch parameters with every option off and every value 0. */
    public TouchParameters() {}

    /**
     * Makes touch parameters.
     *
     * @param adcAverage the averaging of converter samples (0 to 255)
     * @param coordinateAverage the averaging of coordinates (0 to 255)
     * @param slopeDown the slope that detects a touch going down
     * @param slopeLiftoff the slope that detects a touch lifting off
     * @param slopeMinimum the smallest slope taken into account (0 to 255)
     * @param pressureSingle the pressure threshold for one contact (0 to 65535)
     * @param pressureMultiple the pressure threshold for several contacts (0 to 65535)
     * @param gain the gain (0 to 255)
     * @param errorCorrectionEnabled whether the pad applies its error-correction table
     * @param reserved seven reserved bits (0 to 127), passed through
     * @param scaleX the scale of x coordinates (0 to 65535)
     * @param offsetX the offset of x coordinates
     * @param scaleY the scale of y coordinates (0 to 65535)
     * @param offsetY the offset of y coordinates
     */
    public TouchParameters(
            int adcAverage,
            int coordinateAverage,
            short slopeDown,
            short slopeLiftoff,
            int slopeMinimum,
            int pressureSingle,
            int pressureMultiple,
            int gain,
            boolean errorCorrectionEnabled,
            int reserved,
            int scaleX,
            short offsetX,
            int scaleY,
            short offsetY) {
        this.adcAverage = adcAverage;
        this.coordinateAverage = coordinateAverage;
        this.slopeDown = slopeDown;
        this.slopeLiftoff = slopeLiftoff;
        this.slopeMinimum = slopeMinimum;
        this.pressureSingle = pressureSingle;
        this.pressureMultiple = pressureMultiple;
        this.gain = gain;
        this.errorCorrectionEnabled = errorCorrectionEnabled;
        this.reserved = reserved;
        this.scaleX = scaleX;
        this.offsetX = offsetX;
        this.scaleY = scaleY;
        this.offsetY = offsetY;
    }

    /** The averaging of converter samples (0 to 255). */
    public int getAdcAverage() {
        return adcAverage;
    }

    /** Changes {@link #getAdcAverage()}. */
    public void setAdcAverage(int adcAverage) {
        this.adcAverage = adcAverage;
    }

    /** The averaging of coordinates (0 to 255). */
    public int getCoordinateAverage() {
        return coordinateAverage;
    }

    /** Changes {@link #getCoordinateAverage()}. */
    public void setCoordinateAverage(int coordinateAverage) {
        this.coordinateAverage = coordinateAverage;
    }

    /** The slope that detects a touch going down. */
    public short getSlopeDown() {
        return slopeDown;
    }

    /** Changes {@link #getSlopeDown()}. */
    public void setSlopeDown(short slopeDown) {
        this.slopeDown = slopeDown;
    }

    /** The slope that detects a touch lifting off. */
    public short getSlopeLiftoff() {
        return slopeLiftoff;
    }

    /** Changes {@link #getSlopeLiftoff()}. */
    public void setSlopeLiftoff(short slopeLiftoff) {
        this.slopeLiftoff = slopeLiftoff;
    }

    /** The smallest slope taken into account (0 to 255). */
    public int getSlopeMinimum() {
        return slopeMinimum;
    }

    /** Changes {@link #getSlopeMinimum()}. */
    public void setSlopeMinimum(int slopeMinimum) {
        this.slopeMinimum = slopeMinimum;
    }

    /** The pressure threshold for one contact (0 to 65535). */
    public int getPressureSingle() {
        return pressureSingle;
    }

    /** Changes {@link #getPressureSingle()}. */
    public void setPressureSingle(int pressureSingle) {
        this.pressureSingle = pressureSingle;
    }

    /** The pressure threshold for several contacts (0 to 65535). */
    public int getPressureMultiple() {
        return pressureMultiple;
    }

    /** Changes {@link #getPressureMultiple()}. */
    public void setPressureMultiple(int pressureMultiple) {
        this.pressureMultiple = pressureMultiple;
    }

    /** The gain (0 to 255). */
    public int getGain() {
        return gain;
    }

    /** Changes {@link #getGain()}. */
    public void setGain(int gain) {
        this.gain = gain;
    }

    /** Whether the pad applies its error-correction table. */
    public boolean isErrorCorrectionEnabled() {
        return errorCorrectionEnabled;
    }

    /** Changes {@link #isErrorCorrectionEnabled()}. */
    public void setErrorCorrectionEnabled(boolean errorCorrectionEnabled) {
        this.errorCorrectionEnabled = errorCorrectionEnabled;
    }

    /** Seven reserved bits (0 to 127), passed through. */
    public int getReserved() {
        return reserved;
    }

    /** Changes {@link #getReserved()}. */
    public void setReserved(int reserved) {
        this.reserved = reserved;
    }

    /** The scale of x coordinates (0 to 65535). */
    public int getScaleX() {
        return scaleX;
    }

    /** Changes {@link #getScaleX()}. */
    public void setScaleX(int scaleX) {
        this.scaleX = scaleX;
    }

    /** The offset of x coordinates. */
    public short getOffsetX() {
        return offsetX;
    }

    /** Changes {@link #getOffsetX()}. */
    public void setOffsetX(short offsetX) {
        this.offsetX = offsetX;
    }

    /** The scale of y coordinates (0 to 65535). */
    public int getScaleY() {
        return scaleY;
    }

    /** Changes {@link #getScaleY()}. */
    public void setScaleY(int scaleY) {
        this.scaleY = scaleY;
    }

    /** The offset of y coordinates. */
    public short getOffsetY() {
        return offsetY;
    }

    /** Changes {@link #getOffsetY()}. */
    public void setOffsetY(short offsetY) {
        this.offsetY = offsetY;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        TouchParameters that = (TouchParameters) o;
        return adcAverage == that.adcAverage
                && coordinateAverage == that.coordinateAverage
                && slopeDown == that.slopeDown
                && slopeLiftoff == that.slopeLiftoff
                && slopeMinimum == that.slopeMinimum
                && pressureSingle == that.pressureSingle
                && pressureMultiple == that.pressureMultiple
                && gain == that.gain
                && errorCorrectionEnabled == that.errorCorrectionEnabled
                && reserved == that.reserved
                && scaleX == that.scaleX
                && offsetX == that.offsetX
                && scaleY == that.scaleY
                && offsetY == that.offsetY;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                adcAverage, coordinateAverage, slopeDown, slopeLiftoff, slopeMinimum,
                pressureSingle, pressureMultiple, gain, errorCorrectionEnabled, reserved, scaleX,
                offsetX, scaleY, offsetY);
    }

    @Override
    public String toString() {
        return "TouchParameters{adcAverage=" + adcAverage
                + ", coordinateAverage=" + coordinateAverage
                + ", slopeDown=" + slopeDown
                + ", slopeLiftoff=" + slopeLiftoff
                + ", slopeMinimum=" + slopeMinimum
                + ", pressureSingle=" + pressureSingle
                + ", pressureMultiple=" + pressureMultiple
                + ", gain=" + gain
                + ", errorCorrectionEnabled=" + errorCorrectionEnabled
                + ", reserved=" + reserved
                + ", scaleX=" + scaleX
                + ", offsetX=" + offsetX
                + ", scaleY=" + scaleY
                + ", offsetY=" + offsetY
                + "}";
    }
}
