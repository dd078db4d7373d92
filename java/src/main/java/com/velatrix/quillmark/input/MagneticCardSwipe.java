package com.velatrix.quillmark.input;

import java.util.Objects;

/**
 * A magnetic card swiped through the pad's reader: four header bytes and the text of the card's
 * three tracks as the reader read them. A track that filled its whole field may run on into the
 * text of the next track.
 */
public final class MagneticCardSwipe extends InputEvent {
    private final int header1;
    private final int header2;
    private final int header3;
    private final int header4;
    private final String track1;
    private final String track2;
    private final String track3;

    /**
     * Makes a card swipe event.
     *
     * @param header1 the first header byte
     * @param header2 the second header byte
     * @param header3 the third header byte
     * @param header4 the fourth header byte
     * @param track1 the text of track 1
     * @param track2 the text of track 2
     * @param track3 the text of track 3
     */
    public MagneticCardSwipe(
            int header1,
            int header2,
            int header3,
            int header4,
            String track1,
            String track2,
            String track3) {
        this.header1 = header1;
        this.header2 = header2;
        this.header3 = header3;
        this.header4 = header4;
        this.track1 = track1;
        this.track2 = track2;
        this.track3 = track3;
    }

    /** The first header byte. */
    public int getHeader1() {
        return header1;
    }

    /** The second header byte. */
    public int getHeader2() {
        return header2;
    }

    /** The third header byte. */
    public int getHeader3() {
        return header3;
    }

    /** The fourth header byte. */
    public int getHeader4() {
        return header4;
    }

    /** The text of track 1. */
    public String getTrack1() {
        return track1;
    }

    /** The text of track 2. */
    public String getTrack2() {
        return track2;
    }

    /** The text of track 3. */
    public String getTrack3() {
        return track3;
    }

    @Override
    public boolean equals(Object o) {
        if (this == o) {
            return true;
        }
        if (o == null || getClass() != o.getClass()) {
            return false;
        }
        MagneticCardSwipe that = (MagneticCardSwipe) o;
        return header1 == that.header1
                && header2 == that.header2
                && header3 == that.header3
                && header4 == that.header4
                && Objects.equals(track1, that.track1)
                && Objects.equals(track2, that.track2)
                && Objects.equals(track3, that.track3);
    }

    @Override
    public int hashCode() {
        return Objects.hash(
                header1, header2, header3, header4, track1, track2, track3);
    }

    @Override
    public String toString() {
        return "MagneticCardSwipe{header1=" + header1
                + ", header2=" + header2
                + ", header3=" + header3
                + ", header4=" + header4
                + ", track1=" + quote(track1)
                + ", track2=" + quote(track2)
                + ", track3=" + quote(track3)
                + "}";
    }

    private static String quote(String text) {
        return text == null ? "null" : '"' + text + '"';
    }
}
