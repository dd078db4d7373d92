package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The digitizer's general acquisition options: which outputs it produces, whether coordinates are
 * mapped, the channel lock, the corner settings, the sample count and the filter. Units and valid
 * ranges are the pad firmware's. The small fields share bytes when sent and are not masked, so a
 * value wider than its field spills into the next one.
 */
public final class GeneralParameters {
    private boolean xyOutputEnabled;
    private boolean adcOutputEnabled;
    private boolean mapCoordinates;
    private boolean channelLockEnable;
    private int channelLockNumber;
    private int reserved;
    private int cornerLowerLeft;
    private int cornerUpperLeft;
    private int cornerLowerRight;
    private int cornerUpperRight;
    private int samples;
    private int filterFrequency;

    /** Makes general parameters with every option off and every value 0. */
    public GeneralParameters() {}

    /**
     * Makes general parameters.
     *
     * @param xyOutputEnabled whether the digitizer reports coordinates
     * @param adcOutputEnabled whether the digitizer reports raw converter values
     * @param mapCoordinates whether coordinates are mapped before they are reported
     * @param channelLockEnable whether the digitizer is locked to one channel
     * @param channelLockNumber the channel the digitizer is locked to (0 to 7)
     * @param reserved a reserved bit (0 or 1), passed through
     * @param cornerLowerLeft the setting for the lower left corner (0 to 3)
     * @param cornerUpperLeft the setting for the upper left corner (0 to 3)
     * @param cornerLowerRight the setting for the lower right corner (0 to 3)
     * @param cornerUpperRight the setting for the upper right corner (0 to 3)
     * @param samples the sample count (0 to 65535)
     * @param filterFrequency the filter frequency setting (0 to 255)
     */
    public GeneralParameters(
            boolean xyOutputEnabled,
            boolean adcOutputEnabled,
            boolean mapCoordinates,
            boolean channelLockEnable,
            int channelLockNumber,
            int reserved,
            int cornerLowerLeft,
            int cornerUpperLeft,
            int cornerLowerRight,
            int cornerUpperRight,
            int samples,
            int filterFrequency) {
        this.xyOutputEnabled = xyOutputEnabled;
        this.adcOutputEnabled = adcOutputEnabled;
        this.mapCoordinates = mapCoordinates;
        this.channelLockEnable = channelLockEnable;
        this.channelLockNumber = channelLockNumber;
        this.reserved = reserved;
        this.cornerLowerLeft = cornerLowerLeft;
        this.cornerUpperLeft = cornerUpperLeft;
        this.cornerLowerRight = cornerLowerRight;
        this.cornerUpperRight = cornerUpperRight;
        this.samples = samples;
        this.filterFrequency = filterFrequency;
    }

    /** Whether the digitizer reports coordinates. */
    public boolean isXyOutputEnabled() {
        return xyOutputEnabled;
    }

    /** Changes {@link #isXyOutputEnabled()}. */
    public void setXyOutputEnabled(boolean xyOutputEnabled) {
        this.xyOutputEnabled = xyOutputEnabled;
    }

    /** Whether the digitizer reports raw converter values. */
    public boolean isAdcOutputEnabled() {
        return adcOutputEnabled;
    }

    /** Changes {@link #isAdcOutputEnabled()}. */
    public void setAdcOutputEnabled(boolean adcOutputEnabled) {
        this.adcOutputEnabled = adcOutputEnabled;
    }

    /** Whether coordinates are mapped before they are reported. */
    public boolean isMapCoordinates() {
        return mapCoordinates;
    }

    /** Changes {@link #isMapCoordinates()}. */
    public void setMapCoordinates(boolean mapCoordinates) {
        this.mapCoordinates = mapCoordinates;
    }

    /** Whether the digitizer is locked to one channel. */
    public boolean isChannelLockEnable() {
        return channelLockEnable;
    }

    /** Changes {@link #isChannelLockEnable()}. */
    public void setChannelLockEnable(boolean channelLockEnable) {
        this.channelLockEnable = channelLockEnable;
    }

