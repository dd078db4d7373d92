package com.velatrix.quillmark;

/**
 * Raised when the pad or the library refuses an operation: a request the pad did not answer, a
 * pad that is not open, an argument that is missing or too long. The message says what went
 * wrong; for failures below the Java layer it is the library's own last error text.
 */
public class VelatrixException extends RuntimeException {
    private static final long serialVersionUID = 1L;

    /**
     * Makes an exception.
     *
     * @param message what went wrong
     */
    public VelatrixException(String message) {
        super(message);
    }
}
