package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The pad's calibration: how raw digitizer readings are rotated, scaled and shifted into the
 * coordinates the pad uses itself (local) and those it sends to the host. The scaled values are
 * fixed-point numbers whose scale is given by the matching scale field. The first seven numbers are
 * sent as 16 bits, the last eight as 32 bits.
 */
public final class CalibrationData {
    private short calibrationType;
    private boolean isCalibrated;
    private int rotationScale;
    private int localMultiplierScale;
    private int hostMultiplierScale;
    private int rotationSINScaled;
    private int rotationCOSScaled;
    private int localWidthCalibrated;
    private int localHeightCalibrated;
    private int localXMultiplierScaled;
    private int localXOffset;
    private int localYMultiplierScaled;
    private int localYOffset;
    private int hostXMultiplierScaled;
    private int hostXOffset;
    private int hostYMultiplierScaled;
    private int hostYOffset;

    /** Makes calibration data with every value 0, marked as not calibrated. */
    public CalibrationData() {}

    /**
     * Makes calibration data.
     *
     * @param calibrationType the kind of calibration, as the firmware codes it (0 to 255)
     * @param isCalibrated whether the data hold a valid calibration
     * @param rotationScale the scale of the rotation values
     * @param localMultiplierScale the scale of the local multipliers
     * @param hostMultiplierScale the scale of the host multipliers
     * @param rotationSINScaled the sine of the rotation, scaled
     * @param rotationCOSScaled the cosine of the rotation, scaled
     * @param localWidthCalibrated the calibrated width in local coordinates
     * @param localHeightCalibrated the calibrated height in local coordinates
     * @param localXMultiplierScaled the x multiplier for local coordinates, scaled
     * @param localXOffset the x offset for local coordinates
     * @param localYMultiplierScaled the y multiplier for local coordinates, scaled
     * @param localYOffset the y offset for local coordinates
     * @param hostXMultiplierScaled the x multiplier for host coordinates, scaled
     * @param hostXOffset the x offset for host coordinates
     * @param hostYMultiplierScaled the y multiplier for host coordinates, scaled
     * @param hostYOffset the y offset for host coordinates
     */
    public CalibrationData(
            short calibrationType,
            boolean isCalibrated,
            int rotationScale,
            int localMultiplierScale,
            int hostMultiplierScale,
            int rotationSINScaled,
            int rotationCOSScaled,
            int localWidthCalibrated,
            int localHeightCalibrated,
            int localXMultiplierScaled,
            int localXOffset,
            int localYMultiplierScaled,
            int localYOffset,
            int hostXMultiplierScaled,
            int hostXOffset,
            int hostYMultiplierScaled,
            int hostYOffset) {
        this.calibrationType = calibrationType;
        this.isCalibrated = isCalibrated;
        this.rotationScale = rotationScale;
        this.localMultiplierScale = localMultiplierScale;
        this.hostMultiplierScale = hostMultiplierScale;
        this.rotationSINScaled = rotationSINScaled;
        this.rotationCOSScaled = rotationCOSScaled;
        this.localWidthCalibrated = localWidthCalibrated;
        this.localHeightCalibrated = localHeightCalibrated;
        this.localXMultiplierScaled = localXMultiplierScaled;
        this.localXOffset = localXOffset;
        this.localYMultiplierScaled = localYMultiplierScaled;
        this.localYOffset = localYOffset;
        this.hostXMultiplierScaled = hostXMultiplierScaled;
        this.hostXOffset = hostXOffset;
        this.hostYMultiplierScaled = hostYMultiplierScaled;
        this.hostYOffset = hostYOffset;
    }

    /** The kind of calibration, as the firmware codes it (0 to 255). */
    public short getCalibrationType() {
        return calibrationType;
    }

    /** Changes {@link #getCalibrationType()}. */
    public void setCalibrationType(short calibrationType) {
        this.calibrationType = calibrationType;
    }

    /** Whether the data hold a valid calibration. */
    public boolean isCalibrated() {
        return isCalibrated;
    }

    /** Changes {@link #isCalibrated()}. */
    public void setCalibrated(boolean isCalibrated) {
        this.isCalibrated = isCalibrated;
    }

    /** The scale of the rotation values. */
    public int getRotationScale() {
        return rotationScale;
    }

    /** Changes {@link #getRotationScale()}. */
    public void setRotationScale(int rotationScale) {
        this.rotationScale = rotationScale;
    }

    /** The scale of the local multipliers. */
    public int getLocalMultiplierScale() {
        return localMultiplierScale;
    }

    /** Changes {@link #getLocalMultiplierScale()}. */
    public void setLocalMultiplierScale(int localMultiplierScale) {
        this.localMultiplierScale = localMultiplierScale;
    }

    /** The scale of the host multipliers. */
    public int getHostMultiplierScale() {
        return hostMultiplierScale;
    }

    /** Changes {@link #getHostMultiplierScale()}. */
    public void setHostMultiplierScale(int hostMultiplierScale) {
        this.hostMultiplierScale = hostMultiplierScale;
    }

    /** The sine of the rotation, scaled. */
    public int getRotationSINScaled() {
        return rotationSINScaled;
    }

    /** Changes {@link #getRotationSINScaled()}. */
    public void setRotationSINScaled(int rotationSINScaled) {
        this.rotationSINScaled = rotationSINScaled;
    }

    /** The cosine of the rotation, scaled. */
    public int getRotationCOSScaled() {
        return rotationCOSScaled;
    }

    /** Changes {@link #getRotationCOSScaled()}. */
    public void setRotationCOSScaled(int rotationCOSScaled) {
        this.rotationCOSScaled = rotationCOSScaled;
    }

