package com.velatrix.quillmark;

import java.awt.Color;
import java.util.Objects;

/**
 * An area of the pad's display with a behaviour of its own: a {@link RegionContainer} that collects
 * ink, a {@link RegionButton}, a {@link RegionLine}, a {@link RegionGraphic} or a
 * {@link RegionText}; a region of a type this library does not know is a {@link RegionNull}. The
 * pad keeps its regions itself, numbered from 1. The rectangle is given as its left and right
 * edges, then its top and bottom edges, in display pixels.
 */
public abstract class Region {
    /** Type code of a {@link RegionContainer}. */
    public static final int CONTAINER = 0;
    /** Type code of a {@link RegionButton}. */
    public static final int BUTTON = 1;
    /** Type code of a {@link RegionLine}. */
    public static final int LINE = 2;
    /** Type code of a {@link RegionGraphic}. */
    public static final int GRAPHIC = 3;
    /** Type code of a {@link RegionText}. */
    public static final int TEXT = 4;
    /** What {@link #getType()} says for a {@link RegionNull}, a type this library does not know. */
    public static final int UNKNOWN = -1;

    /** The foreground colour of regions made without one: opaque black. */
    public static final Color DEFAULT_FOREGROUND = Color.BLACK;
    /** The background colour of regions made without one: opaque white. */
    public static final Color DEFAULT_BACKGROUND = Color.WHITE;

    private int number;
    private boolean acceptTouch;
    private boolean decode;
    private boolean visible;
    private boolean inUse;
    private boolean hasFrame;
    private boolean outputToHost;
    private boolean reserved1;
    private int reserved2;
    private int x1;
    private int x2;
    private int y1;
    private int y2;
    private Color colorForeground;
    private Color colorBackground;

    /**
     * Makes a region with number 0, an empty rectangle, every flag off and transparent black
     * colours.
     */
    protected Region() {
        this.colorForeground = new Color(0, 0, 0, 0);
        this.colorBackground = new Color(0, 0, 0, 0);
    }

    /**
     * Makes a region that is in use and visible, with every other flag off.
     *
     * @param number the region number, from 1
     * @param x1 the left edge, in display pixels
     * @param x2 the right edge, in display pixels
     * @param y1 the top edge, in display pixels
     * @param y2 the bottom edge, in display pixels
     * @param colorForeground the foreground colour
     * @param colorBackground the background colour
     */
    protected Region(
            int number,
            int x1,
            int x2,
            int y1,
            int y2,
            Color colorForeground,
            Color colorBackground) {
        this.number = number;
        this.visible = true;
        this.inUse = true;
        this.x1 = x1;
        this.x2 = x2;
        this.y1 = y1;
        this.y2 = y2;
        this.colorForeground = Objects.requireNonNull(colorForeground, "colorForeground");
        this.colorBackground = Objects.requireNonNull(colorBackground, "colorBackground");
    }

    /**
     * Makes a region as the pad describes it. The colour components are read as unsigned bytes (0
     * to 255).
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
    protected Region(
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
        this.number = number;
        this.acceptTouch = acceptTouch;
        this.decode = decode;
        this.visible = visible;
        this.inUse = inUse;
        this.hasFrame = hasFrame;
        this.outputToHost = outputToHost;
        this.reserved1 = reserved1;
        this.reserved2 = reserved2;
        this.x1 = x1;
        this.x2 = x2;
        this.y1 = y1;
        this.y2 = y2;
        this.colorForeground =
                color(foregroundRed, foregroundGreen, foregroundBlue, foregroundAlpha);
        this.colorBackground =
                color(backgroundRed, backgroundGreen, backgroundBlue, backgroundAlpha);
    }

    /** The region number, from 1. */
    public int getNumber() {
        return number;
    }

    /** Changes {@link #getNumber()}. */
    public void setNumber(int number) {
        this.number = number;
    }

    /** Whether the region takes touches. */
    public boolean isAcceptTouch() {
        return acceptTouch;
    }

    /** Changes {@link #isAcceptTouch()}. */
    public void setAcceptTouch(boolean acceptTouch) {
        this.acceptTouch = acceptTouch;
    }

    /** Whether the pad decodes input in the region. */
    public boolean isDecode() {
        return decode;
    }

    /** Changes {@link #isDecode()}. */
    public void setDecode(boolean decode) {
        this.decode = decode;
    }

    /** Whether the region is shown. */
    public boolean isVisible() {
        return visible;
    }

    /** Changes {@link #isVisible()}. */
    public void setVisible(boolean visible) {
        this.visible = visible;
    }

    /** Whether the region slot is in use. */
    public boolean isInUse() {
        return inUse;
    }

    /** Changes {@link #isInUse()}. */
    public void setInUse(boolean inUse) {
        this.inUse = inUse;
    }