    /** The channel the digitizer is locked to (0 to 7). */
    public int getChannelLockNumber() {
        return channelLockNumber;
    }

    /** Changes {@link #getChannelLockNumber()}. */
    public void setChannelLockNumber(int channelLockNumber) {
        this.channelLockNumber = channelLockNumber;
    }

    /** A reserved bit (0 or 1), passed through. */
    public int getReserved() {
        return reserved;
    }

    /** Changes {@link #getReserved()}. */
    public void setReserved(int reserved) {
        this.reserved = reserved;
    }

    /** The setting for the lower left corner (0 to 3). */
    public int getCornerLowerLeft() {
        return cornerLowerLeft;
    }

    /** Changes {@link #getCornerLowerLeft()}. */
    public void setCornerLowerLeft(int cornerLowerLeft) {
        this.cornerLowerLeft = cornerLowerLeft;
    }

    /** The setting for the upper left corner (0 to 3). */
    public int getCornerUpperLeft() {
        return cornerUpperLeft;
    }

    /** Changes {@link #getCornerUpperLeft()}. */
    public void setCornerUpperLeft(int cornerUpperLeft) {
        this.cornerUpperLeft = cornerUpperLeft;
    }

    /** The setting for the lower right corner (0 to 3). */
    public int getCornerLowerRight() {
        return cornerLowerRight;
    }

    /** Changes {@link #getCornerLowerRight()}. */
    public void setCornerLowerRight(int cornerLowerRight) {
        this.cornerLowerRight = cornerLowerRight;
    }

    /** The setting for the upper right corner (0 to 3). */
    public int getCornerUpperRight() {
        return cornerUpperRight;
    }

    /** Changes {@link #getCornerUpperRight()}. */
    public void setCornerUpperRight(int cornerUpperRight) {
        this.cornerUpperRight = cornerUpperRight;
    }

    /** The sample count (0 to 65535). */
    public int getSamples() {
        return samples;
    }

    /** Changes {@link #getSamples()}. */
    public void setSamples(int samples) {
        this.samples = samples;
    }

    /** The filter frequency setting (0 to 255). */
    public int getFilterFrequency() {
        return filterFrequency;
    }

    /** Changes {@link #getFilterFrequency()}. */
    public void setFilterFrequency(int filterFrequency) {
        this.filterFrequency = filterFrequency;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        GeneralParameters that = (GeneralParameters) o;
        return xyOutputEnabled == that.xyOutputEnabled
                && adcOutputEnabled == that.adcOutputEnabled
                && mapCoordinates == that.mapCoordinates
                && channelLockEnable == that.channelLockEnable
                && channelLockNumber == that.channelLockNumber
                && reserved == that.reserved
                && cornerLowerLeft == that.cornerLowerLeft
                && cornerUpperLeft == that.cornerUpperLeft
                && cornerLowerRight == that.cornerLowerRight
                && cornerUpperRight == that.cornerUpperRight
                && samples == that.samples
                && filterFrequency == that.filterFrequency;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                xyOutputEnabled, adcOutputEnabled, mapCoordinates, channelLockEnable,
                channelLockNumber, reserved, cornerLowerLeft, cornerUpperLeft, cornerLowerRight,
                cornerUpperRight, samples, filterFrequency);
    }

    @Override
    public String toString() {
        return "GeneralParameters{xyOutputEnabled=" + xyOutputEnabled
                + ", adcOutputEnabled=" + adcOutputEnabled
                + ", mapCoordinates=" + mapCoordinates
                + ", channelLockEnable=" + channelLockEnable
                + ", channelLockNumber=" + channelLockNumber
                + ", reserved=" + reserved
                + ", cornerLowerLeft=" + cornerLowerLeft
                + ", cornerUpperLeft=" + cornerUpperLeft
                + ", cornerLowerRight=" + cornerLowerRight
                + ", cornerUpperRight=" + cornerUpperRight
                + ", samples=" + samples
                + ", filterFrequency=" + filterFrequency
                + "}";
    }
}
