package com.velatrix.quillmark;

import java.util.List;
import java.util.concurrent.CopyOnWriteArrayList;

/**
 * Entry point of the library: starts it, lists the attached pads and tells listeners when pads
 * arrive or leave.
 *
 * <pre>{@code
 * DeviceManager.init();
 * for (Device pad : DeviceManager.getAttachedDevices()) System.out.println(pad);
 * }</pre>
 *
 * Call {@link #init()} once, from one thread, before anything else but the version methods.
 */
public final class DeviceManager {
    static {
        NativeLibrary.load();
    }

    /** Event code of a pad that arrived. */
    public static final int DEVICE_ADDED = 0;
    /** Event code of a pad that left. */
    public static final int DEVICE_REMOVED = 1;

    private static final List<DeviceNotificationListener> listeners = new CopyOnWriteArrayList<>();

    private DeviceManager() {}

    /** Starts the library and its hot-plug watch; pads arriving and leaving then reach the listeners. */
    public static native void init();

    /**
     * Shuts the library down: closes the drivers and stops the hot-plug watch. Open devices must be
     * closed first. {@link #init()} may be called again afterwards.
     */
    public static native void destroy();

    /**
     * The pads attached now, in the order the drivers list them; empty when there are none. The
     * returned devices are not open yet.
     *
     * @throws VelatrixException when listing failed
     */
    public static native Device[] getAttachedDevices();

    /** The library's version text, for example {@code "2.0.98"}; works before {@link #init()}. */
    public static native String getLibraryVersion();

    public static native int getLibraryVersionMajor();

    public static native int getLibraryVersionMinor();

    public static native int getLibraryVersionRelease();

    /** The build date text the library carries. */
    public static native String getLibraryBuildDateString();

    public static void addDeviceNotificationListener(DeviceNotificationListener listener) {
        if (listener == null) throw new NullPointerException("listener");
        listeners.add(listener);
    }

    public static void removeDeviceNotificationListener(DeviceNotificationListener listener) {
        listeners.remove(listener);
    }

    /**
     * Called by the library on its hot-plug thread. A listener that throws does not keep the others
     * from hearing the event; its exception goes to the thread's uncaught-exception handler.
     */
    static void pushDeviceNotification(int event, String path) {
        for (DeviceNotificationListener listener : listeners) {
            try {
                if (event == DEVICE_ADDED) {
                    listener.deviceAdded(path);
                } else if (event == DEVICE_REMOVED) {
                    listener.deviceRemoved(path);
                }
            } catch (RuntimeException e) {
                Thread current = Thread.currentThread();
                current.getUncaughtExceptionHandler().uncaughtException(current, e);
            }
        }
    }
}
