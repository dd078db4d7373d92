package com.velatrix.quillmark.input;

import java.util.Objects;

/** A pen or touch position in the digitizer's coordinates, within the pad's coordinate range. */
public class Coordinate extends InputEvent {
    private final boolean tipSwitch;
    private final boolean inRange;
    private final int x;
    private final int y;

    /**
     * Makes a coordinate event.
     *
     * @param tipSwitch whether the pen tip is pressed down
     * @param inRange whether the pen is within reach of the digitizer
     * @param x the x coordinate
     * @param y the y coordinate
     */
    public Coordinate(boolean tipSwitch, boolean inRange, int x, int y) {
        this.tipSwitch = tipSwitch;
        this.inRange = inRange;
        this.x = x;
        this.y = y;
    }

    /** Whether the pen tip is pressed down. */
    public boolean isTipSwitch() {
        return tipSwitch;
    }

    /** Whether the pen is within reach of the digitizer. */
    public boolean isInRange() {
        return inRange;
    }

    /** The x coordinate. */
    public int getX() {
        return x;
    }

    /** The y coordinate. */
    public int getY() {
        return y;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Coordinate that = (Coordinate) o;
        return tipSwitch == that.tipSwitch
                && inRange == that.inRange
                && x == that.x
                && y == that.y;
    }

    @Override
    public int hashCode() {
        return Objects.hash(tipSwitch, inRange, x, y);
    }

    /** The fields as name=value pairs, for the toString of this class and its subclasses. */
    String describeFields() {
        return "tipSwitch=" + tipSwitch
                + ", inRange=" + inRange
                + ", x=" + x
                + ", y=" + y;
    }

    @Override
    public String toString() {
        return getClass().getSimpleName() + "{" + describeFields() + "}";
    }
}
