package com.velatrix.quillmark.input;

/**
 * The pen or finger left the button region it arrived on without choosing it; the region is that
 * button's.
 */
public final class ButtonUp extends ButtonEvent {
    /**
     * Makes a up event.
     *
     * @param x the x coordinate of the position
     * @param y the y coordinate of the position
     * @param region the number of the button region
     */
    public ButtonUp(int x, int y, int region) {
        super(x, y, region);
    }
}
