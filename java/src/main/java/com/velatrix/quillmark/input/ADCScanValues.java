package com.velatrix.quillmark.input;

import java.util.Objects;

/**
 * A diagnostic scan of the digitizer's converters: two flags and four raw values. Within each pair
 * the values arrive swapped against the pad's report: value 1 is the report's second value, value 2
 * its first, value 3 its fourth and value 4 its third.
 */
public final class ADCScanValues extends InputEvent {
    private final boolean flag1;
    private final boolean flag2;
    private final int value1;
    private final int value2;
    private final int value3;
    private final int value4;

    /**
     * Makes a converter scan event.
     *
     * @param flag1 the scan's first flag
     * @param flag2 the scan's second flag
     * @param value1 the first value
     * @param value2 the second value
     * @param value3 the third value
     * @param value4 the fourth value
     */
    public ADCScanValues(
            boolean flag1,
            boolean flag2,
            int value1,
            int value2,
            int value3,
            int value4) {
        this.flag1 = flag1;
        this.flag2 = flag2;
        this.value1 = value1;
        this.value2 = value2;
        this.value3 = value3;
        this.value4 = value4;
    }

    /** The scan's first flag. */
    public boolean isFlag1() {
        return flag1;
    }

    /** The scan's second flag. */
    public boolean isFlag2() {
        return flag2;
    }

    /** The first value. */
    public int getValue1() {
        return value1;
    }

    /** The second value. */
    public int getValue2() {
        return value2;
    }

    /** The third value. */
    public int getValue3() {
        return value3;
    }

    /** The fourth value. */
    public int getValue4() {
        return value4;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        ADCScanValues that = (ADCScanValues) o;
        return flag1 == that.flag1
                && flag2 == that.flag2
                && value1 == that.value1
                && value2 == that.value2
                && value3 == that.value3
                && value4 == that.value4;
    }

    @Override
    public int hashCode() {
        return Objects.hash(flag1, flag2, value1, value2, value3, value4);
    }

    @Override
    public String toString() {
        return "ADCScanValues{flag1=" + flag1
                + ", flag2=" + flag2
                + ", value1=" + value1
                + ", value2=" + value2
                + ", value3=" + value3
                + ", value4=" + value4
                + "}";
    }
}
