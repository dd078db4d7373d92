package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The digitizer's operating frequency and the drive amplitudes for pen and touch. Units are the pad
 * firmware's; each value is 0 to 255.
 */
public final class FrequencyAmplitude {
    private int frequency;
    private int penAmplitude;
    private int touchAmplitude;

    /** Makes frequency and amplitude settings with every value 0. */
    public FrequencyAmplitude() {}

    /**
     * Makes frequency and amplitude settings.
     *
     * @param frequency the digitizer frequency setting
     * @param penAmplitude the drive amplitude for the pen
     * @param touchAmplitude the drive amplitude for touch
     */
    public FrequencyAmplitude(int frequency, int penAmplitude, int touchAmplitude) {
        this.frequency = frequency;
        this.penAmplitude = penAmplitude;
        this.touchAmplitude = touchAmplitude;
    }

    /** The digitizer frequency setting. */
    public int getFrequency() {
        return frequency;
    }

    /** Changes {@link #getFrequency()}. */
    public void setFrequency(int frequency) {
        this.frequency = frequency;
    }

    /** The drive amplitude for the pen. */
    public int getPenAmplitude() {
        return penAmplitude;
    }

    /** Changes {@link #getPenAmplitude()}. */
    public void setPenAmplitude(int penAmplitude) {
        this.penAmplitude = penAmplitude;
    }

    /** The drive amplitude for touch. */
    public int getTouchAmplitude() {
        return touchAmplitude;
    }

    /** Changes {@link #getTouchAmplitude()}. */
    public void setTouchAmplitude(int touchAmplitude) {
        this.touchAmplitude = touchAmplitude;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        FrequencyAmplitude that = (FrequencyAmplitude) o;
        return frequency == that.frequency
                && penAmplitude == that.penAmplitude
                && touchAmplitude == that.touchAmplitude;
    }

    @Override
    public int hashCode() {
        return Objects.hash(frequency, penAmplitude, touchAmplitude);
    }

    @Override
    public String toString() {
        return "FrequencyAmplitude{frequency=" + frequency
                + ", penAmplitude=" + penAmplitude
                + ", touchAmplitude=" + touchAmplitude
                + "}";
    }
}
