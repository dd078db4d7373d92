package com.velatrix.quillmark;

import java.util.Objects;

/** A region that collects ink: the area a signature is written in. */
public final class RegionContainer extends Region {
    private boolean inkEnabled;
    private int inkWidth;
    private int containerReserved1;
    private int containerReserved2;

    /**
     * Makes a container with number 0, an empty rectangle, every flag off and transparent colours.
     */
    public RegionContainer() {}

    /**
     * Makes a region as the pad describes it. The colours come as their unsigned components,
     * foreground then background, each red, green, blue, alpha.
     *
     * @param number and the arguments up to {@code backgroundAlpha}: the region's common
     *     fields, as {@link Region} takes them (colour components as unsigned bytes)
     * @param inkEnabled whether pen strokes in the region are drawn as ink
     * @param inkWidth the width of the ink (0 to 3)
     * @param containerReserved1 a reserved value, passed through
     * @param containerReserved2 a reserved value, passed through
     */
    public RegionContainer(
            int number,
            boolean acceptTouch,
            boolean decode,
            boolean visible,
            boolean inUse,
            boolean hasFrame,
            boolean outputToHost,
            boolean reserved1,
            int reserved2,
            int x1,
            int x2,
            int y1,
            int y2,
            byte foregroundRed,
            byte foregroundGreen,
            byte foregroundBlue,
            byte foregroundAlpha,
            byte backgroundRed,
            byte backgroundGreen,
            byte backgroundBlue,
            byte backgroundAlpha,
            boolean inkEnabled,
            int inkWidth,
            int containerReserved1,
            int containerReserved2) {
        super(
                number, acceptTouch, decode, visible, inUse, hasFrame, outputToHost, reserved1,
                reserved2, x1, x2, y1, y2, foregroundRed, foregroundGreen, foregroundBlue,
                foregroundAlpha, backgroundRed, backgroundGreen, backgroundBlue, backgroundAlpha);
        this.inkEnabled = inkEnabled;
        this.inkWidth = inkWidth;
        this.containerReserved1 = containerReserved1;
        this.containerReserved2 = containerReserved2;
    }

    /**
     * Makes a container that is in use, visible, takes touches and draws its ink, in black on
     * white. Note the order of the edges: both x values, then both y values.
     *
     * @param number the region number, from 1
     * @param x1 the left edge, in display pixels
     * @param x2 the right edge, in display pixels
     * @param y1 the top edge, in display pixels
     * @param y2 the bottom edge, in display pixels
     */
    public RegionContainer(int number, int x1, int x2, int y1, int y2) {
        super(number, x1, x2, y1, y2, DEFAULT_FOREGROUND, DEFAULT_BACKGROUND);
        setAcceptTouch(true);
        this.inkEnabled = true;
    }

    /** Whether pen strokes in the region are drawn as ink. */
    public boolean isInkEnabled() {
        return inkEnabled;
    }

    /** Changes {@link #isInkEnabled()}. */
    public void setInkEnabled(boolean inkEnabled) {
        this.inkEnabled = inkEnabled;
    }

    /** The width of the ink (0 to 3). */
    public int getInkWidth() {
        return inkWidth;
    }

    /** Changes {@link #getInkWidth()}. */
    public void setInkWidth(int inkWidth) {
        this.inkWidth = inkWidth;
    }

    /** A reserved value, passed through. */
    public int getContainerReserved1() {
        return containerReserved1;
    }

    /** Changes {@link #getContainerReserved1()}. */
    public void setContainerReserved1(int containerReserved1) {
        this.containerReserved1 = containerReserved1;
    }

    /** A reserved value, passed through. */
    public int getContainerReserved2() {
        return containerReserved2;
    }

    /** Changes {@link #getContainerReserved2()}. */
    public void setContainerReserved2(int containerReserved2) {
        this.containerReserved2 = containerReserved2;
    }

    @Override
    public int getType() {
        return CONTAINER;
    }

    @Override
    public boolean equals(Object o) {
        if (!super.equals(o)) {
            return false;
        }
        RegionContainer that = (RegionContainer) o;
        return inkEnabled == that.inkEnabled
                && inkWidth == that.inkWidth
                && containerReserved1 == that.containerReserved1
                && containerReserved2 == that.containerReserved2;
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Objects.hash(
                inkEnabled, inkWidth, containerReserved1, containerReserved2);
        return result;
    }

    @Override
    public String toString() {
        return "RegionContainer{" + describeFields()
                + ", inkEnabled=" + inkEnabled
                + ", inkWidth=" + inkWidth
                + ", containerReserved1=" + containerReserved1
                + ", containerReserved2=" + containerReserved2
                + "}";
    }
}
