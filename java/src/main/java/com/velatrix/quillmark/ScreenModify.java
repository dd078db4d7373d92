package com.velatrix.quillmark;

import java.util.Arrays;
import java.util.Objects;

/**
 * One change to a stored screen, made in place: add a region to it together with the screen that
 * choosing the region leads to, remove a region from it, or set its time-out. Several of the three
 * may be requested at once.
 */
public final class ScreenModify {
    private int[] reserved;
    private boolean addRegion;
    private boolean removeRegion;
    private boolean setTimeout;
    private int screenIndex;
    private int regionIndex;
    private int regionScreenNext;
    private int timeoutValue;
    private int timeoutScreenNext;

    /** Makes a screen change that requests nothing, for screen 0. */
    public ScreenModify() {
        this.reserved = new int[6];
    }

    /**
     * Makes a screen change.
     *
     * @param reserved the six reserved bytes, passed through; the array itself, not a copy
     * @param addRegion whether the region is added to the screen
     * @param removeRegion whether the region is removed from the screen
     * @param setTimeout whether the screen's time-out is set
     * @param screenIndex the number of the screen to change
     * @param regionIndex the number of the region to add or remove
     * @param regionScreenNext for an added region, the screen to go to when it is chosen
     * @param timeoutValue the new time-out, 0 for none
     * @param timeoutScreenNext the screen shown when the new time-out expires
     */
    public ScreenModify(
            int[] reserved,
            boolean addRegion,
            boolean removeRegion,
            boolean setTimeout,
            int screenIndex,
            int regionIndex,
            int regionScreenNext,
            int timeoutValue,
            int timeoutScreenNext) {
        this.reserved = reserved;
        this.addRegion = addRegion;
        this.removeRegion = removeRegion;
        this.setTimeout = setTimeout;
        this.screenIndex = screenIndex;
        this.regionIndex = regionIndex;
        this.regionScreenNext = regionScreenNext;
        this.timeoutValue = timeoutValue;
        this.timeoutScreenNext = timeoutScreenNext;
    }

    /** The six reserved bytes, passed through; the array itself, not a copy. */
    public int[] getReserved() {
        return reserved;
    }

    /** Changes {@link #getReserved()}. */
    public void setReserved(int[] reserved) {
        this.reserved = reserved;
    }

    /** Whether the region is added to the screen. */
    public boolean isAddRegion() {
        return addRegion;
    }

    /** Changes {@link #isAddRegion()}. */
    public void setAddRegion(boolean addRegion) {
        this.addRegion = addRegion;
    }

    /** Whether the region is removed from the screen. */
    public boolean isRemoveRegion() {
        return removeRegion;
    }

    /** Changes {@link #isRemoveRegion()}. */
    public void setRemoveRegion(boolean removeRegion) {
        this.removeRegion = removeRegion;
    }

    /** Whether the screen's time-out is set. */
    public boolean isSetTimeout() {
        return setTimeout;
    }

    /** Changes {@link #isSetTimeout()}. */
    public void setSetTimeout(boolean setTimeout) {
        this.setTimeout = setTimeout;
    }

    /** The number of the screen to change. */
    public int getScreenIndex() {
        return screenIndex;
    }

    /** Changes {@link #getScreenIndex()}. */
    public void setScreenIndex(int screenIndex) {
        this.screenIndex = screenIndex;
    }

    /** The number of the region to add or remove. */
    public int getRegionIndex() {
        return regionIndex;
    }

    /** Changes {@link #getRegionIndex()}. */
    public void setRegionIndex(int regionIndex) {
        this.regionIndex = regionIndex;
    }

    /** For an added region, the screen to go to when it is chosen. */
    public int getRegionScreenNext() {
        return regionScreenNext;
    }

    /** Changes {@link #getRegionScreenNext()}. */
    public void setRegionScreenNext(int regionScreenNext) {
        this.regionScreenNext = regionScreenNext;
    }

    /** The new time-out, 0 for none. */
    public int getTimeoutValue() {
        return timeoutValue;
    }

    /** Changes {@link #getTimeoutValue()}. */
    public void setTimeoutValue(int timeoutValue) {
        this.timeoutValue = timeoutValue;
    }

    /** The screen shown when the new time-out expires. */
    public int getTimeoutScreenNext() {
        return timeoutScreenNext;
    }

    /** Changes {@link #getTimeoutScreenNext()}. */
    public void setTimeoutScreenNext(int timeoutScreenNext) {
        this.timeoutScreenNext = timeoutScreenNext;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        ScreenModify that = (ScreenModify) o;
        return Arrays.equals(reserved, that.reserved)
                && addRegion == that.addRegion
                && removeRegion == that.removeRegion
                && setTimeout == that.setTimeout
                && screenIndex == that.screenIndex
                && regionIndex == that.regionIndex
                && regionScreenNext == that.regionScreenNext
                && timeoutValue == that.timeoutValue
                && timeoutScreenNext == that.timeoutScreenNext;
    }

    @Override
    public int hashCode() {
        int result = Objects.hash(
                addRegion, removeRegion, setTimeout, screenIndex, regionIndex, regionScreenNext,
                timeoutValue, timeoutScreenNext);
        result = 31 * result + Arrays.hashCode(reserved);
        return result;
    }

    @Override
    public String toString() {
        return "ScreenModify{reserved=" + Arrays.toString(reserved)
                + ", addRegion=" + addRegion
                + ", removeRegion=" + removeRegion
                + ", setTimeout=" + setTimeout
                + ", screenIndex=" + screenIndex
                + ", regionIndex=" + regionIndex
                + ", regionScreenNext=" + regionScreenNext
                + ", timeoutValue=" + timeoutValue
                + ", timeoutScreenNext=" + timeoutScreenNext
                + "}";
    }
}
