package com.velatrix.quillmark;

import java.util.Arrays;
import java.util.Objects;

/**
 * What the pad reports about its resource storage. The meaning of the values is the pad's; they are
 * passed on as it sent them.
 */
public final class ResourceAvailability {
    private int value1;
    private int value2;
    private int[] entries;

    /**
     * Makes a resource availability record.
     *
     * @param value1 the first value of the report (one byte)
     * @param value2 the second value of the report (a 32-bit word)
     * @param entries the twelve one-byte entries that follow; the array itself, not a copy
     */
    public ResourceAvailability(int value1, int value2, int[] entries) {
        this.value1 = value1;
        this.value2 = value2;
        this.entries = entries;
    }

    /** The first value of the report (one byte). */
    public int getValue1() {
        return value1;
    }

    /** Changes {@link #getValue1()}. */
    public void setValue1(int value1) {
        this.value1 = value1;
    }

    /** The second value of the report (a 32-bit word). */
    public int getValue2() {
        return value2;
    }

    /** Changes {@link #getValue2()}. */
    public void setValue2(int value2) {
        this.value2 = value2;
    }

    /** The twelve one-byte entries that follow; the array itself, not a copy. */
    public int[] getEntries() {
        return entries;
    }

    /** Changes {@link #getEntries()}. */
    public void setEntries(int[] entries) {
        this.entries = entries;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        ResourceAvailability that = (ResourceAvailability) o;
        return value1 == that.value1
                && value2 == that.value2
                && Arrays.equals(entries, that.entries);
    }

    @Override
    public int hashCode() {
        int result = Objects.hash(value1, value2);
        result = 31 * result + Arrays.hashCode(entries);
        return result;
    }

    @Override
    public String toString() {
        return "ResourceAvailability{value1=" + value1
                + ", value2=" + value2
                + ", entries=" + Arrays.toString(entries)
                + "}";
    }
}
