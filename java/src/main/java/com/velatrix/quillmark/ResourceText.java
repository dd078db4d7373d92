package com.velatrix.quillmark;

import java.util.Objects;

/** A text stored on the pad, shown by text regions. */
public final class ResourceText extends Resource {
    private String text;

    /** Makes an empty text resource with number 0. */
    public ResourceText() {
        super(0);
        this.text = "";
    }

    /**
     * Makes a text resource.
     *
     * @param resourceNumber the number the pad stores the resource under
     * @param text the text
     */
    public ResourceText(int resourceNumber, String text) {
        super(resourceNumber);
        this.text = text;
    }

    /** The text. */
    public String getText() {
        return text;
    }

    /** Changes {@link #getText()}. */
    public void setText(String text) {
        this.text = text;
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
        ResourceText that = (ResourceText) o;
        return Objects.equals(text, that.text);
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Objects.hash(text);
        return result;
    }

    @Override
    public String toString() {
        return "ResourceText{" + describeFields()
                + ", text=" + quote(text)
                + "}";
    }

    private static String quote(String text) {
        return text == null ? "null" : '"' + text + '"';
    }
}
