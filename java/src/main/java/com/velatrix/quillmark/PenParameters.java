package com.velatrix.quillmark;

import java.util.Objects;

/**
 * Tuning of pen detection: proximity and automatic thresholds, averaging, debounce, error and
 * offset correction, tip polarity and the interrupt rate. Units and valid ranges are the pad
 * firmware's. The three flags and the reserved bits share one byte when sent and are not masked.
 */
public final class PenParameters {
    private int proximity;
    private int autoPenThreshold;
    private int autoTouchThreshold;
    private int adcAverage;
    private int coordinateAverage;
    private int offsetInterval;
    private int debouncePreDown;
    private int debouncePostDown;
    private int debouncePreUp;
    private int debouncePostUp;
    private boolean errorCorrectionEnabled;
    private int reserved1;
    private boolean offsetCorrectionEnabled;
    private int reserved2;
    private boolean tipInverted;
    private int reserved3;
    private int interruptRate;

    /** Makes pen parameters with every option off and every value 0. */
    public PenParameters() {}

    /**
     * Makes pen parameters.
     *
     * @param proximity the proximity setting (0 to 65535)
     * @param autoPenThreshold the threshold for detecting the pen automatically (0 to 65535)
     * @param autoTouchThreshold the threshold for detecting touch automatically (0 to 65535)
     * @param adcAverage the averaging of converter samples (0 to 255)
     * @param coordinateAverage the averaging of coordinates (0 to 255)
     * @param offsetInterval the interval between offset corrections (0 to 65535)
     * @param debouncePreDown the debounce before the pen goes down (0 to 255)
     * @param debouncePostDown the debounce after the pen goes down (0 to 255)
     * @param debouncePreUp the debounce before the pen goes up (0 to 255)
     * @param debouncePostUp the debounce after the pen goes up (0 to 255)
     * @param errorCorrectionEnabled whether the pad applies its error-correction table
     * @param reserved1 three reserved bits (0 to 7), passed through
     * @param offsetCorrectionEnabled whether offset correction is on
     * @param reserved2 a reserved bit (0 or 1), passed through
     * @param tipInverted whether the tip switch reads inverted
     * @param reserved3 a reserved bit (0 or 1), passed through
     * @param interruptRate the interrupt rate (0 to 65535)
     */
    public PenParameters(
            int proximity,
            int autoPenThreshold,
            int autoTouchThreshold,
            int adcAverage,
            int coordinateAverage,
            int offsetInterval,
            int debouncePreDown,
            int debouncePostDown,
            int debouncePreUp,
            int debouncePostUp,
            boolean errorCorrectionEnabled,
            int reserved1,
            boolean offsetCorrectionEnabled,
            int reserved2,
            boolean tipInverted,
            int reserved3,
            int interruptRate) {
        this.proximity = proximity;
        this.autoPenThreshold = autoPenThreshold;
        this.autoTouchThreshold = autoTouchThreshold;
        this.adcAverage = adcAverage;
        this.coordinateAverage = coordinateAverage;
        this.offsetInterval = offsetInterval;
        this.debouncePreDown = debouncePreDown;
        this.debouncePostDown = debouncePostDown;
        this.debouncePreUp = debouncePreUp;
        this.debouncePostUp = debouncePostUp;
        this.errorCorrectionEnabled = errorCorrectionEnabled;
        this.reserved1 = reserved1;
        this.offsetCorrectionEnabled = offsetCorrectionEnabled;
        this.reserved2 = reserved2;
        this.tipInverted = tipInverted;
        this.reserved3 = reserved3;
        this.interruptRate = interruptRate;
    }

    /** The proximity setting (0 to 65535). */
    public int getProximity() {
        return proximity;
    }

    /** Changes {@link #getProximity()}. */
    public void setProximity(int proximity) {
        this.proximity = proximity;
    }

    /** The threshold for detecting the pen automatically (0 to 65535). */
    public int getAutoPenThreshold() {
        return autoPenThreshold;
    }

    /** Changes {@link #getAutoPenThreshold()}. */
    public void setAutoPenThreshold(int autoPenThreshold) {
        this.autoPenThreshold = autoPenThreshold;
    }

    /** The threshold for detecting touch automatically (0 to 65535). */
    public int getAutoTouchThreshold() {
        return autoTouchThreshold;
    }

    /** Changes {@link #getAutoTouchThreshold()}. */
    public void setAutoTouchThreshold(int autoTouchThreshold) {
        this.autoTouchThreshold = autoTouchThreshold;
    }

    /** The averaging of converter samples (0 to 255). */
    public int getAdcAverage() {
        return adcAverage;
    }

    /** Changes {@link #getAdcAverage()}. */
    public void setAdcAverage(int adcAverage) {
        this.adcAverage = adcAverage;
    }

    /** The averaging of coordinates (0 to 255). */
    public int getCoordinateAverage() {
        return coordinateAverage;
    }

    /** Changes {@link #getCoordinateAverage()}. */
    public void setCoordinateAverage(int coordinateAverage) {
        this.coordinateAverage = coordinateAverage;
    }

    /** The interval between offset corrections (0 to 65535). */
    public int getOffsetInterval() {
        return offsetInterval;
    }

    /** Changes {@link #getOffsetInterval()}. */
    public void setOffsetInterval(int offsetInterval) {
        this.offsetInterval = offsetInterval;
    }

