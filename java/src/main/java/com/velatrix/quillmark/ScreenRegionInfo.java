package com.velatrix.quillmark;

import java.util.Arrays;
import java.util.Objects;

/**
 * What the pad reports about its screens and device regions, value by value as it sent them. Only
 * the count of device regions has a settled meaning.
 */
public final class ScreenRegionInfo {
    private int value0;
    private int deviceRegionCount;
    private int value2;
    private int value3;
    private int value4;
    private int value5;
    private int value6;
    private int value7;
    private int[] remaining;

    /**
     * Makes screen and region information.
     *
     * @param value0 the first byte of the report
     * @param deviceRegionCount the number of device regions on the pad
     * @param value2 the third byte of the report
     * @param value3 the fourth byte of the report
     * @param value4 the fifth byte of the report
     * @param value5 the sixth byte of the report
     * @param value6 the seventh byte of the report
     * @param value7 the eighth byte of the report
     * @param remaining the sixteen bytes that follow, one entry each; the array itself, not a copy
     */
    public ScreenRegionInfo(
            int value0,
            int deviceRegionCount,
            int value2,
            int value3,
            int value4,
            int value5,
            int value6,
            int value7,
            int[] remaining) {
        this.value0 = value0;
        this.deviceRegionCount = deviceRegionCount;
        this.value2 = value2;
        this.value3 = value3;
        this.value4 = value4;
        this.value5 = value5;
        this.value6 = value6;
        this.value7 = value7;
        this.remaining = remaining;
    }

    /** The first byte of the report. */
    public int getValue0() {
        return value0;
    }

    /** Changes {@link #getValue0()}. */
    public void setValue0(int value0) {
        this.value0 = value0;
    }

    /** The number of device regions on the pad. */
    public int getDeviceRegionCount() {
        return deviceRegionCount;
    }

    /** Changes {@link #getDeviceRegionCount()}. */
    public void setDeviceRegionCount(int deviceRegionCount) {
        this.deviceRegionCount = deviceRegionCount;
    }

    /** The third byte of the report. */
    public int getValue2() {
        return value2;
    }

    /** Changes {@link #getValue2()}. */
    public void setValue2(int value2) {
        this.value2 = value2;
    }

    /** The fourth byte of the report. */
    public int getValue3() {
        return value3;
    }

    /** Changes {@link #getValue3()}. */
    public void setValue3(int value3) {
        this.value3 = value3;
    }

    /** The fifth byte of the report. */
    public int getValue4() {
        return value4;
    }

    /** Changes {@link #getValue4()}. */
    public void setValue4(int value4) {
        this.value4 = value4;
    }

    /** The sixth byte of the report. */
    public int getValue5() {
        return value5;
    }

    /** Changes {@link #getValue5()}. */
    public void setValue5(int value5) {
        this.value5 = value5;
    }

    /** The seventh byte of the report. */
    public int getValue6() {
        return value6;
    }

    /** Changes {@link #getValue6()}. */
    public void setValue6(int value6) {
        this.value6 = value6;
    }

    /** The eighth byte of the report. */
    public int getValue7() {
        return value7;
    }

    /** Changes {@link #getValue7()}. */
    public void setValue7(int value7) {
        this.value7 = value7;
    }

    /** The sixteen bytes that follow, one entry each; the array itself, not a copy. */
    public int[] getRemaining() {
        return remaining;
    }

    /** Changes {@link #getRemaining()}. */
    public void setRemaining(int[] remaining) {
        this.remaining = remaining;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        ScreenRegionInfo that = (ScreenRegionInfo) o;
        return value0 == that.value0
                && deviceRegionCount == that.deviceRegionCount
                && value2 == that.value2
                && value3 == that.value3
                && value4 == that.value4
                && value5 == that.value5
                && value6 == that.value6
                && value7 == that.value7
                && Arrays.equals(remaining, that.remaining);
    }

    @Override
    public int hashCode() {
        int result = Objects.hash(
                value0, deviceRegionCount, value2, value3, value4, value5, value6, value7);
        result = 31 * result + Arrays.hashCode(remaining);
        return result;
    }

    @Override
    public String toString() {
        return "ScreenRegionInfo{value0=" + value0
                + ", deviceRegionCount=" + deviceRegionCount
                + ", value2=" + value2
                + ", value3=" + value3
                + ", value4=" + value4
                + ", value5=" + value5
                + ", value6=" + value6
                + ", value7=" + value7
                + ", remaining=" + Arrays.toString(remaining)
                + "}";
    }
}
