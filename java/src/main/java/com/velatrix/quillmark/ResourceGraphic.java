package com.velatrix.quillmark;

import java.util.Arrays;

/**
 * A graphic stored on the pad, shown by graphic regions and image buttons. The bytes are in the
 * format the pad expects.
 */
public final class ResourceGraphic extends Resource {
    private byte[] data;

    /** Makes an empty graphic resource with number 0. */
    public ResourceGraphic() {
        super(0);
        this.data = new byte[0];
    }

    /**
     * Makes a graphic resource.
     *
     * @param resourceNumber the number the pad stores the resource under
     * @param data the graphic's bytes; the array itself, not a copy
     */
    public ResourceGraphic(int resourceNumber, byte[] data) {
        super(resourceNumber);
        this.data = data;
    }

    /** The graphic's bytes; the array itself, not a copy. */
    public byte[] getData() {
        return data;
    }

    /** Changes {@link #getData()}. */
    public void setData(byte[] data) {
        this.data = data;
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
        ResourceGraphic that = (ResourceGraphic) o;
        return Arrays.equals(data, that.data);
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Arrays.hashCode(data);
        return result;
    }

    @Override
    public String toString() {
        return "ResourceGraphic{" + describeFields()
                + ", data=" + bytesToString(data)
                + "}";
    }

    private static String bytesToString(byte[] bytes) {
        return bytes == null ? "null" : "byte[" + bytes.length + "]";
    }
}
