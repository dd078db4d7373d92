package com.velatrix.quillmark;

import java.util.Objects;

/**
 * Data stored on the pad under a number, for text, graphic and button regions to show: a
 * {@link ResourceText}, a {@link ResourceGraphic}, or a {@link ResourceInvalid} for a number that
 * holds neither.
 */
public abstract class Resource {
    /** Resource type code of a text. */
    public static final int TEXT = 0;
    /** Resource type code of a graphic. */
    public static final int GRAPHIC = 1;
    /** Resource type code of a resource that is neither a text nor a graphic. */
    public static final int INVALID = 255;

    private int resourceNumber;

    /**
     * Makes a resource.
     *
     * @param resourceNumber the number the pad stores the resource under
     */
    protected Resource(int resourceNumber) {
        this.resourceNumber = resourceNumber;
    }

    /** The number the pad stores the resource under. */
    public int getResourceNumber() {
        return resourceNumber;
    }

    /** Changes {@link #getResourceNumber()}. */
    public void setResourceNumber(int resourceNumber) {
        this.resourceNumber = resourceNumber;
    }

    /** The resource's type code: {@link #TEXT}, {@link #GRAPHIC} or {@link #INVALID}. */
    public abstract int getType();

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Resource that = (Resource) o;
        return resourceNumber == that.resourceNumber;
    }

    @Override
    public int hashCode() {
        return Objects.hash(resourceNumber);
    }

    /** The fields as name=value pairs, for the toString of this class and its subclasses. */
    String describeFields() {
        return "resourceNumber=" + resourceNumber;
    }

    @Override
    public String toString() {
        return getClass().getSimpleName() + "{" + describeFields() + "}";
    }
}
