package com.velatrix.quillmark;

import java.util.Arrays;
import java.util.Objects;

/**
 * A screen stored on the pad: a set of regions shown together, a time-out after which the pad moves
 * on to another screen, and for each region the screen to go to when that region is chosen. The pad
 * keeps at most 30 regions per screen.
 */
public final class Screen {
    private int number;
    private boolean resetTimeoutOnActivity;
    private int[] reserved;
    private int timeout;
    private int timeoutNextScreen;
    private int[] regionIndexes;
    private int[] screenNextList;

    /** Makes an empty screen with number 0, no time-out and no regions. */
    public Screen() {
        this.reserved = new int[14];
        this.regionIndexes = new int[0];
        this.screenNextList = new int[0];
    }

    /**
     * Makes a screen.
     *
     * @param number the screen number
     * @param resetTimeoutOnActivity whether activity on the pad restarts the time-out
     * @param reserved the fourteen reserved bytes, passed through; the array itself, not a copy
     * @param timeout the time-out after which the pad shows the next screen, 0 for none; the unit
     *     is the pad's
     * @param timeoutNextScreen the screen shown when the time-out expires
     * @param regionIndexes the numbers of the regions on this screen, at most 30; the array itself,
     *     not a copy
     * @param screenNextList for each entry of the region list, the screen to go to when that region
     *     is chosen; the array itself, not a copy
     */
    public Screen(
            int number,
            boolean resetTimeoutOnActivity,
            int[] reserved,
            int timeout,
            int timeoutNextScreen,
            int[] regionIndexes,
            int[] screenNextList) {
        this.number = number;
        this.resetTimeoutOnActivity = resetTimeoutOnActivity;
        this.reserved = reserved;
        this.timeout = timeout;
        this.timeoutNextScreen = timeoutNextScreen;
        this.regionIndexes = regionIndexes;
        this.screenNextList = screenNextList;
    }

    /** The screen number. */
    public int getNumber() {
        return number;
    }

    /** Changes {@link #getNumber()}. */
    public void setNumber(int number) {
        this.number = number;
    }

    /** Whether activity on the pad restarts the time-out. */
    public boolean isResetTimeoutOnActivity() {
        return resetTimeoutOnActivity;
    }

    /** Changes {@link #isResetTimeoutOnActivity()}. */
    public void setResetTimeoutOnActivity(boolean resetTimeoutOnActivity) {
        this.resetTimeoutOnActivity = resetTimeoutOnActivity;
    }

    /** The fourteen reserved bytes, passed through; the array itself, not a copy. */
    public int[] getReserved() {
        return reserved;
    }

    /** Changes {@link #getReserved()}. */
    public void setReserved(int[] reserved) {
        this.reserved = reserved;
    }

    /**
     * The time-out after which the pad shows the next screen, 0 for none; the unit is the pad's.
     */
    public int getTimeout() {
        return timeout;
    }

    /** Changes {@link #getTimeout()}. */
    public void setTimeout(int timeout) {
        this.timeout = timeout;
    }

    /** The screen shown when the time-out expires. */
    public int getTimeoutNextScreen() {
        return timeoutNextScreen;
    }

    /** Changes {@link #getTimeoutNextScreen()}. */
    public void setTimeoutNextScreen(int timeoutNextScreen) {
        this.timeoutNextScreen = timeoutNextScreen;
    }

    /** The numbers of the regions on this screen, at most 30; the array itself, not a copy. */
    public int[] getRegionIndexes() {
        return regionIndexes;
    }

    /** Changes {@link #getRegionIndexes()}. */
    public void setRegionIndexes(int[] regionIndexes) {
        this.regionIndexes = regionIndexes;
    }

    /**
     * For each entry of the region list, the screen to go to when that region is chosen; the array
     * itself, not a copy.
     */
    public int[] getScreenNextList() {
        return screenNextList;
    }

    /** Changes {@link #getScreenNextList()}. */
    public void setScreenNextList(int[] screenNextList) {
        this.screenNextList = screenNextList;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        Screen that = (Screen) o;
        return number == that.number
                && resetTimeoutOnActivity == that.resetTimeoutOnActivity
                && Arrays.equals(reserved, that.reserved)
                && timeout == that.timeout
                && timeoutNextScreen == that.timeoutNextScreen
                && Arrays.equals(regionIndexes, that.regionIndexes)
                && Arrays.equals(screenNextList, that.screenNextList);
    }

    @Override
    public int hashCode() {
        int result = Objects.hash(
                number, resetTimeoutOnActivity, timeout, timeoutNextScreen);
        result = 31 * result + Arrays.hashCode(reserved);
        result = 31 * result + Arrays.hashCode(regionIndexes);
        result = 31 * result + Arrays.hashCode(screenNextList);
        return result;
    }

    @Override
    public String toString() {
        return "Screen{number=" + number
                + ", resetTimeoutOnActivity=" + resetTimeoutOnActivity
                + ", reserved=" + Arrays.toString(reserved)
                + ", timeout=" + timeout
                + ", timeoutNextScreen=" + timeoutNextScreen
                + ", regionIndexes=" + Arrays.toString(regionIndexes)
                + ", screenNextList=" + Arrays.toString(screenNextList)
                + "}";
    }
}