    /** The debounce before the pen goes down (0 to 255). */
    public int getDebouncePreDown() {
        return debouncePreDown;
    }

    /** Changes {@link #getDebouncePreDown()}. */
    public void setDebouncePreDown(int debouncePreDown) {
        this.debouncePreDown = debouncePreDown;
    }

    /** The debounce after the pen goes down (0 to 255). */
    public int getDebouncePostDown() {
        return debouncePostDown;
    }

    /** Changes {@link #getDebouncePostDown()}. */
    public void setDebouncePostDown(int debouncePostDown) {
        this.debouncePostDown = debouncePostDown;
    }

    /** The debounce before the pen goes up (0 to 255). */
    public int getDebouncePreUp() {
        return debouncePreUp;
    }

    /** Changes {@link #getDebouncePreUp()}. */
    public void setDebouncePreUp(int debouncePreUp) {
        this.debouncePreUp = debouncePreUp;
    }

    /** The debounce after the pen goes up (0 to 255). */
    public int getDebouncePostUp() {
        return debouncePostUp;
    }

    /** Changes {@link #getDebouncePostUp()}. */
    public void setDebouncePostUp(int debouncePostUp) {
        this.debouncePostUp = debouncePostUp;
    }

    /** Whether the pad applies its error-correction table. */
    public boolean isErrorCorrectionEnabled() {
        return errorCorrectionEnabled;
    }

    /** Changes {@link #isErrorCorrectionEnabled()}. */
    public void setErrorCorrectionEnabled(boolean errorCorrectionEnabled) {
        this.errorCorrectionEnabled = errorCorrectionEnabled;
    }

    /** Three reserved bits (0 to 7), passed through. */
    public int getReserved1() {
        return reserved1;
    }

    /** Changes {@link #getReserved1()}. */
    public void setReserved1(int reserved1) {
        this.reserved1 = reserved1;
    }

    /** Whether offset correction is on. */
    public boolean isOffsetCorrectionEnabled() {
        return offsetCorrectionEnabled;
    }

    /** Changes {@link #isOffsetCorrectionEnabled()}. */
    public void setOffsetCorrectionEnabled(boolean offsetCorrectionEnabled) {
        this.offsetCorrectionEnabled = offsetCorrectionEnabled;
    }

    /** A reserved bit (0 or 1), passed through. */
    public int getReserved2() {
        return reserved2;
    }

    /** Changes {@link #getReserved2()}. */
    public void setReserved2(int reserved2) {
        this.reserved2 = reserved2;
    }

    /** Whether the tip switch reads inverted. */
    public boolean isTipInverted() {
        return tipInverted;
    }

    /** Changes {@link #isTipInverted()}. */
    public void setTipInverted(boolean tipInverted) {
        this.tipInverted = tipInverted;
    }

    /** A reserved bit (0 or 1), passed through. */
    public int getReserved3() {
        return reserved3;
    }

    /** Changes {@link #getReserved3()}. */
    public void setReserved3(int reserved3) {
        this.reserved3 = reserved3;
    }

    /** The interrupt rate (0 to 65535). */
    public int getInterruptRate() {
        return interruptRate;
    }

    /** Changes {@link #getInterruptRate()}. */
    public void setInterruptRate(int interruptRate) {
        this.interruptRate = interruptRate;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        PenParameters that = (PenParameters) o;
        return proximity == that.proximity
                && autoPenThreshold == that.autoPenThreshold
                && autoTouchThreshold == that.autoTouchThreshold
                && adcAverage == that.adcAverage
                && coordinateAverage == that.coordinateAverage
                && offsetInterval == that.offsetInterval
                && debouncePreDown == that.debouncePreDown
                && debouncePostDown == that.debouncePostDown
                && debouncePreUp == that.debouncePreUp
                && debouncePostUp == that.debouncePostUp
                && errorCorrectionEnabled == that.errorCorrectionEnabled
                && reserved1 == that.reserved1
                && offsetCorrectionEnabled == that.offsetCorrectionEnabled
                && reserved2 == that.reserved2
                && tipInverted == that.tipInverted
                && reserved3 == that.reserved3
                && interruptRate == that.interruptRate;
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                proximity, autoPenThreshold, autoTouchThreshold, adcAverage, coordinateAverage,
                offsetInterval, debouncePreDown, debouncePostDown, debouncePreUp, debouncePostUp,
                errorCorrectionEnabled, reserved1, offsetCorrectionEnabled, reserved2, tipInverted,
                reserved3, interruptRate);
    }

    @Override
    public String toString() {
        return "PenParameters{proximity=" + proximity
                + ", autoPenThreshold=" + autoPenThreshold
                + ", autoTouchThreshold=" + autoTouchThreshold
                + ", adcAverage=" + adcAverage
                + ", coordinateAverage=" + coordinateAverage
                + ", offsetInterval=" + offsetInterval
                + ", debouncePreDown=" + debouncePreDown
                + ", debouncePostDown=" + debouncePostDown
                + ", debouncePreUp=" + debouncePreUp
                + ", debouncePostUp=" + debouncePostUp
                + ", errorCorrectionEnabled=" + errorCorrectionEnabled
                + ", reserved1=" + reserved1
                + ", offsetCorrectionEnabled=" + offsetCorrectionEnabled
                + ", reserved2=" + reserved2
                + ", tipInverted=" + tipInverted
                + ", reserved3=" + reserved3
                + ", interruptRate=" + interruptRate
                + "}";
    }
}
