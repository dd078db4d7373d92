package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The display's brightness, contrast and colour balance. Read them, change what you need and write
 * them back; the set command goes with the write and tells the pad what to do with the values.
 */
public final class DisplaySettings {
    private int brightness;
    private int contrast;
    private int red;
    private int green;
    private int blue;
    private int setCommand;

    /** Makes display settings with every value 0. */
    public DisplaySettings() {}

    /**
     * Makes display settings.
     *
     * @param brightness the brightness (0 to 255)
     * @param contrast the contrast (0 to 255)
     * @param red the red part of the colour balance (0 to 255)
     * @param green the green part of the colour balance (0 to 255)
     * @param blue the blue part of the colour balance (0 to 255)
     * @param setCommand the command sent with a write, as the firmware codes it; only its low byte
     *     is sent
     */
    public DisplaySettings(
            int brightness,
            int contrast,
            int red,
            int green,
            int blue,
            int setCommand) {
        this.brightness = brightness;
        this.contrast = contrast;
        this.red = red;
        this.green = green;
        this.blue = blue;
        this.setCommand = setCommand;
    }

    /** The brightness (0 to 255). */
    public int getBrightness() {
        return brightness;
    }

    /** Changes {@link #getBrightness()}. */
    public void setBrightness(int brightness) {
        this.brightness = brightness;
    }

    /** The contrast (0 to 255). */
    public int getContrast() {
        return contrast;
    }

    /** Changes {@link #getContrast()}. */
    public void setContrast(int contrast) {
        this.contrast = contrast;
    }

    /** The red part of the colour balance (0 to 255). */
    public int getRed() {
        return red;
    }

    /** Changes {@link #getRed()}. */
    public void setRed(int red) {
        this.red = red;
    }

    /** The green part of the colour balance (0 to 255). */
    public int getGreen() {
        return green;
    }

    /** Changes {@link #getGreen()}. */
    public void setGreen(int green) {
        this.green = green;
    }

    /** The blue part of the colour balance (0 to 255). */
    public int getBlue() {
        return blue;
    }

    /** Changes {@link #getBlue()}. */
    public void setBlue(int blue) {
        this.blue = blue;
    }

    /** The command sent with a write, as the firmware codes it; only its low byte is sent. */
    public int getSetCommand() {
        return setCommand;
    }

    /** Changes {@link #getSetCommand()}. */
    public void setSetCommand(int setCommand) {
        this.setCommand = setCommand;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        DisplaySettings that = (DisplaySettings) o;
        return brightness == that.brightness
                && contrast == that.contrast
                && red == that.red
                && green == that.green
                && blue == that.blue
                && setCommand == that.setCommand;
    }

    @Override
    public int hashCode() {
        return Objects.hash(brightness, contrast, red, green, blue, setCommand);
    }

    @Override
    public String toString() {
        return "DisplaySettings{brightness=" + brightness
                + ", contrast=" + contrast
                + ", red=" + red
                + ", green=" + green
                + ", blue=" + blue
                + ", setCommand=" + setCommand
                + "}";
    }
}
