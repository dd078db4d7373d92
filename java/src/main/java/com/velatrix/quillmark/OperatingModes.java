package com.velatrix.quillmark;

import java.util.Objects;

/**
 * Which acquisition modes the pad supports and which acquisition, touch and pen modes are active.
 * The mode codes are the pad firmware's and are passed on unchanged.
 */
public final class OperatingModes {
    private int supportedModes;
    private int reserved;
    private int acquisitionMode;
    private int touchMode;
    private int penMode;

    /**
     * Makes an operating-modes record.
     *
     * @param supportedModes the modes the pad supports, as the firmware codes them
     * @param reserved a reserved byte, always 0
     * @param acquisitionMode the active acquisition mode
     * @param touchMode the active touch mode
     * @param penMode the active pen mode
     */
    public OperatingModes(
            int supportedModes,
            int reserved,
            int acquisitionMode,
            int touchMode,
            int penMode) {
        this.supportedModes = supportedModes;
        this.reserved = reserved;
        this.acquisitionMode = acquisitionMode;
        this.touchMode = touchMode;
        this.penMode = penMode;
    }

    /** The modes the pad supports, as the firmware codes them. */
    public int getSupportedModes() {
        return supportedModes;
    }

    /** Changes {@link #getSupportedModes()}. */
    public void setSupportedModes(int supportedModes) {
        this.supportedModes = supportedModes;
    }

    /** A reserved byte, always 0. */
    public int getReserved() {
        return reserved;
    }

    /** Changes {@link #getReserved()}. */
    public void setReserved(int reserved) {
        this.reserved = reserved;
    }

    /** The active acquisition mode. */
    public int getAcquisitionMode() {
        return acquisitionMode;
    }

    /** Changes {@link #getAcquisitionMode()}. */
    public void setAcquisitionMode(int acquisitionMode) {
        this.acquisitionMode = acquisitionMode;
    }

    /** The active touch mode. */
    public int getTouchMode() {
        return touchMode;
    }

    /** Changes {@link #getTouchMode()}. */
    public void setTouchMode(int touchMode) {
        this.touchMode = touchMode;
    }

    /** The active pen mode. */
    public int getPenMode() {
        return penMode;
    }

    /** Changes {@link #getPenMode()}. */
    public void setPenMode(int penMode) {
        this.penMode = penMode;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        OperatingModes that = (OperatingModes) o;
        return supportedModes == that.supportedModes
                && reserved == that.reserved
                && acquisitionMode == that.acquisitionMode
                && touchMode == that.touchMode
                && penMode == that.penMode;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                supportedModes, reserved, acquisitionMode, touchMode, penMode);
    }

    @Override
    public String toString() {
        return "OperatingModes{supportedModes=" + supportedModes
                + ", reserved=" + reserved
                + ", acquisitionMode=" + acquisitionMode
                + ", touchMode=" + touchMode
                + ", penMode=" + penMode
                + "}";
    }
}
