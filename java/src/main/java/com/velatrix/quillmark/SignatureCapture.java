package com.velatrix.quillmark;

import com.velatrix.quillmark.input.ButtonEvent;
import com.velatrix.quillmark.input.Coordinate;
import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.geom.Ellipse2D;
import java.awt.geom.Path2D;
import java.awt.image.BufferedImage;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Objects;
import javax.imageio.ImageIO;

/**
 * Collects a pad's pen input into strokes and renders them as an image or as SVG. A stroke runs
 * from the pen touching down to its lifting; hovering (in range, tip up) is not ink, and neither is
 * a touch on a button region, which the library delivers as a {@link ButtonEvent} and which ends
 * the stroke under way.
 *
 * <pre>{@code
 * SignatureCapture signature = new SignatureCapture();
 * signature.attach(device);
 * device.startReading();          // the signer signs ...
 * device.stopReading();
 * signature.writePng(Path.of("signature.png"), 320, 240);
 * }</pre>
 *
 * Input arrives on the reading thread while the application asks for strokes and images on its
 * own; every method is thread-safe and images are drawn from a snapshot. Points are in the pad's
 * coordinate space and are drawn where they are, without scaling. Attach a capture to one pad at a
 * time: strokes of two pads would interleave.
 */
public final class SignatureCapture implements InputListener {

    /**
     * One inked position.
     *
     * @param x pad x
     * @param y pad y
     * @param timeNanos when it arrived, in nanoseconds after the first point of the capture
     */
    public record Point(int x, int y, long timeNanos) {}

    /** The points from one touch-down to the following lift, in order; never empty. */
    public record Stroke(List<Point> points) {
        public Stroke {
            points = List.copyOf(points);
            if (points.isEmpty()) throw new IllegalArgumentException("A stroke has at least one point");
        }
    }

    /** The ink colour: dark blue. */
    public static final Color INK = new Color(0x10, 0x20, 0x80);
    /** The ink width in pixels. */
    public static final float INK_WIDTH = 2.5f;

    private final List<Stroke> finished = new ArrayList<>();
    // The stroke under way while the tip is down, else null.
    private List<Point> current;
    private long firstTimestamp;
    private boolean started;

    public SignatureCapture() {}

    /** Adds this capture as an input listener of the pad. */
    public void attach(Device device) {
        device.addInputListener(this);
    }

    /** Removes this capture from the pad's input listeners; the strokes stay. */
    public void detach(Device device) {
        device.removeInputListener(this);
    }

    @Override
    public synchronized void coordinate(Device device, Coordinate coordinate) {
        if (!coordinate.isTipSwitch()) {
            endStroke();
            return;
        }
        long timestamp = coordinate.getTimestampNanos();
        if (!started) {
            started = true;
            firstTimestamp = timestamp;
        }
        if (current == null) current = new ArrayList<>();
        current.add(new Point(coordinate.getX(), coordinate.getY(), timestamp - firstTimestamp));
    }

    @Override
    public synchronized void button(Device device, ButtonEvent event) {
        endStroke();
    }

    private void endStroke() {
        if (current != null) finished.add(new Stroke(current));
        current = null;
    }

    /** The strokes so far, the one under way included, as an unchangeable snapshot. */
    public synchronized List<Stroke> getStrokes() {
        if (current == null) return List.copyOf(finished);
        List<Stroke> all = new ArrayList<>(finished);
        all.add(new Stroke(current));
        return List.copyOf(all);
    }

    /** How many points all strokes hold together. */
    public synchronized int getPointCount() {
        int count = current == null ? 0 : current.size();
        for (Stroke stroke : finished) count += stroke.points().size();
        return count;
    }

    /** True until the first inked point arrives, and again after {@link #clear()}. */
    public synchronized boolean isEmpty() {
        return finished.isEmpty() && current == null;
    }

    /** Forgets every stroke; times of later points count from the next point. */
    public synchronized void clear() {
        finished.clear();
        current = null;
        started = false;
    }

    // ---- Rendering ---------------------------------------------------------------------------

