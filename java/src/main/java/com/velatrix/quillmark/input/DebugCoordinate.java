package com.velatrix.quillmark.input;

import java.util.Objects;

/**
 * A diagnostic pen sample: the tip and range flags with nine raw digitizer values and a final byte.
 * The meaning of the values is the pad's.
 */
public final class DebugCoordinate extends InputEvent {
    private final boolean tipSwitch;
    private final boolean inRange;
    private final int value1;
    private final int value2;
    private final int value3;
    private final int value4;
    private final int value5;
    private final int value6;
    private final int value7;
    private final int value8;
    private final int value9;
    private final int last;

    /**
     * Makes a diagnostic coordinate event.
     *
     * @param tipSwitch whether the pen tip is pressed down
     * @param inRange whether the pen is within reach of the digitizer
     * @param value1 raw value 1
     * @param value2 raw value 2
     * @param value3 raw value 3
     * @param value4 raw value 4
     * @param value5 raw value 5
     * @param value6 raw value 6
     * @param value7 raw value 7
     * @param value8 raw value 8
     * @param value9 raw value 9
     * @param last the final byte of the sample
     */
    public DebugCoordinate(
            boolean tipSwitch,
            boolean inRange,
            int value1,
            int value2,
            int value3,
            int value4,
            int value5,
            int value6,
            int value7,
            int value8,
            int value9,
            int last) {
        this.tipSwitch = tipSwitch;
        this.inRange = inRange;
        this.value1 = value1;
        this.value2 = value2;
        this.value3 = value3;
        this.value4 = value4;
        this.value5 = value5;
        this.value6 = value6;
        this.value7 = value7;
        this.value8 = value8;
        this.value9 = value9;
        this.last = last;
    }

    /** Whether the pen tip is pressed down. */
    public boolean isTipSwitch() {
        return tipSwitch;
    }

    /** Whether the pen is within reach of the digitizer. */
    public boolean isInRange() {
        return inRange;
    }

    /** Raw value 1. */
    public int getValue1() {
        return value1;
    }

    /** Raw value 2. */
    public int getValue2() {
        return value2;
    }

    /** Raw value 3. */
    public int getValue3() {
        return value3;
    }

    /** Raw value 4. */
    public int getValue4() {
        return value4;
    }

    /** Raw value 5. */
    public int getValue5() {
        return value5;
    }

    /** Raw value 6. */
    public int getValue6() {
        return value6;
    }

    /** Raw value 7. */
    public int getValue7() {
        return value7;
    }

    /** Raw value 8. */
    public int getValue8() {
        return value8;
    }

    /** Raw value 9. */
    public int getValue9() {
        return value9;
    }

    /** The final byte of the sample. */
    public int getLast() {
        return last;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        DebugCoordinate that = (DebugCoordinate) o;
        return tipSwitch == that.tipSwitch
                && inRange == that.inRange
                && value1 == that.value1
                && value2 == that.value2
                && value3 == that.value3
                && value4 == that.value4
                && value5 == that.value5
                && value6 == that.value6
                && value7 == that.value7
                && value8 == that.value8
                && value9 == that.value9
                && last == that.last;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                tipSwitch, inRange, value1, value2, value3, value4, value5, value6, value7, value8,
                value9, last);
    }

    @Override
    public String toString() {
        return "DebugCoordinate{tipSwitch=" + tipSwitch
                + ", inRange=" + inRange
                + ", value1=" + value1
                + ", value2=" + value2
                + ", value3=" + value3
                + ", value4=" + value4
                + ", value5=" + value5
                + ", value6=" + value6
                + ", value7=" + value7
                + ", value8=" + value8
                + ", value9=" + value9
                + ", last=" + last
                + "}";
    }
}
