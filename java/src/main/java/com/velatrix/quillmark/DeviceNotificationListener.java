package com.velatrix.quillmark;

/**
 * Hears pads arrive and leave. Calls come on the library's hot-plug thread, not on the thread that
 * registered the listener; keep them short and hand work to your own threads.
 */
public interface DeviceNotificationListener {
    /** A pad appeared; {@code path} is what {@link Device#getPath()} of its {@link Device} says. */
    default void deviceAdded(String path) {}

    /** A pad went away; an open {@link Device} with this path has already been closed. */
    default void deviceRemoved(String path) {}
}
