package com.velatrix.quillmark.input;

/** The pen or finger moved on the button region it arrived on, with the tip down. */
public final class ButtonMove extends ButtonEvent {
    /**
     * Makes a move event.
     *
     * @param x the x coordinate of the position
     * @param y the y coordinate of the position
     * @param region the number of the button region
     */
    public ButtonMove(int x, int y, int region) {
        super(x, y, region);
    }
}
