package com.velatrix.quillmark;

import java.util.Arrays;
import java.util.Objects;

/**
 * A rectangle of raw pixels for the pad's display: where it goes, its size, its pixel depth, and
 * the pixel bytes in the display's format. The raster may hold at most 2039 bytes; larger pictures
 * go in several chunks.
 */
public final class DisplayChunk {
    private int x;
    private int y;
    private int width;
    private int height;
    private byte bitsPerPixel;
    private byte[] raster;

    /** Makes an empty chunk at the top left corner. */
    public DisplayChunk() {
        this.raster = new byte[0];
    }

    /**
     * Makes a display chunk.
     *
     * @param x the left edge, in pixels
     * @param y the top edge, in pixels
     * @param width the width, in pixels
     * @param height the height, in pixels
     * @param bitsPerPixel the number of bits per pixel of the raster
     * @param raster the pixel bytes, at most 2039
     */
    public DisplayChunk(int x, int y, int width, int height, byte bitsPerPixel, byte[] raster) {
        this.x = x;
        this.y = y;
        this.width = width;
        this.height = height;
        this.bitsPerPixel = bitsPerPixel;
        this.raster = raster;
    }

    /** The left edge, in pixels. */
    public int getX() {
        return x;
    }

    /** Changes {@link #getX()}. */
    public void setX(int x) {
        this.x = x;
    }

    /** The top edge, in pixels. */
    public int getY() {
        return y;
    }

    /** Changes {@link #getY()}. */
    public void setY(int y) {
        this.y = y;
    }

    /** The width, in pixels. */
    public int getWidth() {
        return width;
    }

    /** Changes {@link #getWidth()}. */
    public void setWidth(int width) {
        this.width = width;
    }

    /** The height, in pixels. */
    public int getHeight() {
        return height;
    }

    /** Changes {@link #getHeight()}. */
    public void setHeight(int height) {
        this.height = height;
    }

    /** The number of bits per pixel of the raster. */
    public byte getBitsPerPixel() {
        return bitsPerPixel;
    }

    /** Changes {@link #getBitsPerPixel()}. */
    public void setBitsPerPixel(byte bitsPerPixel) {
        this.bitsPerPixel = bitsPerPixel;
    }

    /** The pixel bytes, at most 2039; the array itself, not a copy. */
    public byte[] getRaster() {
        return raster;
    }

    /** Changes {@link #getRaster()}. */
    public void setRaster(byte[] raster) {
        this.raster = raster;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        DisplayChunk that = (DisplayChunk) o;
        return x == that.x
                && y == that.y
                && width == that.width
                && height == that.height
                && bitsPerPixel == that.bitsPerPixel
                && Arrays.equals(raster, that.raster);
    }

    @Override
    public int hashCode() {
        int result = Objects.hash(x, y, width, height, bitsPerPixel);
        result = 31 * result + Arrays.hashCode(raster);
        return result;
    }

    @Override
    public String toString() {
        return "DisplayChunk{x=" + x
                + ", y=" + y
                + ", width=" + width
                + ", height=" + height
                + ", bitsPerPixel=" + bitsPerPixel
                + ", raster=" + bytesToString(raster)
                + "}";
    }

    private static String bytesToString(byte[] bytes) {
        return bytes == null ? "null" : "byte[" + bytes.length + "]";
    }
}
