package com.velatrix.quillmark;

import com.velatrix.quillmark.input.ADCChannelValues;
import com.velatrix.quillmark.input.ADCScanValues;
import com.velatrix.quillmark.input.ButtonEvent;
import com.velatrix.quillmark.input.Coordinate;
import com.velatrix.quillmark.input.DebugCoordinate;
import com.velatrix.quillmark.input.MagneticCardSwipe;

/**
 * Receives a pad's input. Every method has an empty default body, so a listener overrides only
 * what it needs. Calls arrive on the thread that runs {@link Device#read()} (or the device's
 * background reader, see {@link Device#startReading()}), one input report at a time: first
 * {@link #rawInputReport} with the report's bytes, then the decoded event, if the report has one.
 */
public interface InputListener {
    /** A pen or touch position; an {@link com.velatrix.quillmark.input.ExtendedCoordinate} also names the region under it. */
    default void coordinate(Device device, Coordinate coordinate) {}

    /** A button region was touched, moved over, released or pressed (down and up inside it). */
    default void button(Device device, ButtonEvent event) {}

    /** A magnetic card was swiped through the pad's reader. */
    default void magneticCardSwipe(Device device, MagneticCardSwipe swipe) {}

    /** A diagnostic scan of the digitizer's converters. */
    default void adcScanValues(Device device, ADCScanValues values) {}

    /** A diagnostic sample of one converter channel. */
    default void adcChannelValues(Device device, ADCChannelValues values) {}

    /** A diagnostic coordinate sample with the digitizer's raw values. */
    default void debugCoordinate(Device device, DebugCoordinate coordinate) {}

    /** Every input report as it came from the pad, report id first; the array is the listener's to keep. */
    default void rawInputReport(Device device, byte[] report) {}
}