    /** The strokes drawn on white, anti-aliased, with round caps and joins; a tap is a dot. */
    public BufferedImage toImage(int width, int height) {
        checkSize(width, height);
        List<Stroke> strokes = getStrokes();
        BufferedImage image = new BufferedImage(width, height, BufferedImage.TYPE_INT_RGB);
        Graphics2D g = image.createGraphics();
        try {
            g.setColor(Color.WHITE);
            g.fillRect(0, 0, width, height);
            g.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
            g.setRenderingHint(RenderingHints.KEY_STROKE_CONTROL, RenderingHints.VALUE_STROKE_PURE);
            // Pad coordinates name pixels; their centres are half a pixel in.
            g.translate(0.5, 0.5);
            g.setColor(INK);
            g.setStroke(new BasicStroke(INK_WIDTH, BasicStroke.CAP_ROUND, BasicStroke.JOIN_ROUND));
            for (Stroke stroke : strokes) {
                List<Point> points = stroke.points();
                Point first = points.get(0);
                if (isDot(points)) {
                    // A zero-length line leaves no trace with every renderer; a disc always does.
                    g.fill(new Ellipse2D.Double(first.x() - INK_WIDTH / 2, first.y() - INK_WIDTH / 2, INK_WIDTH, INK_WIDTH));
                    continue;
                }
                Path2D.Double path = new Path2D.Double();
                path.moveTo(first.x(), first.y());
                for (Point p : points.subList(1, points.size())) path.lineTo(p.x(), p.y());
                g.draw(path);
            }
        } finally {
            g.dispose();
        }
        return image;
    }

    /** {@link #toImage(int, int)} at the size of the pad's display. */
    public BufferedImage toImage(Display display) {
        return toImage(display.getWidth(), display.getHeight());
    }

    /** Writes {@link #toImage(int, int)} as a PNG file. */
    public void writePng(Path file, int width, int height) throws IOException {
        Objects.requireNonNull(file, "file");
        BufferedImage image = toImage(width, height);
        if (!ImageIO.write(image, "png", file.toFile())) throw new IOException("No PNG writer available");
    }

    /**
     * The strokes as an SVG document: a white background and one path per stroke
     * ({@code M x y L x y ...}); a tap is a zero-length path, which round caps show as a dot.
     */
    public String toSvg(int width, int height) {
        checkSize(width, height);
        StringBuilder svg = new StringBuilder();
        svg.append("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
        svg.append(String.format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 %d %d\">\n",
                width, height, width, height));
        svg.append(String.format("<rect width=\"%d\" height=\"%d\" fill=\"#ffffff\"/>\n", width, height));
        svg.append(String.format("<g fill=\"none\" stroke=\"#%06x\" stroke-width=\"%s\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n",
                INK.getRGB() & 0xFFFFFF, Float.toString(INK_WIDTH)));
        for (Stroke stroke : getStrokes()) {
            List<Point> points = stroke.points();
            svg.append("<path d=\"M ").append(points.get(0).x()).append(' ').append(points.get(0).y());
            List<Point> rest = points.size() == 1 ? points : points.subList(1, points.size());
            for (Point p : rest) svg.append(" L ").append(p.x()).append(' ').append(p.y());
            svg.append("\"/>\n");
        }
        svg.append("</g>\n</svg>\n");
        return svg.toString();
    }

    /** Writes {@link #toSvg(int, int)} as a UTF-8 file. */
    public void writeSvg(Path file, int width, int height) throws IOException {
        Objects.requireNonNull(file, "file");
        Files.writeString(file, toSvg(width, height), StandardCharsets.UTF_8);
    }

    private static boolean isDot(List<Point> points) {
        Point first = points.get(0);
        for (Point p : points) {
            if (p.x() != first.x() || p.y() != first.y()) return false;
        }
        return true;
    }

    private static void checkSize(int width, int height) {
        if (width <= 0 || height <= 0) {
            throw new IllegalArgumentException("Image size " + width + " x " + height + " is not positive");
        }
    }
}
