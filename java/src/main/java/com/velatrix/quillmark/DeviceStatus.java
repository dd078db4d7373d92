package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The pad's live status: whether it is starting up, idle or calibrating, its busy flags, and the
 * last error text it holds. While a busy flag is set the pad is still working on an earlier
 * request; the library waits for the flags it needs before it sends.
 */
public final class DeviceStatus {
    private boolean initializing;
    private boolean idle;
    private boolean calibrationRequired;
    private boolean calibrating;
    private boolean interlock0;
    private boolean interlock1;
    private boolean interlock2;
    private boolean interlock3;
    private boolean interlock4;
    private boolean interlock5;
    private int reserved1;
    private int reserved2;
    private int reserved3;
    private String errorInfo;

    /**
     * Makes a status record.
     *
     * @param initializing whether the pad is starting up
     * @param idle whether the pad is idle (in run mode 0)
     * @param calibrationRequired whether the pad needs to be calibrated
     * @param calibrating whether a calibration is running
     * @param interlock0 busy flag 0
     * @param interlock1 busy flag 1
     * @param interlock2 busy flag 2
     * @param interlock3 busy flag 3
     * @param interlock4 busy flag 4
     * @param interlock5 busy flag 5
     * @param reserved1 a reserved byte, as the pad sent it
     * @param reserved2 a reserved 16-bit word, as the pad sent it
     * @param reserved3 a second reserved 16-bit word, as the pad sent it
     * @param errorInfo the last error text the pad holds, empty when there is none
     */
    public DeviceStatus(
            boolean initializing,
            boolean idle,
            boolean calibrationRequired,
            boolean calibrating,
            boolean interlock0,
            boolean interlock1,
            boolean interlock2,
            boolean interlock3,
            boolean interlock4,
            boolean interlock5,
            int reserved1,
            int reserved2,
            int reserved3,
            String errorInfo) {
        this.initializing = initializing;
        this.idle = idle;
        this.calibrationRequired = calibrationRequired;
        this.calibrating = calibrating;
        this.interlock0 = interlock0;
        this.interlock1 = interlock1;
        this.interlock2 = interlock2;
        this.interlock3 = interlock3;
        this.interlock4 = interlock4;
        this.interlock5 = interlock5;
        this.reserved1 = reserved1;
        this.reserved2 = reserved2;
        this.reserved3 = reserved3;
        this.errorInfo = errorInfo;
    }

    /** Whether the pad is starting up. */
    public boolean isInitializing() {
        return initializing;
    }

    /** Changes {@link #isInitializing()}. */
    public void setInitializing(boolean initializing) {
        this.initializing = initializing;
    }

    /** Whether the pad is idle (in run mode 0). */
    public boolean isIdle() {
        return idle;
    }

    /** Changes {@link #isIdle()}. */
    public void setIdle(boolean idle) {
        this.idle = idle;
    }

    /** Whether the pad needs to be calibrated. */
    public boolean isCalibrationRequired() {
        return calibrationRequired;
    }

    /** Changes {@link #isCalibrationRequired()}. */
    public void setCalibrationRequired(boolean calibrationRequired) {
        this.calibrationRequired = calibrationRequired;
    }

    /** Whether a calibration is running. */
    public boolean isCalibrating() {
        return calibrating;
    }

    /** Changes {@link #isCalibrating()}. */
    public void setCalibrating(boolean calibrating) {
        this.calibrating = calibrating;
    }

    /** Busy flag 0. */
    public boolean isInterlock0() {
        return interlock0;
    }

    /** Changes {@link #isInterlock0()}. */
    public void setInterlock0(boolean interlock0) {
        this.interlock0 = interlock0;
    }

    /** Busy flag 1. */
    public boolean isInterlock1() {
        return interlock1;
    }

    /** Changes {@link #isInterlock1()}. */
    public void setInterlock1(boolean interlock1) {
        this.interlock1 = interlock1;
    }

    /** Busy flag 2. */
    public boolean isInterlock2() {
        return interlock2;
    }

    /** Changes {@link #isInterlock2()}. */
    public void setInterlock2(boolean interlock2) {
        this.interlock2 = interlock2;
    }

    /** Busy flag 3. */
    public boolean isInterlock3() {
        return interlock3;
    }

    /** Changes {@link #isInterlock3()}. */
    public void setInterlock3(boolean interlock3) {
        this.interlock3 = interlock3;
    }

    /** Busy flag 4. */
    public boolean isInterlock4() {
        return interlock4;
    }

    /** Changes {@link #isInterlock4()}. */
    public void setInterlock4(boolean interlock4) {
        this.interlock4 = interlock4;
    }

    /** Busy flag 5. */
    public boolean isInterlock5() {
        return interlock5;
    }

    /** Changes {@link #isInterlock5()}. */
    public void setInterlock5(boolean interlock5) {
        this.interlock5 = interlock5;
    }

    /** A reserved byte, as the pad sent it. */
    public int getReserved1() {
        return reserved1;
    }

    /** Changes {@link #getReserved1()}. */
    public void setReserved1(int reserved1) {
        this.reserved1 = reserved1;
    }

    /** A reserved 16-bit word, as the pad sent it. */
    public int getReserved2() {
        return reserved2;
    }

    /** Changes {@link #getReserved2()}. */
    public void setReserved2(int reserved2) {
        this.reserved2 = reserved2;
    }

    /** A second reserved 16-bit word, as the pad sent it. */
    public int getReserved3() {
        return reserved3;
    }

    /** Changes {@link #getReserved3()}. */
    public void setReserved3(int reserved3) {
        this.reserved3 = reserved3;
    }

    /** The last error text the pad holds, empty when there is none. */
    public String getErrorInfo() {
        return errorInfo;
    }

    /** Changes {@link #getErrorInfo()}. */
    public void setErrorInfo(String errorInfo) {
        this.errorInfo = errorInfo;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        DeviceStatus that = (DeviceStatus) o;
        return initializing == that.initializing
                && idle == that.idle
                && calibrationRequired == that.calibrationRequired
                && calibrating == that.calibrating
                && interlock0 == that.interlock0
                && interlock1 == that.interlock1
                && interlock2 == that.interlock2
                && interlock3 == that.interlock3
                && interlock4 == that.interlock4
                && interlock5 == that.interlock5
                && reserved1 == that.reserved1
                && reserved2 == that.reserved2
                && reserved3 == that.reserved3
                && Objects.equals(errorInfo, that.errorInfo);
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                initializing, idle, calibrationRequired, calibrating, interlock0, interlock1,
                interlock2, interlock3, interlock4, interlock5, reserved1, reserved2, reserved3,
                errorInfo);
    }

    @Override
    public String toString() {
        return "DeviceStatus{initializing=" + initializing
                + ", idle=" + idle
                + ", calibrationRequired=" + calibrationRequired
                + ", calibrating=" + calibrating
                + ", interlock0=" + interlock0
                + ", interlock1=" + interlock1
                + ", interlock2=" + interlock2
                + ", interlock3=" + interlock3
                + ", interlock4=" + interlock4
                + ", interlock5=" + interlock5
                + ", reserved1=" + reserved1
                + ", reserved2=" + reserved2
                + ", reserved3=" + reserved3
                + ", errorInfo=" + quote(errorInfo)
                + "}";
    }

    private static String quote(String text) {
        return text == null ? "null" : '"' + text + '"';
    }
}
