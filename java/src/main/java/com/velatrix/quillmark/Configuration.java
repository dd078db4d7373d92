package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The pad's device mode and device identifier. Both codes are the pad firmware's; read them, change
 * what you need and write them back.
 */
public final class Configuration {
    private int deviceMode;
    private int deviceId;

    /** Makes a configuration with mode and identifier 0. */
    public Configuration() {}

    /**
     * Makes a configuration.
     *
     * @param deviceMode the device mode, as the firmware codes it (0 to 255)
     * @param deviceId the device identifier, as the firmware codes it (0 to 255)
     */
    public Configuration(int deviceMode, int deviceId) {
        this.deviceMode = deviceMode;
        this.deviceId = deviceId;
    }

    /** The device mode, as the firmware codes it (0 to 255). */
    public int getDeviceMode() {
        return deviceMode;
    }

    /** Changes {@link #getDeviceMode()}. */
    public void setDeviceMode(int deviceMode) {
        this.deviceMode = deviceMode;
    }

    /** The device identifier, as the firmware codes it (0 to 255). */
    public int getDeviceId() {
        return deviceId;
    }

    /** Changes {@link #getDeviceId()}. */
    public void setDeviceId(int deviceId) {
        this.deviceId = deviceId;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Configuration that = (Configuration) o;
        return deviceMode == that.deviceMode
                && deviceId == that.deviceId;
    }

    @Override
    public int hashCode() {
        return Objects.hash(deviceMode, deviceId);
    }

    @Override
    public String toString() {
        return "Configuration{deviceMode=" + deviceMode
                + ", deviceId=" + deviceId
                + "}";
    }
}
