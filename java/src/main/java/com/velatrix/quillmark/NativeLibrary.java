package com.velatrix.quillmark;

import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.nio.file.attribute.PosixFilePermissions;
import java.util.Locale;

/**
 * Loads the native half of the library once per class loader. It first asks
 * {@code java.library.path} for {@code libvelatrix-quillmark-jnibindings-<os>-<arch>}; when that
 * is not there it extracts the copy bundled in the jar under {@code native/<os>-<arch>/} to a
 * private temporary file and loads that. Every class with natives calls {@link #load()} first.
 */
public final class NativeLibrary {
    /** File-name stem of the JNI library; the platform suffix follows. */
    public static final String BASE_NAME = "velatrix-quillmark-jnibindings";

    private static boolean loaded;
    private static String source;

    private NativeLibrary() {}

    /**
     * Makes sure the natives are loaded.
     *
     * @throws UnsatisfiedLinkError naming the platform when neither the library path nor the jar has
     *     a native library for it
     */
    public static synchronized void load() {
        if (loaded) return;
        String libraryName = BASE_NAME + "-" + platformLibrarySuffix();
        UnsatisfiedLinkError fromPath;
        try {
            System.loadLibrary(libraryName);
            loaded = true;
            source = "java.library.path";
            return;
        } catch (UnsatisfiedLinkError e) {
            fromPath = e;
        }
        String resource = "/native/" + platformDirectory() + "/" + System.mapLibraryName(libraryName);
        try (InputStream in = NativeLibrary.class.getResourceAsStream(resource)) {
            if (in == null) {
                throw new UnsatisfiedLinkError("Velatrix Quillmark has no native library for " + platformDirectory()
                        + ": " + System.mapLibraryName(libraryName) + " is neither on java.library.path ("
                        + fromPath.getMessage() + ") nor in the jar at " + resource);
            }
            Path file = extract(in, libraryName);
            System.load(file.toString());
            loaded = true;
            source = file.toString();
        } catch (IOException e) {
            UnsatisfiedLinkError error = new UnsatisfiedLinkError("Velatrix Quillmark could not extract its native library for "
                    + platformDirectory() + ": " + e.getMessage());
            error.initCause(e);
            throw error;
        }
    }

    /** Where the natives came from: {@code "java.library.path"}, the extracted file, or null before {@link #load()}. */
    public static synchronized String source() {
        return source;
    }

    // Only this user may read or replace the extracted file, so nobody can swap the code that is
    // about to be loaded; it is removed when the VM exits.
    private static Path extract(InputStream in, String libraryName) throws IOException {
        Path file;
        try {
            file = Files.createTempFile(libraryName + "-", ".so",
                    PosixFilePermissions.asFileAttribute(PosixFilePermissions.fromString("rwx------")));
        } catch (UnsupportedOperationException notPosix) {
            file = Files.createTempFile(libraryName + "-", ".so");
        }
        file.toFile().deleteOnExit();
        Files.copy(in, file, StandardCopyOption.REPLACE_EXISTING);
        return file;
    }

    /** The platform as the jar names its resource folder, for example {@code linux-x86_64}. */
    static String platformDirectory() {
        return osName() + "-" + archName();
    }

    /** The platform as the library file names it, for example {@code linux-x64}. */
    static String platformLibrarySuffix() {
        String arch = archName();
        return osName() + "-" + (arch.equals("x86_64") ? "x64" : arch);
    }

    private static String osName() {
        String os = System.getProperty("os.name", "unknown").toLowerCase(Locale.ROOT);
        if (os.startsWith("linux")) return "linux";
        if (os.startsWith("mac") || os.startsWith("darwin")) return "mac";
        if (os.startsWith("windows")) return "windows";
        return os.replaceAll("[^a-z0-9]+", "");
    }

    private static String archName() {
        String arch = System.getProperty("os.arch", "unknown").toLowerCase(Locale.ROOT);
        switch (arch) {
            case "amd64":
            case "x86_64":
                return "x86_64";
            case "aarch64":
            case "arm64":
                return "aarch64";
            default:
                return arch.replaceAll("[^a-z0-9_]+", "");
        }
    }
}
