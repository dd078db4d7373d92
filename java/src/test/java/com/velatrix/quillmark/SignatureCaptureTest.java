package com.velatrix.quillmark;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.velatrix.quillmark.input.ButtonDown;
import com.velatrix.quillmark.input.Coordinate;
import java.awt.image.BufferedImage;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import javax.imageio.ImageIO;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Pen input becomes strokes, and strokes become PNG and SVG with ink where the pen went. */
class SignatureCaptureTest {

    private static void pen(SignatureCapture capture, boolean tip, int x, int y) {
        capture.coordinate(null, new Coordinate(tip, true, x, y));
    }

    /** Two strokes: a horizontal line at y = 40 from x = 20 to 120, then a tap at (200, 150). */
    private static SignatureCapture twoStrokes() {
        SignatureCapture capture = new SignatureCapture();
        pen(capture, true, 5, 5);
        capture.clear();  // forgets that stroke; times count from the next point
        pen(capture, false, 10, 10);  // hovering is not ink
        for (int x = 20; x <= 120; x += 10) pen(capture, true, x, 40);
        capture.button(null, new ButtonDown(5, 5, 3));  // a button ends the stroke under way
        pen(capture, true, 200, 150);
        pen(capture, false, 200, 150);
        return capture;
    }

    @Test
    void strokesRunFromTouchDownToLiftWithTheirTimes() {
        SignatureCapture capture = twoStrokes();
        List<SignatureCapture.Stroke> strokes = capture.getStrokes();
        assertEquals(2, strokes.size());
        assertEquals(11, strokes.get(0).points().size());
        assertEquals(new SignatureCapture.Point(20, 40, 0), strokes.get(0).points().get(0));
        assertEquals(List.of(200, 150), List.of(strokes.get(1).points().get(0).x(), strokes.get(1).points().get(0).y()));
        long last = -1;
        for (SignatureCapture.Stroke stroke : strokes) {
            for (SignatureCapture.Point point : stroke.points()) {
                assertTrue(point.timeNanos() >= last, "times never go back");
                last = point.timeNanos();
            }
        }
    }

    @Test
    void pngHasInkOnTheStrokesAndNowhereElse(@TempDir Path dir) throws Exception {
        Path file = dir.resolve("signature.png");
        twoStrokes().writePng(file, 320, 240);
        BufferedImage image = ImageIO.read(file.toFile());
        assertEquals(320, image.getWidth());
        assertEquals(240, image.getHeight());
        int[][] inked = {{20, 40}, {70, 40}, {120, 40}, {200, 150}};
        for (int[] p : inked) {
            int rgb = image.getRGB(p[0], p[1]) & 0xFFFFFF;
            assertTrue((rgb & 0xFF) > ((rgb >> 16) & 0xFF), String.format("ink at %d,%d: %06x", p[0], p[1], rgb));
        }
        int[][] blank = {{0, 0}, {70, 60}, {160, 100}, {319, 239}, {5, 5}};
        for (int[] p : blank) assertEquals(0xFFFFFF, image.getRGB(p[0], p[1]) & 0xFFFFFF, p[0] + "," + p[1]);
    }

    @Test
    void svgHoldsOnePathPerStroke(@TempDir Path dir) throws Exception {
        Path file = dir.resolve("signature.svg");
        twoStrokes().writeSvg(file, 320, 240);
        String svg = Files.readString(file);
        assertTrue(svg.contains("viewBox=\"0 0 320 240\""), svg);
        Matcher paths = Pattern.compile("<path d=\"([^\"]*)\"").matcher(svg);
        assertTrue(paths.find());
        assertTrue(paths.group(1).startsWith("M 20 40 L 30 40"), paths.group(1));
        assertTrue(paths.find());
        assertTrue(paths.group(1).startsWith("M 200 150"), paths.group(1));
        assertTrue(!paths.find(), "two paths only");
    }
}
