package com.velatrix.quillmark.input;

import java.util.Objects;

/**
 * Pen or finger activity on a button region: {@link ButtonDown} when it arrives on a button,
 * {@link ButtonMove} while it moves there with the tip down, {@link ButtonPress} when the tip is
 * lifted on the button (the button was chosen), and {@link ButtonUp} when it leaves the button
 * without choosing it.
 */
public abstract class ButtonEvent extends InputEvent {
    private final int x;
    private final int y;
    private final int region;

    /**
     * Makes a button event.
     *
     * @param x the x coordinate of the position
     * @param y the y coordinate of the position
     * @param region the number of the button region
     */
    protected ButtonEvent(int x, int y, int region) {
        this.x = x;
        this.y = y;
        this.region = region;
    }

    /** The x coordinate of the position. */
    public int getX() {
        return x;
    }

    /** The y coordinate of the position. */
    public int getY() {
        return y;
    }

    /** The number of the button region. */
    public int getRegion() {
        return region;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        ButtonEvent that = (ButtonEvent) o;
        return x == that.x
                && y == that.y
                && region == that.region;
    }

    @Override
    public int hashCode() {
        return Objects.hash(x, y, region);
    }

    /** The fields as name=value pairs, for the toString of this class and its subclasses. */
    String describeFields() {
        return "x=" + x
                + ", y=" + y
                + ", region=" + region;
    }

    @Override
    public String toString() {
        return getClass().getSimpleName() + "{" + describeFields() + "}";
    }
}
