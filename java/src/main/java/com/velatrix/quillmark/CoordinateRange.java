package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The range of coordinates the digitizer reports: every pen or touch position lies between the
 * smallest and the largest x and y given here.
 */
public final class CoordinateRange {
    private int xMin;
    private int xMax;
    private int yMin;
    private int yMax;

    /**
     * Makes a coordinate range.
     *
     * @param xMin the smallest x coordinate the digitizer reports
     * @param xMax the largest x coordinate the digitizer reports
     * @param yMin the smallest y coordinate the digitizer reports
     * @param yMax the largest y coordinate the digitizer reports
     */
    public CoordinateRange(int xMin, int xMax, int yMin, int yMax) {
        this.xMin = xMin;
        this.xMax = xMax;
        this.yMin = yMin;
        this.yMax = yMax;
    }

    /** The smallest x coordinate the digitizer reports. */
    public int getXMin() {
        return xMin;
    }

    /** Changes {@link #getXMin()}. */
    public void setXMin(int xMin) {
        this.xMin = xMin;
    }

    /** The largest x coordinate the digitizer reports. */
    public int getXMax() {
        return xMax;
    }

    /** Changes {@link #getXMax()}. */
    public void setXMax(int xMax) {
        this.xMax = xMax;
    }

    /** The smallest y coordinate the digitizer reports. */
    public int getYMin() {
        return yMin;
    }

    /** Changes {@link #getYMin()}. */
    public void setYMin(int yMin) {
        this.yMin = yMin;
    }

    /** The largest y coordinate the digitizer reports. */
    public int getYMax() {
        return yMax;
    }

    /** Changes {@link #getYMax()}. */
    public void setYMax(int yMax) {
        this.yMax = yMax;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        CoordinateRange that = (CoordinateRange) o;
        return xMin == that.xMin
                && xMax == that.xMax
                && yMin == that.yMin
                && yMax == that.yMax;
    }

    @Override
    public int hashCode() {
        return Objects.hash(xMin, xMax, yMin, yMax);
    }

    @Override
    public String toString() {
        return "CoordinateRange{xMin=" + xMin
                + ", xMax=" + xMax
                + ", yMin=" + yMin
                + ", yMax=" + yMax
                + "}";
    }
}
