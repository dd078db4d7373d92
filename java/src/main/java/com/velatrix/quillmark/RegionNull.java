package com.velatrix.quillmark;

/**
 * A region of a type this library does not know; only the fields common to all regions are kept.
 */
public final class RegionNull extends Region {
    /**
     * Makes a region as the pad describes it. The colours come as their unsigned components,
     * foreground then background, each red, green, blue, alpha.
     *
     * @param number and the arguments up to {@code backgroundAlpha}: the region's common
     *     fields, as {@link Region} takes them (colour components as unsigned bytes)
     */
    public RegionNull(
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
            byte backgroundAlpha) {
        super(
                number, acceptTouch, decode, visible, inUse, hasFrame, outputToHost, reserved1,
                reserved2, x1, x2, y1, y2, foregroundRed, foregroundGreen, foregroundBlue,
                foregroundAlpha, backgroundRed, backgroundGreen, backgroundBlue, backgroundAlpha);
    }

    @Override
    public int getType() {
        return UNKNOWN;
    }
}
