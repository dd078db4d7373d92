package com.velatrix.quillmark;

import java.util.Objects;

/**
 * How the pad's magnetic card reader delivers a swipe. A write can also make the setting the pad's
 * default, or restore its factory settings.
 */
public final class PeripheralConfiguration {
    /** Card-reader output flag: swipes are sent as the pad's own card-swipe input. */
    public static final int OEM_OUTPUT = 0x01;
    /** Card-reader output flag: swipes are typed as keyboard input. */
    public static final int KEYBOARD_OUTPUT = 0x04;
    /** Card-reader output flag: keyboard output starts with a preamble. */
    public static final int KEYBOARD_PREAMBLE = 0x08;

    private int magCardOutput;
    private boolean saveAsDefault;
    private boolean loadFactorySettings;

    /** Makes a peripheral configuration with no output flag set. */
    public PeripheralConfiguration() {}

    /**
     * Makes a peripheral configuration.
     *
     * @param magCardOutput the card reader's output flags, a combination of {@link #OEM_OUTPUT},
     *     {@link #KEYBOARD_OUTPUT} and {@link #KEYBOARD_PREAMBLE}; only the low byte is sent
     * @param saveAsDefault whether a write makes this setting the pad's default
     * @param loadFactorySettings whether a write restores the factory settings
     */
    public PeripheralConfiguration(
            int magCardOutput,
            boolean saveAsDefault,
            boolean loadFactorySettings) {
        this.magCardOutput = magCardOutput;
        this.saveAsDefault = saveAsDefault;
        this.loadFactorySettings = loadFactorySettings;
    }

    /**
     * The card reader's output flags, a combination of {@link #OEM_OUTPUT},
     * {@link #KEYBOARD_OUTPUT} and {@link #KEYBOARD_PREAMBLE}; only the low byte is sent.
     */
    public int getMagCardOutput() {
        return magCardOutput;
    }

    /** Changes {@link #getMagCardOutput()}. */
    public void setMagCardOutput(int magCardOutput) {
        this.magCardOutput = magCardOutput;
    }

    /** Whether a write makes this setting the pad's default. */
    public boolean isSaveAsDefault() {
        return saveAsDefault;
    }

    /** Changes {@link #isSaveAsDefault()}. */
    public void setSaveAsDefault(boolean saveAsDefault) {
        this.saveAsDefault = saveAsDefault;
    }

    /** Whether a write restores the factory settings. */
    public boolean isLoadFactorySettings() {
        return loadFactorySettings;
    }

    /** Changes {@link #isLoadFactorySettings()}. */
    public void setLoadFactorySettings(boolean loadFactorySettings) {
        this.loadFactorySettings = loadFactorySettings;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        PeripheralConfiguration that = (PeripheralConfiguration) o;
        return magCardOutput == that.magCardOutput
                && saveAsDefault == that.saveAsDefault
                && loadFactorySettings == that.loadFactorySettings;
    }

    @Override
    public int hashCode() {
        return Objects.hash(magCardOutput, saveAsDefault, loadFactorySettings);
    }

    @Override
    public String toString() {
        return "PeripheralConfiguration{magCardOutput=" + magCardOutput
                + ", saveAsDefault=" + saveAsDefault
                + ", loadFactorySettings=" + loadFactorySettings
                + "}";
    }
}
