package com.velatrix.quillmark;

/**
 * A region of a type this library does not know; only the fields common to all regions are kept.
 */
public final class RegionNull extends Region {
    /**
     * Makes a region as the pad describes it. The colours come as their unsigned components,
     * foreground then background, each red, green, blue, alpha.
     *
     * @param number the region number, from 1
     * @param acceptTouch whether the region takes touches
     * @param decode whether the pad decodes input in the region
     * @param visible whether the region is shown
     * @param inUse whether the region slot is in use
     * @param hasFrame whether a frame is drawn around the region
     * @param outputToHost whether input in the region is sent to the host
     * @param reserved1 a reserved flag, passed through
     * @param reserved2 a reserved value, passed through
     * @param x1 the left edge, in display pixels
     * @param x2 the right edge, in display pixels
     * @param y1 the top edge, in display pixels
     * @param y2 the bottom edge, in display pixels
     * @param foregroundRed the red component of the foreground colour (0 to 255 as an unsigned
     *     byte)
     * @param foregroundGreen the green component of the foreground colour
     * @param foregroundBlue the blue component of the foreground colour
     * @param foregroundAlpha the alpha component of the foreground colour, 255 for opaque
     * @param backgroundRed the red component of the background colour
     * @param backgroundGreen the green component of the background colour
     * @param backgroundBlue the blue component of the background colour
     * @param backgroundAlpha the alpha component of the background colour, 255 for opaque
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
