package com.velatrix.quillmark.input;

/** The pen or finger arrived on a button region. */
public final class ButtonDown extends ButtonEvent {
    /**
     * Makes a down event.
     *
     * @param x the x coordinate of the position
     * @param y the y coordinate of the position
     * @param region the number of the button region
     */
    public ButtonDown(int x, int y, int region) {
        super(x, y, region);
    }
}
