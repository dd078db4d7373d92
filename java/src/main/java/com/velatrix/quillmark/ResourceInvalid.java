package com.velatrix.quillmark;

/** What the pad holds under a number that is neither a text nor a graphic. */
public final class ResourceInvalid extends Resource {
    /**
     * Makes an invalid resource.
     *
     * @param resourceNumber the number the pad stores the resource under
     */
    public ResourceInvalid(int resourceNumber) {
        super(resourceNumber);
    }

    @Override
    public int getType() {
        return INVALID;
    }
}