    /** The calibrated width in local coordinates. */
    public int getLocalWidthCalibrated() {
        return localWidthCalibrated;
    }

    /** Changes {@link #getLocalWidthCalibrated()}. */
    public void setLocalWidthCalibrated(int localWidthCalibrated) {
        this.localWidthCalibrated = localWidthCalibrated;
    }

    /** The calibrated height in local coordinates. */
    public int getLocalHeightCalibrated() {
        return localHeightCalibrated;
    }

    /** Changes {@link #getLocalHeightCalibrated()}. */
    public void setLocalHeightCalibrated(int localHeightCalibrated) {
        this.localHeightCalibrated = localHeightCalibrated;
    }

    /** The x multiplier for local coordinates, scaled. */
    public int getLocalXMultiplierScaled() {
        return localXMultiplierScaled;
    }

    /** Changes {@link #getLocalXMultiplierScaled()}. */
    public void setLocalXMultiplierScaled(int localXMultiplierScaled) {
        this.localXMultiplierScaled = localXMultiplierScaled;
    }

    /** The x offset for local coordinates. */
    public int getLocalXOffset() {
        return localXOffset;
    }

    /** Changes {@link #getLocalXOffset()}. */
    public void setLocalXOffset(int localXOffset) {
        this.localXOffset = localXOffset;
    }

    /** The y multiplier for local coordinates, scaled. */
    public int getLocalYMultiplierScaled() {
        return localYMultiplierScaled;
    }

    /** Changes {@link #getLocalYMultiplierScaled()}. */
    public void setLocalYMultiplierScaled(int localYMultiplierScaled) {
        this.localYMultiplierScaled = localYMultiplierScaled;
    }

    /** The y offset for local coordinates. */
    public int getLocalYOffset() {
        return localYOffset;
    }

    /** Changes {@link #getLocalYOffset()}. */
    public void setLocalYOffset(int localYOffset) {
        this.localYOffset = localYOffset;
    }

    /** The x multiplier for host coordinates, scaled. */
    public int getHostXMultiplierScaled() {
        return hostXMultiplierScaled;
    }

    /** Changes {@link #getHostXMultiplierScaled()}. */
    public void setHostXMultiplierScaled(int hostXMultiplierScaled) {
        this.hostXMultiplierScaled = hostXMultiplierScaled;
    }

    /** The x offset for host coordinates. */
    public int getHostXOffset() {
        return hostXOffset;
    }

    /** Changes {@link #getHostXOffset()}. */
    public void setHostXOffset(int hostXOffset) {
        this.hostXOffset = hostXOffset;
    }

    /** The y multiplier for host coordinates, scaled. */
    public int getHostYMultiplierScaled() {
        return hostYMultiplierScaled;
    }

    /** Changes {@link #getHostYMultiplierScaled()}. */
    public void setHostYMultiplierScaled(int hostYMultiplierScaled) {
        this.hostYMultiplierScaled = hostYMultiplierScaled;
    }

    /** The y offset for host coordinates. */
    public int getHostYOffset() {
        return hostYOffset;
    }

    /** Changes {@link #getHostYOffset()}. */
    public void setHostYOffset(int hostYOffset) {
        this.hostYOffset = hostYOffset;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        CalibrationData that = (CalibrationData) o;
        return calibrationType == that.calibrationType
                && isCalibrated == that.isCalibrated
                && rotationScale == that.rotationScale
                && localMultiplierScale == that.localMultiplierScale
                && hostMultiplierScale == that.hostMultiplierScale
                && rotationSINScaled == that.rotationSINScaled
                && rotationCOSScaled == that.rotationCOSScaled
                && localWidthCalibrated == that.localWidthCalibrated
                && localHeightCalibrated == that.localHeightCalibrated
                && localXMultiplierScaled == that.localXMultiplierScaled
                && localXOffset == that.localXOffset
                && localYMultiplierScaled == that.localYMultiplierScaled
                && localYOffset == that.localYOffset
                && hostXMultiplierScaled == that.hostXMultiplierScaled
                && hostXOffset == that.hostXOffset
                && hostYMultiplierScaled == that.hostYMultiplierScaled
                && hostYOffset == that.hostYOffset;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                calibrationType, isCalibrated, rotationScale, localMultiplierScale,
                hostMultiplierScale, rotationSINScaled, rotationCOSScaled, localWidthCalibrated,
                localHeightCalibrated, localXMultiplierScaled, localXOffset, localYMultiplierScaled,
                localYOffset, hostXMultiplierScaled, hostXOffset, hostYMultiplierScaled,
                hostYOffset);
    }

    @Override
    public String toString() {
        return "CalibrationData{calibrationType=" + calibrationType
                + ", isCalibrated=" + isCalibrated
                + ", rotationScale=" + rotationScale
                + ", localMultiplierScale=" + localMultiplierScale
                + ", hostMultiplierScale=" + hostMultiplierScale
                + ", rotationSINScaled=" + rotationSINScaled
                + ", rotationCOSScaled=" + rotationCOSScaled
                + ", localWidthCalibrated=" + localWidthCalibrated
                + ", localHeightCalibrated=" + localHeightCalibrated
                + ", localXMultiplierScaled=" + localXMultiplierScaled
                + ", localXOffset=" + localXOffset
                + ", localYMultiplierScaled=" + localYMultiplierScaled
                + ", localYOffset=" + localYOffset
                + ", hostXMultiplierScaled=" + hostXMultiplierScaled
                + ", hostXOffset=" + hostXOffset
                + ", hostYMultiplierScaled=" + hostYMultiplierScaled
                + ", hostYOffset=" + hostYOffset
                + "}";
    }
}