    /** Whether a frame is drawn around the region. */
    public boolean isHasFrame() {
        return hasFrame;
    }

    /** Changes {@link #isHasFrame()}. */
    public void setHasFrame(boolean hasFrame) {
        this.hasFrame = hasFrame;
    }

    /** Whether input in the region is sent to the host. */
    public boolean isOutputToHost() {
        return outputToHost;
    }

    /** Changes {@link #isOutputToHost()}. */
    public void setOutputToHost(boolean outputToHost) {
        this.outputToHost = outputToHost;
    }

    /** A reserved flag, passed through. */
    public boolean isReserved1() {
        return reserved1;
    }

    /** Changes {@link #isReserved1()}. */
    public void setReserved1(boolean reserved1) {
        this.reserved1 = reserved1;
    }

    /** A reserved value, passed through. */
    public int getReserved2() {
        return reserved2;
    }

    /** Changes {@link #getReserved2()}. */
    public void setReserved2(int reserved2) {
        this.reserved2 = reserved2;
    }

    /** The left edge, in display pixels. */
    public int getX1() {
        return x1;
    }

    /** Changes {@link #getX1()}. */
    public void setX1(int x1) {
        this.x1 = x1;
    }

    /** The right edge, in display pixels. */
    public int getX2() {
        return x2;
    }

    /** Changes {@link #getX2()}. */
    public void setX2(int x2) {
        this.x2 = x2;
    }

    /** The top edge, in display pixels. */
    public int getY1() {
        return y1;
    }

    /** Changes {@link #getY1()}. */
    public void setY1(int y1) {
        this.y1 = y1;
    }

    /** The bottom edge, in display pixels. */
    public int getY2() {
        return y2;
    }

    /** Changes {@link #getY2()}. */
    public void setY2(int y2) {
        this.y2 = y2;
    }

    /** The foreground colour, alpha included (255 is opaque). */
    public Color getColorForeground() {
        return colorForeground;
    }

    /** Changes {@link #getColorForeground()}. */
    public void setColorForeground(Color colorForeground) {
        this.colorForeground = Objects.requireNonNull(colorForeground, "colorForeground");
    }

    /** The background colour, alpha included (255 is opaque). */
    public Color getColorBackground() {
        return colorBackground;
    }

    /** Changes {@link #getColorBackground()}. */
    public void setColorBackground(Color colorBackground) {
        this.colorBackground = Objects.requireNonNull(colorBackground, "colorBackground");
    }

    /**
     * The region's type code: {@link #CONTAINER}, {@link #BUTTON}, {@link #LINE}, {@link #GRAPHIC},
     * {@link #TEXT}, or {@link #UNKNOWN} for a {@link RegionNull}.
     */
    public abstract int getType();

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Region that = (Region) o;
        return number == that.number
                && acceptTouch == that.acceptTouch
                && decode == that.decode
                && visible == that.visible
                && inUse == that.inUse
                && hasFrame == that.hasFrame
                && outputToHost == that.outputToHost
                && reserved1 == that.reserved1
                && reserved2 == that.reserved2
                && x1 == that.x1
                && x2 == that.x2
                && y1 == that.y1
                && y2 == that.y2
                && Objects.equals(colorForeground, that.colorForeground)
                && Objects.equals(colorBackground, that.colorBackground);
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                number, acceptTouch, decode, visible, inUse, hasFrame, outputToHost, reserved1,
                reserved2, x1, x2, y1, y2, colorForeground, colorBackground);
    }

    /** The fields as name=value pairs, for the toString of this class and its subclasses. */
    String describeFields() {
        return "number=" + number
                + ", acceptTouch=" + acceptTouch
                + ", decode=" + decode
                + ", visible=" + visible
                + ", inUse=" + inUse
                + ", hasFrame=" + hasFrame
                + ", outputToHost=" + outputToHost
                + ", reserved1=" + reserved1
                + ", reserved2=" + reserved2
                + ", x1=" + x1
                + ", x2=" + x2
                + ", y1=" + y1
                + ", y2=" + y2
                + ", colorForeground=" + colorToString(colorForeground)
                + ", colorBackground=" + colorToString(colorBackground);
    }

    @Override
    public String toString() {
        return getClass().getSimpleName() + "{" + describeFields() + "}";
    }

    private static Color color(byte red, byte green, byte blue, byte alpha) {
        return new Color(red & 0xFF, green & 0xFF, blue & 0xFF, alpha & 0xFF);
    }

    /** A colour as "#aarrggbb", the way the library prints region colours. */
    static String colorToString(Color color) {
        if (color == null) {
            return "null";
        }
        return String.format(
                "#%02x%02x%02x%02x",
                color.getAlpha(), color.getRed(), color.getGreen(), color.getBlue());
    }
}
