package com.velatrix.quillmark;

import java.util.Objects;

/** A region that shows a stored text resource in one of the pad's fonts. */
public final class RegionText extends Region {
    private int resourceNumber;
    private int fontNumber;
    private int horizontalJustification;
    private int verticalJustification;
    private int textReserved;

    /**
     * Makes a text region with number 0, an empty rectangle, every flag off and transparent
     * colours.
     */
    public RegionText() {}

    /**
     * Makes a region as the pad describes it. The colours come as their unsigned components,
     * foreground then background, each red, green, blue, alpha.
     *
     * @param number and the arguments up to {@code backgroundAlpha}: the region's common
     *     fields, as {@link Region} takes them (colour components as unsigned bytes)
     * @param resourceNumber the text resource shown
     * @param fontNumber the pad font the text is drawn in
     * @param horizontalJustification where the text sits across the region (0 to 15, the pad's
     *     codes)
     * @param verticalJustification where the text sits up and down the region (0 to 15, the pad's
     *     codes)
     * @param textReserved a reserved value, passed through
     */
    public RegionText(
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
            int fontNumber,
            int horizontalJustification,
            int verticalJustification,
            int textReserved) {
        super(
                number, acceptTouch, decode, visible, inUse, hasFrame, outputToHost, reserved1,
                reserved2, x1, x2, y1, y2, foregroundRed, foregroundGreen, foregroundBlue,
                foregroundAlpha, backgroundRed, backgroundGreen, backgroundBlue, backgroundAlpha);
        this.resourceNumber = resourceNumber;
        this.fontNumber = fontNumber;
        this.horizontalJustification = horizontalJustification;
        this.verticalJustification = verticalJustification;
        this.textReserved = textReserved;
    }

    /**
     * Makes a text region that is in use and visible, in black on white. Note the order of the
     * edges: both x values, then both y values.
     *
     * @param number the region number, from 1
     * @param x1 the left edge, in display pixels
     * @param x2 the right edge, in display pixels
     * @param y1 the top edge, in display pixels
     * @param y2 the bottom edge, in display pixels
     * @param resourceNumber the text resource shown
     * @param fontNumber the pad font the text is drawn in
     */
    public RegionText(
            int number, int x1, int x2, int y1, int y2, int resourceNumber, int fontNumber) {
        super(number, x1, x2, y1, y2, DEFAULT_FOREGROUND, DEFAULT_BACKGROUND);
        this.resourceNumber = resourceNumber;
        this.fontNumber = fontNumber;
    }

    /** The text resource shown. */
    public int getResourceNumber() {
        return resourceNumber;
    }

    /** Changes {@link #getResourceNumber()}. */
    public void setResourceNumber(int resourceNumber) {
        this.resourceNumber = resourceNumber;
    }

    /** The pad font the text is drawn in. */
    public int getFontNumber() {
        return fontNumber;
    }

    /** Changes {@link #getFontNumber()}. */
    public void setFontNumber(int fontNumber) {
        this.fontNumber = fontNumber;
    }

    /** Where the text sits across the region (0 to 15, the pad's codes). */
    public int getHorizontalJustification() {
        return horizontalJustification;
    }

    /** Changes {@link #getHorizontalJustification()}. */
    public void setHorizontalJustification(int horizontalJustification) {
        this.horizontalJustification = horizontalJustification;
    }

    /** Where the text sits up and down the region (0 to 15, the pad's codes). */
    public int getVerticalJustification() {
        return verticalJustification;
    }

    /** Changes {@link #getVerticalJustification()}. */
    public void setVerticalJustification(int verticalJustification) {
        this.verticalJustification = verticalJustification;
    }

    /** A reserved value, passed through. */
    public int getTextReserved() {
        return textReserved;
    }

    /** Changes {@link #getTextReserved()}. */
    public void setTextReserved(int textReserved) {
        this.textReserved = textReserved;
    }

    @Override
    public int getType() {
        return TEXT;
    }

    @Override
    public boolean equals(Object o) {
        if (!super.equals(o)) {
            return false;
        }
        RegionText that = (RegionText) o;
        return resourceNumber == that.resourceNumber
                && fontNumber == that.fontNumber
                && horizontalJustification == that.horizontalJustification
                && verticalJustification == that.verticalJustification
                && textReserved == that.textReserved;
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Objects.hash(
                resourceNumber, fontNumber, horizontalJustification, verticalJustification,
                textReserved);
        return result;
    }

    @Override
    public String toString() {
        return "RegionText{" + describeFields()
                + ", resourceNumber=" + resourceNumber
                + ", fontNumber=" + fontNumber
                + ", horizontalJustification=" + horizontalJustification
                + ", verticalJustification=" + verticalJustification
                + ", textReserved=" + textReserved
                + "}";
    }
}
