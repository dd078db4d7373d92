package com.velatrix.quillmark;

import java.util.Objects;

/**
 * The versions of the pad's software and the identity of its digitizer chip. The kernel is the
 * pad's start-up software, the firmware its application; each version is a major, minor and release
 * number.
 */
public final class Version {
    private int kernelMajor;
    private int kernelMinor;
    private int kernelRelease;
    private int firmwareMajor;
    private int firmwareMinor;
    private int firmwareRelease;
    private int asicSignature;

    /**
     * Makes a version record.
     *
     * @param kernelMajor the kernel's major version
     * @param kernelMinor the kernel's minor version
     * @param kernelRelease the kernel's release number
     * @param firmwareMajor the firmware's major version
     * @param firmwareMinor the firmware's minor version
     * @param firmwareRelease the firmware's release number
     * @param asicSignature the signature that identifies the digitizer chip
     */
    public Version(
            int kernelMajor,
            int kernelMinor,
            int kernelRelease,
            int firmwareMajor,
            int firmwareMinor,
            int firmwareRelease,
            int asicSignature) {
        this.kernelMajor = kernelMajor;
        this.kernelMinor = kernelMinor;
        this.kernelRelease = kernelRelease;
        this.firmwareMajor = firmwareMajor;
        this.firmwareMinor = firmwareMinor;
        this.firmwareRelease = firmwareRelease;
        this.asicSignature = asicSignature;
    }

    /** The kernel's major version. */
    public int getKernelMajor() {
        return kernelMajor;
    }

    /** Changes {@link #getKernelMajor()}. */
    public void setKernelMajor(int kernelMajor) {
        this.kernelMajor = kernelMajor;
    }

    /** The kernel's minor version. */
    public int getKernelMinor() {
        return kernelMinor;
    }

    /** Changes {@link #getKernelMinor()}. */
    public void setKernelMinor(int kernelMinor) {
        this.kernelMinor = kernelMinor;
    }

    /** The kernel's release number. */
    public int getKernelRelease() {
        return kernelRelease;
    }

    /** Changes {@link #getKernelRelease()}. */
    public void setKernelRelease(int kernelRelease) {
        this.kernelRelease = kernelRelease;
    }

    /** The firmware's major version. */
    public int getFirmwareMajor() {
        return firmwareMajor;
    }

    /** Changes {@link #getFirmwareMajor()}. */
    public void setFirmwareMajor(int firmwareMajor) {
        this.firmwareMajor = firmwareMajor;
    }

    /** The firmware's minor version. */
    public int getFirmwareMinor() {
        return firmwareMinor;
    }

    /** Changes {@link #getFirmwareMinor()}. */
    public void setFirmwareMinor(int firmwareMinor) {
        this.firmwareMinor = firmwareMinor;
    }

    /** The firmware's release number. */
    public int getFirmwareRelease() {
        return firmwareRelease;
    }

    /** Changes {@link #getFirmwareRelease()}. */
    public void setFirmwareRelease(int firmwareRelease) {
        this.firmwareRelease = firmwareRelease;
    }

    /** The signature that identifies the digitizer chip. */
    public int getAsicSignature() {
        return asicSignature;
    }

    /** Changes {@link #getAsicSignature()}. */
    public void setAsicSignature(int asicSignature) {
        this.asicSignature = asicSignature;
    }

    /** The kernel version as "major.minor.release", for example "1.4.12". */
    public String kernelVersion() {
        return kernelMajor + "." + kernelMinor + "." + kernelRelease;
    }

    /** The firmware version as "major.minor.release", for example "2.0.3". */
    public String firmwareVersion() {
        return firmwareMajor + "." + firmwareMinor + "." + firmwareRelease;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Version that = (Version) o;
        return kernelMajor == that.kernelMajor
                && kernelMinor == that.kernelMinor
                && kernelRelease == that.kernelRelease
                && firmwareMajor == that.firmwareMajor
                && firmwareMinor == that.firmwareMinor
                && firmwareRelease == that.firmwareRelease
                && asicSignature == that.asicSignature;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                kernelMajor, kernelMinor, kernelRelease, firmwareMajor, firmwareMinor,
                firmwareRelease, asicSignature);
    }

    @Override
    public String toString() {
        return "Version{kernelMajor=" + kernelMajor
                + ", kernelMinor=" + kernelMinor
                + ", kernelRelease=" + kernelRelease
                + ", firmwareMajor=" + firmwareMajor
                + ", firmwareMinor=" + firmwareMinor
                + ", firmwareRelease=" + firmwareRelease
                + ", asicSignature=" + asicSignature
                + "}";
    }
}
