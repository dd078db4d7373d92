package com.velatrix.quillmark.input;

/**
 * Something a pad reported as input. Events are immutable. Each records when it was made, on the
 * {@link System#nanoTime()} clock, so that the time between events can be measured; that time is
 * not part of an event's value and is left out of {@code equals}, {@code hashCode} and
 * {@code toString}.
 */
public abstract class InputEvent {
    private final long timestampNanos = System.nanoTime();

    /** Makes an event stamped with the current time. */
    protected InputEvent() {}

    /**
     * When the event was made, in {@link System#nanoTime()} units; only differences between such
     * values mean anything.
     */
    public long getTimestampNanos() {
        return timestampNanos;
    }
}
