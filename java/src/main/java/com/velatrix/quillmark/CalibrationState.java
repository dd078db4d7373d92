package com.velatrix.quillmark;

import java.util.Objects;

/**
 * Where a calibration stands: whether the pad is calibrating and which calibration point it is
 * waiting for.
 */
public final class CalibrationState {
    private boolean calibrationMode;
    private int point;

    /**
     * Makes a calibration state.
     *
     * @param calibrationMode whether the pad is in calibration mode
     * @param point the calibration point the pad is waiting for
     */
    public CalibrationState(boolean calibrationMode, int point) {
        this.calibrationMode = calibrationMode;
        this.point = point;
    }

    /** Whether the pad is in calibration mode. */
    public boolean isCalibrationMode() {
        return calibrationMode;
    }

    /** Changes {@link #isCalibrationMode()}. */
    public void setCalibrationMode(boolean calibrationMode) {
        this.calibrationMode = calibrationMode;
    }

    /** The calibration point the pad is waiting for. */
    public int getPoint() {
        return point;
    }

    /** Changes {@link #getPoint()}. */
    public void setPoint(int point) {
        this.point = point;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        CalibrationState that = (CalibrationState) o;
        return calibrationMode == that.calibrationMode
                && point == that.point;
    }

    @Override
    public int hashCode() {
        return Objects.hash(calibrationMode, point);
    }

    @Override
    public String toString() {
        return "CalibrationState{calibrationMode=" + calibrationMode
                + ", point=" + point
                + "}";
    }
}
