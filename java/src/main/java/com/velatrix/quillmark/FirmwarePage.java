package com.velatrix.quillmark;

import java.util.Arrays;
import java.util.Objects;

/**
 * One page of a firmware image, to be written to the pad at its address. The checksum comes with
 * the image and is sent as it is; the pad checks it.
 */
public final class FirmwarePage {
    private int address;
    private byte[] data;
    private byte checksum;

    /** Makes an empty page at address 0. */
    public FirmwarePage() {
        this.data = new byte[0];
    }

    /**
     * Makes a firmware page.
     *
     * @param address the address the page is written to
     * @param data the page's bytes, at most 128
     * @param checksum the page's checksum as the firmware image gives it
     */
    public FirmwarePage(int address, byte[] data, byte checksum) {
        this.address = address;
        this.data = data;
        this.checksum = checksum;
    }

    /** The address the page is written to. */
    public int getAddress() {
        return address;
    }

    /** Changes {@link #getAddress()}. */
    public void setAddress(int address) {
        this.address = address;
    }

    /** The page's bytes, at most 128; the array itself, not a copy. */
    public byte[] getData() {
        return data;
    }

    /** Changes {@link #getData()}. */
    public void setData(byte[] data) {
        this.data = data;
    }

    /** The page's checksum as the firmware image gives it. */
    public byte getChecksum() {
        return checksum;
    }

    /** Changes {@link #getChecksum()}. */
    public void setChecksum(byte checksum) {
        this.checksum = checksum;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        FirmwarePage that = (FirmwarePage) o;
        return address == that.address
                && Arrays.equals(data, that.data)
                && checksum == that.checksum;
    }

    @Override
    public int hashCode() {
        int result = Objects.hash(address, checksum);
        result = 31 * result + Arrays.hashCode(data);
        return result;
    }

    @Override
    public String toString() {
        return "FirmwarePage{address=" + address
                + ", data=" + bytesToString(data)
                + ", checksum=" + checksum
                + "}";
    }

    private static String bytesToString(byte[] bytes) {
        return bytes == null ? "null" : "byte[" + bytes.length + "]";
    }
}
