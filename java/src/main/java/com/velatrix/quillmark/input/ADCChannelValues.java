package com.velatrix.quillmark.input;

import java.util.Objects;

/**
 * A diagnostic sample of one of the digitizer's converter channels: the channel and four raw
 * values.
 */
public final class ADCChannelValues extends InputEvent {
    private final int channel;
    private final int value1;
    private final int value2;
    private final int value3;
    private final int value4;

    /**
     * Makes a converter channel event.
     *
     * @param channel the channel number
     * @param value1 the first value
     * @param value2 the second value
     * @param value3 the third value
     * @param value4 the fourth value
     */
    public ADCChannelValues(int channel, int value1, int value2, int value3, int value4) {
        this.channel = channel;
        this.value1 = value1;
        this.value2 = value2;
        this.value3 = value3;
        this.value4 = value4;
    }

    /** The channel number. */
    public int getChannel() {
        return channel;
    }

    /** The first value. */
    public int getValue1() {
        return value1;
    }

    /** The second value. */
    public int getValue2() {
        return value2;
    }

    /** The third value. */
    public int getValue3() {
        return value3;
    }

    /** The fourth value. */
    public int getValue4() {
        return value4;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        ADCChannelValues that = (ADCChannelValues) o;
        return channel == that.channel
                && value1 == that.value1
                && value2 == that.value2
                && value3 == that.value3
                && value4 == that.value4;
    }

    @Override
    public int hashCode() {
        return Objects.hash(channel, value1, value2, value3, value4);
    }

    @Override
    public String toString() {
        return "ADCChannelValues{channel=" + channel
                + ", value1=" + value1
                + ", value2=" + value2
                + ", value3=" + value3
                + ", value4=" + value4
                + "}";
    }
}
