package com.velatrix.quillmark;

import java.util.Objects;

/** What the pad tells about one stored resource: its number, type and size. */
public final class ResourceInfo {
    private int number;
    private int type;
    private int size;

    /**
     * Makes resource information.
     *
     * @param number the resource number
     * @param type the resource type: {@link Resource#TEXT}, {@link Resource#GRAPHIC} or
     *     {@link Resource#INVALID}
     * @param size the size of the resource in bytes
     */
    public ResourceInfo(int number, int type, int size) {
        this.number = number;
        this.type = type;
        this.size = size;
    }

    /** The resource number. */
    public int getNumber() {
        return number;
    }

    /** Changes {@link #getNumber()}. */
    public void setNumber(int number) {
        this.number = number;
    }

    /**
     * The resource type: {@link Resource#TEXT}, {@link Resource#GRAPHIC} or
     * {@link Resource#INVALID}.
     */
    public int getType() {
        return type;
    }

    /** Changes {@link #getType()}. */
    public void setType(int type) {
        this.type = type;
    }

    /** The size of the resource in bytes. */
    public int getSize() {
        return size;
    }

    /** Changes {@link #getSize()}. */
    public void setSize(int size) {
        this.size = size;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        ResourceInfo that = (ResourceInfo) o;
        return number == that.number
                && type == that.type
                && size == that.size;
    }

    @Override
    public int hashCode() {
        return Objects.hash(number, type, size);
    }

    @Override
    public String toString() {
        return "ResourceInfo{number=" + number
                + ", type=" + type
                + ", size=" + size
                + "}";
    }
}
