package com.velatrix.quillmark;

import java.util.Objects;

/**
 * What the pad's display is: its size, its colour depth, the character cell of its built-in text,
 * and the limits of its regions. The pad reports it once, when it is opened.
 */
public final class Display {
    private int width;
    private int height;
    private int colorDepth;
    private int textWidth;
    private int textHeight;
    private int regionCount;
    private int maxCaptionLength;

    /**
     * Makes a display description.
     *
     * @param width the display width in pixels
     * @param height the display height in pixels
     * @param colorDepth the number of bits per pixel of the display
     * @param textWidth the width of a character cell of the pad's built-in text, in pixels
     * @param textHeight the height of a character cell of the pad's built-in text, in pixels
     * @param regionCount the number of region slots; regions are numbered from 1 up to this count
     * @param maxCaptionLength the longest caption a button region can hold, in bytes of UTF-8 text
     */
    public Display(
            int width,
            int height,
            int colorDepth,
            int textWidth,
            int textHeight,
            int regionCount,
            int maxCaptionLength) {
        this.width = width;
        this.height = height;
        this.colorDepth = colorDepth;
        this.textWidth = textWidth;
        this.textHeight = textHeight;
        this.regionCount = regionCount;
        this.maxCaptionLength = maxCaptionLength;
    }

    /** The display width in pixels. */
    public int getWidth() {
        return width;
    }

    /** Changes {@link #getWidth()}. */
    public void setWidth(int width) {
        this.width = width;
    }

    /** The display height in pixels. */
    public int getHeight() {
        return height;
    }

    /** Changes {@link #getHeight()}. */
    public void setHeight(int height) {
        this.height = height;
    }

    /** The number of bits per pixel of the display. */
    public int getColorDepth() {
        return colorDepth;
    }

    /** Changes {@link #getColorDepth()}. */
    public void setColorDepth(int colorDepth) {
        this.colorDepth = colorDepth;
    }

    /** The width of a character cell of the pad's built-in text, in pixels. */
    public int getTextWidth() {
        return textWidth;
    }

    /** Changes {@link #getTextWidth()}. */
    public void setTextWidth(int textWidth) {
        this.textWidth = textWidth;
    }

    /** The height of a character cell of the pad's built-in text, in pixels. */
    public int getTextHeight() {
        return textHeight;
    }

    /** Changes {@link #getTextHeight()}. */
    public void setTextHeight(int textHeight) {
        this.textHeight = textHeight;
    }

    /** The number of region slots; regions are numbered from 1 up to this count. */
    public int getRegionCount() {
        return regionCount;
    }

    /** Changes {@link #getRegionCount()}. */
    public void setRegionCount(int regionCount) {
        this.regionCount = regionCount;
    }

    /** The longest caption a button region can hold, in bytes of UTF-8 text. */
    public int getMaxCaptionLength() {
        return maxCaptionLength;
    }

    /** Changes {@link #getMaxCaptionLength()}. */
    public void setMaxCaptionLength(int maxCaptionLength) {
        this.maxCaptionLength = maxCaptionLength;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Display that = (Display) o;
        return width == that.width
                && height == that.height
                && colorDepth == that.colorDepth
                && textWidth == that.textWidth
                && textHeight == that.textHeight
                && regionCount == that.regionCount
                && maxCaptionLength == that.maxCaptionLength;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                width, height, colorDepth, textWidth, textHeight, regionCount, maxCaptionLength);
    }

    @Override
    public String toString() {
        return "Display{width=" + width
                + ", height=" + height
                + ", colorDepth=" + colorDepth
                + ", textWidth=" + textWidth
                + ", textHeight=" + textHeight
                + ", regionCount=" + regionCount
                + ", maxCaptionLength=" + maxCaptionLength
                + "}";
    }
}
