package com.velatrix.quillmark;

import java.util.Objects;

/** A line drawn on the display, such as the line a signature is written on. */
public final class RegionLine extends Region {
    private int lineParent;
    private int width;
    private int lineReserved;

    /** Makes a line with number 0, an empty rectangle, every flag off and transparent colours. */
    public RegionLine() {}

    /**
     * Makes a region as the pad describes it. The colours come as their unsigned components,
     * foreground then background, each red, green, blue, alpha.
     *
     * @param number and the arguments up to {@code backgroundAlpha}: the region's common
     *     fields, as {@link Region} takes them (colour components as unsigned bytes)
     * @param lineParent the number of the region the line belongs to, 0 for none
     * @param width the line width
     * @param lineReserved a reserved value, passed through
     */
    public RegionLine(
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
            int lineParent,
            int width,
            int lineReserved) {
        super(
                number, acceptTouch, decode, visible, inUse, hasFrame, outputToHost, reserved1,
                reserved2, x1, x2, y1, y2, foregroundRed, foregroundGreen, foregroundBlue,
                foregroundAlpha, backgroundRed, backgroundGreen, backgroundBlue, backgroundAlpha);
        this.lineParent = lineParent;
        this.width = width;
        this.lineReserved = lineReserved;
    }

    /**
     * Makes a line that is in use and visible, in black on white. Note the order of the edges:
     * both x values, then both y values.
     *
     * @param number the region number, from 1
     * @param x1 the left edge, in display pixels
     * @param x2 the right edge, in display pixels
     * @param y1 the top edge, in display pixels
     * @param y2 the bottom edge, in display pixels
     * @param width the line width
     */
    public RegionLine(int number, int x1, int x2, int y1, int y2, int width) {
        super(number, x1, x2, y1, y2, DEFAULT_FOREGROUND, DEFAULT_BACKGROUND);
        this.width = width;
    }

    /** The number of the region the line belongs to, 0 for none. */
    public int getLineParent() {
        return lineParent;
    }

    /** Changes {@link #getLineParent()}. */
    public void setLineParent(int lineParent) {
        this.lineParent = lineParent;
    }

    /** The line width. */
    public int getWidth() {
        return width;
    }

    /** Changes {@link #getWidth()}. */
    public void setWidth(int width) {
        this.width = width;
    }

    /** A reserved value, passed through. */
    public int getLineReserved() {
        return lineReserved;
    }

    /** Changes {@link #getLineReserved()}. */
    public void setLineReserved(int lineReserved) {
        this.lineReserved = lineReserved;
    }

    @Override
    public int getType() {
        return LINE;
    }

    @Override
    public boolean equals(Object o) {
        if (!super.equals(o)) {
            return false;
        }
        RegionLine that = (RegionLine) o;
        return lineParent == that.lineParent
                && width == that.width
                && lineReserved == that.lineReserved;
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Objects.hash(lineParent, width, lineReserved);
        return result;
    }

    @Override
    public String toString() {
        return "RegionLine{" + describeFields()
                + ", lineParent=" + lineParent
                + ", width=" + width
                + ", lineReserved=" + lineReserved
                + "}";
    }
}
