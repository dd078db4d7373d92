package com.velatrix.quillmark;

import java.util.Objects;

/**
 * How and when the pad sends its input: the output report, whether it transmits at once or only on
 * confirmation or request, compression and resolution, and the packet rate. A write can also make
 * the settings the pad's defaults, or restore its factory settings.
 */
public final class OutputConfiguration {
    /** Output mode: the pad sends its input as it comes. */
    public static final int REAL_TIME = 0;
    /** Output mode: the pad holds its input until the user confirms. */
    public static final int TRANSMIT_ON_CONFIRM = 1;
    /** Output mode: the pad holds its input until the host asks for it. */
    public static final int TRANSMIT_ON_HOST_COMMAND = 2;

    /** Compression: plain low-resolution coordinates. */
    public static final int UNCOMPRESSED_LORES = 0;
    /** Compression: compressed low-resolution coordinates. */
    public static final int COMPRESSED_LORES = 1;
    /** Compression: plain high-resolution coordinates. */
    public static final int UNCOMPRESSED_HIRES = 2;
    /** Compression: compressed high-resolution coordinates. */
    public static final int COMPRESSED_HIRES = 3;

    private long outputReport;
    private int outputMode;
    private boolean compressionEnable;
    private boolean compressionHiRes;
    private int packetsPerSecond;
    private boolean saveAsDefault;
    private boolean loadFactorySettings;

    /**
     * Makes an output configuration with every value 0: real time, uncompressed, low resolution.
     */
    public OutputConfiguration() {}

    /**
     * Makes an output configuration.
     *
     * @param outputReport the output report setting, as the firmware codes it
     * @param outputMode when the pad transmits: {@link #REAL_TIME}, {@link #TRANSMIT_ON_CONFIRM} or
     *     {@link #TRANSMIT_ON_HOST_COMMAND}
     * @param compression compression and resolution: {@link #UNCOMPRESSED_LORES},
     *     {@link #COMPRESSED_LORES}, {@link #UNCOMPRESSED_HIRES} or {@link #COMPRESSED_HIRES}
     * @param packetsPerSecond the number of packets the pad sends per second (0 to 65535)
     * @param saveAsDefault whether a write makes these settings the pad's defaults
     * @param loadFactorySettings whether a write restores the factory settings
     */
    public OutputConfiguration(
            long outputReport,
            int outputMode,
            int compression,
            int packetsPerSecond,
            boolean saveAsDefault,
            boolean loadFactorySettings) {
        this.outputReport = outputReport;
        this.outputMode = outputMode;
        setCompression(compression);
        this.packetsPerSecond = packetsPerSecond;
        this.saveAsDefault = saveAsDefault;
        this.loadFactorySettings = loadFactorySettings;
    }

    /** The output report setting, as the firmware codes it. */
    public long getOutputReport() {
        return outputReport;
    }

    /** Changes {@link #getOutputReport()}. */
    public void setOutputReport(long outputReport) {
        this.outputReport = outputReport;
    }

    /**
     * When the pad transmits: {@link #REAL_TIME}, {@link #TRANSMIT_ON_CONFIRM} or
     * {@link #TRANSMIT_ON_HOST_COMMAND}; other codes are kept as the pad sent them.
     */
    public int getOutputMode() {
        return outputMode;
    }

    /** Changes {@link #getOutputMode()}. */
    public void setOutputMode(int outputMode) {
        this.outputMode = outputMode;
    }

    /** Whether the pad compresses its coordinates. */
    public boolean isCompressionEnable() {
        return compressionEnable;
    }

    /** Changes {@link #isCompressionEnable()}. */
    public void setCompressionEnable(boolean compressionEnable) {
        this.compressionEnable = compressionEnable;
    }

    /** Whether the pad sends high-resolution coordinates. */
    public boolean isCompressionHiRes() {
        return compressionHiRes;
    }

    /** Changes {@link #isCompressionHiRes()}. */
    public void setCompressionHiRes(boolean compressionHiRes) {
        this.compressionHiRes = compressionHiRes;
    }

    /** The number of packets the pad sends per second (0 to 65535). */
    public int getPacketsPerSecond() {
        return packetsPerSecond;
    }

    /** Changes {@link #getPacketsPerSecond()}. */
    public void setPacketsPerSecond(int packetsPerSecond) {
        this.packetsPerSecond = packetsPerSecond;
    }

    /** Whether a write makes these settings the pad's defaults. */
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

    /**
     * Compression and resolution as one code: {@link #UNCOMPRESSED_LORES},
     * {@link #COMPRESSED_LORES}, {@link #UNCOMPRESSED_HIRES} or {@link #COMPRESSED_HIRES}.
     */
    public int getCompression() {
        return (compressionEnable ? 1 : 0) | (compressionHiRes ? 2 : 0);
    }

    /**
     * Sets compression and resolution from one code (see {@link #getCompression()}): bit 0 turns
     * compression on, bit 1 high resolution; other bits are ignored.
     */
    public void setCompression(int compression) {
        this.compressionEnable = (compression & 1) != 0;
        this.compressionHiRes = (compression & 2) != 0;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        OutputConfiguration that = (OutputConfiguration) o;
        return outputReport == that.outputReport
                && outputMode == that.outputMode
                && compressionEnable == that.compressionEnable
                && compressionHiRes == that.compressionHiRes
                && packetsPerSecond == that.packetsPerSecond
                && saveAsDefault == that.saveAsDefault
                && loadFactorySettings == that.loadFactorySettings;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                outputReport, outputMode, compressionEnable, compressionHiRes, packetsPerSecond,
                saveAsDefault, loadFactorySettings);
    }

    @Override
    public String toString() {
        return "OutputConfiguration{outputReport=" + outputReport
                + ", outputMode=" + outputMode
                + ", compressionEnable=" + compressionEnable
                + ", compressionHiRes=" + compressionHiRes
                + ", packetsPerSecond=" + packetsPerSecond
                + ", saveAsDefault=" + saveAsDefault
                + ", loadFactorySettings=" + loadFactorySettings
                + "}";
    }
}
