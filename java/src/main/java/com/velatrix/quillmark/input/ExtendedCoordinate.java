package com.velatrix.quillmark.input;

import java.util.Objects;

/**
 * A pen or touch position that also names the region under it. Positions on a button region arrive
 * as {@link ButtonEvent}s instead.
 */
public final class ExtendedCoordinate extends Coordinate {
    private final int region;

    /**
     * Makes an extended coordinate event.
     *
     * @param tipSwitch whether the pen tip is pressed down
     * @param inRange whether the pen is within reach of the digitizer
     * @param x the x coordinate
     * @param y the y coordinate
     * @param region the number of the region under the position, 0 for none
     */
    public ExtendedCoordinate(boolean tipSwitch, boolean inRange, int x, int y, int region) {
        super(tipSwitch, inRange, x, y);
        this.region = region;
    }

    /** The number of the region under the position, 0 for none. */
    public int getRegion() {
        return region;
    }

    @Override
    public boolean equals(Object o) {
        if (!super.equals(o)) {
            return false;
        }
        ExtendedCoordinate that = (ExtendedCoordinate) o;
        return region == that.region;
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Objects.hash(region);
        return result;
    }

    @Override
    public String toString() {
        return "ExtendedCoordinate{" + describeFields()
                + ", region=" + region
                + "}";
    }
}
