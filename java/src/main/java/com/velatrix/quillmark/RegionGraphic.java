package com.velatrix.quillmark;

import java.util.Objects;

/** A region that shows a stored graphic resource. */
public final class RegionGraphic extends Region {
    private int resourceNumber;
    private int horizontalJustification;
    private int verticalJustification;
    private int graphicReserved;

    /**
     * Makes a graphic region with number 0, an empty rectangle, every flag off and transparent
     * colours.
     */
    public RegionGraphic() {}

    /**
     * Makes a region as the pad describes it. The colours come as their unsigned components,
     * foreground then background, each red, green, blue, alpha.
     *
     * @param number and the arguments up to {@code backgroundAlpha}: the region's common
     *     fields, as {@link Region} takes them (colour components as unsigned bytes)
     * @param resourceNumber the graphic resource shown
     * @param horizontalJustification where the graphic sits across the region (0 to 15, the pad's
     *     codes)
     * @param verticalJustification where the graphic sits up and down the region (0 to 15, the
     *     pad's codes)
     * @param graphicReserved a reserved value, passed through
     */
    public RegionGraphic(
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
            int resourceNumber,
            int horizontalJustification,
            int verticalJustification,
            int graphicReserved) {
        super(
                number, acceptTouch, decode, visible, inUse, hasFrame, outputToHost, reserved1,
                reserved2, x1, x2, y1, y2, foregroundRed, foregroundGreen, foregroundBlue,
                foregroundAlpha, backgroundRed, backgroundGreen, backgroundBlue, backgroundAlpha);
        this.resourceNumber = resourceNumber;
        this.horizontalJustification = horizontalJustification;
        this.verticalJustification = verticalJustification;
        this.graphicReserved = graphicReserved;
    }

    /**
     * Makes a graphic region that is in use and visible, on white. Note the order of the edges:
     * both x values, then both y values.
     *
     * @param number the region number, from 1
     * @param x1 the left edge, in display pixels
     * @param x2 the right edge, in display pixels
     * @param y1 the top edge, in display pixels
     * @param y2 the bottom edge, in display pixels
     * @param resourceNumber the graphic resource shown
     */
    public RegionGraphic(int number, int x1, int x2, int y1, int y2, int resourceNumber) {
        super(number, x1, x2, y1, y2, DEFAULT_FOREGROUND, DEFAULT_BACKGROUND);
        this.resourceNumber = resourceNumber;
    }

    /** The graphic resource shown. */
    public int getResourceNumber() {
        return resourceNumber;
    }

    /** Changes {@link #getResourceNumber()}. */
    public void setResourceNumber(int resourceNumber) {
        this.resourceNumber = resourceNumber;
    }

    /** Where the graphic sits across the region (0 to 15, the pad's codes). */
    public int getHorizontalJustification() {
        return horizontalJustification;
    }

    /** Changes {@link #getHorizontalJustification()}. */
    public void setHorizontalJustification(int horizontalJustification) {
        this.horizontalJustification = horizontalJustification;
    }

    /** Where the graphic sits up and down the region (0 to 15, the pad's codes). */
    public int getVerticalJustification() {
        return verticalJustification;
    }

    /** Changes {@link #getVerticalJustification()}. */
    public void setVerticalJustification(int verticalJustification) {
        this.verticalJustification = verticalJustification;
    }

    /** A reserved value, passed through. */
    public int getGraphicReserved() {
        return graphicReserved;
    }

    /** Changes {@link #getGraphicReserved()}. */
    public void setGraphicReserved(int graphicReserved) {
        this.graphicReserved = graphicReserved;
    }

    @Override
    public int getType() {
        return GRAPHIC;
    }

    @Override
    public boolean equals(Object o) {
        if (!super.equals(o)) {
            return false;
        }
        RegionGraphic that = (RegionGraphic) o;
        return resourceNumber == that.resourceNumber
                && horizontalJustification == that.horizontalJustification
                && verticalJustification == that.verticalJustification
                && graphicReserved == that.graphicReserved;
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Objects.hash(
                resourceNumber, horizontalJustification, verticalJustification, graphicReserved);
        return result;
    }

    @Override
    public String toString() {
        return "RegionGraphic{" + describeFields()
                + ", resourceNumber=" + resourceNumber
                + ", horizontalJustification=" + horizontalJustification
                + ", verticalJustification=" + verticalJustification
                + ", graphicReserved=" + graphicReserved
                + "}";
    }
}
