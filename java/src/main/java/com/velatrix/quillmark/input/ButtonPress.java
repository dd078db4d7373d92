package com.velatrix.quillmark.input;

/** The tip was lifted on a button region: the button was chosen. */
public final class ButtonPress extends ButtonEvent {
    /**
     * Makes a press event.
     *
     * @param x the x coordinate of the position
     * @param y the y coordinate of the position
     * @param region the number of the button region
     */
    public ButtonPress(int x, int y, int region) {
        super(x, y, region);
    }
}
