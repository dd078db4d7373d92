package com.velatrix.quillmark;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertInstanceOf;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.awt.Color;
import java.util.Arrays;
import java.util.List;
import org.junit.jupiter.api.Test;

/** The pad's own interface from Java: regions by type, screens and stored resources. */
class RegionsScreensResourcesTest {

    /** What a device region keeps: it has no visible or in-use flag, so those read back false. */
    private static <R extends Region> R asDeviceRegion(R region) {
        region.setVisible(false);
        region.setInUse(false);
        region.setColorForeground(new Color(9, 8, 7, 6));
        region.setColorBackground(new Color(250, 240, 230, 220));
        return region;
    }

    private static Region deviceRegion(Device device, int number) {
        for (Region region : device.getDeviceRegions()) if (region.getNumber() == number) return region;
        throw new AssertionError("no device region " + number);
    }

    @Test
    void deviceRegionsRoundTripByType() {
        try (Pads.OpenPad open = Pads.open(Pads.SCREENS)) {
            Device device = open.device;
            RegionGraphic graphic = asDeviceRegion(new RegionGraphic(9, 300, 400, 100, 200, 3));
            graphic.setHorizontalJustification(5);
            graphic.setVerticalJustification(9);
            graphic.setOutputToHost(true);
            RegionText text = asDeviceRegion(new RegionText(10, 300, 400, 200, 250, 4, 2));
            text.setHorizontalJustification(1);
            text.setVerticalJustification(15);
            RegionButton button = asDeviceRegion(new RegionButton(11, 0, 50, 400, 450, "Sign"));
            button.setConfirmOnSelect(true);
            // A button drawn from resources keeps their numbers instead of a caption.
            RegionButton pictured = asDeviceRegion(new RegionButton(14, 60, 110, 400, 450, ""));
            pictured.setUseResource(true);
            pictured.setResourceNumberNormal(3);
            pictured.setResourceNumberSelected(4);
            RegionContainer container = asDeviceRegion(new RegionContainer(12, 10, 700, 20, 300));
            container.setInkWidth(2);
            RegionLine line = asDeviceRegion(new RegionLine(13, 10, 700, 310, 312, 2));
            for (Region region : List.of(graphic, text, button, pictured, container, line)) {
                device.setDeviceRegion(region);
                assertEquals(region, deviceRegion(device, region.getNumber()));
            }
            device.setRegionIndex(9);
            assertEquals(graphic, device.getDeviceRegion());

            // A type this library does not know comes back as a RegionNull with the common fields.
            device.setRegionIndex(12);
            byte[] report = new byte[device.getDisplayInfo().getMaxCaptionLength() + 34];
            report[0] = (byte) 0x98;
            device.getFeatureReport(report);
            report[2] = 9;
            device.setRegionIndex(12);
            device.setFeatureReport(report);
            device.setRegionIndex(12);
            Region unknown = device.getDeviceRegion();
            assertInstanceOf(RegionNull.class, unknown);
            assertEquals(Region.UNKNOWN, unknown.getType());
            assertEquals(List.of(12, 10, 700, 20, 300, container.getColorForeground()),
                    List.of(unknown.getNumber(), unknown.getX1(), unknown.getX2(), unknown.getY1(), unknown.getY2(),
                            unknown.getColorForeground()));
        }
    }

    @Test
    void regionTableHasOneObjectPerSlotAndLimitsCaptions() {
        for (Pads.OpenPad open : Pads.openAll(Pads.ANY)) {
            try (open) {
                Device device = open.device;
                Region[] regions = device.getRegions();
                assertEquals(device.getDisplayInfo().getRegionCount(), regions.length, open.toString());
                for (int i = 0; i < regions.length; i++) assertEquals(i + 1, regions[i].getNumber());

                int max = device.getDisplayInfo().getMaxCaptionLength();
                String longest = "é".repeat(max / 2) + "x".repeat(max % 2);  // counted in UTF-8 bytes
                RegionButton button = new RegionButton(2, 10, 100, 20, 60, longest);
                button.setButtonParent(1);
                button.setColorForeground(new Color(1, 2, 3, 4));
                device.setRegion(button);
                assertEquals(button, device.getRegions()[1], open.toString());
                for (String tooLong : new String[] {longest + "x", "x".repeat(max + 1)}) {
                    button.setCaption(tooLong);
                    assertEquals("Caption for button exceed maximum length.",
                            assertThrows(VelatrixException.class, () -> device.setRegion(button)).getMessage());
                }

                button.setCaption("Ok");
                button.setVisible(false);
                button.setColorForeground(new Color(40, 50, 60, 70));
                device.updateRegion(button);
                Region updated = device.getRegions()[1];
                assertEquals(List.of(false, new Color(40, 50, 60, 70)),
                        List.of(updated.isVisible(), updated.getColorForeground()));
            }
        }
    }

    @Test
    void screensRoundTripWithinTheirLimits() {
        try (Pads.OpenPad open = Pads.open(Pads.SCREENS)) {
            Device device = open.device;
            int[] reserved = new int[14];
            reserved[3] = 7;
            Screen screen = new Screen(5, true, reserved, 30, 2, new int[] {1, 5, 7}, new int[] {2, 3, 4});
            device.setScreen(screen);
            device.setScreenIndex(5);
            assertEquals(screen, device.getScreen());

            ScreenModify add = new ScreenModify();
            add.setAddRegion(true);
            add.setScreenIndex(5);
            add.setRegionIndex(8);
            add.setRegionScreenNext(1);
            device.modifyScreen(add);
            device.setScreenIndex(5);
            Screen modified = device.getScreen();
            assertArrayEquals(new int[] {1, 5, 7, 8}, modified.getRegionIndexes());
            assertArrayEquals(new int[] {2, 3, 4, 1}, modified.getScreenNextList());

            device.setScreen(new Screen(6, false, new int[14], 0, 0, new int[100], new int[100]));
            assertEquals("Region index data is too long", assertThrows(VelatrixException.class,
                    () -> device.setScreen(new Screen(6, false, new int[14], 0, 0, new int[101], new int[101]))).getMessage());

            device.setActiveScreen(5);
            assertEquals(5, open.pad.activeScreen());
            assertEquals(5, device.getActiveScreen());
        }
    }

    @Test
    void resourcesRoundTripAcrossChunks() {
        try (Pads.OpenPad open = Pads.open(Pads.SCREENS)) {
            Device device = open.device;
            byte[] graphic = new byte[3000];  // three chunks
            for (int i = 0; i < graphic.length; i++) graphic[i] = (byte) (i * 31);
            List<Resource> resources = List.of(new ResourceText(3, "Hello, pad ✓"), new ResourceGraphic(4, graphic),
                    new ResourceGraphic(5, Arrays.copyOf(graphic, 1024)));
            for (Resource resource : resources) {
                device.setResource(resource);
                device.setResourceIndex(resource.getResourceNumber());
                assertEquals(resource, device.getResource());
            }
            device.setResourceIndex(4);
            ResourceInfo info = device.getResourceInfo();
            assertEquals(List.of(4, Resource.GRAPHIC, 3000), List.of(info.getNumber(), info.getType(), info.getSize()));

            assertEquals("Text field is null, text field cannot be null.", assertThrows(VelatrixException.class,
                    () -> device.setResource(new ResourceText(6, null))).getMessage());
            assertEquals("Graphic field is null, graphic field cannot be null.", assertThrows(VelatrixException.class,
                    () -> device.setResource(new ResourceGraphic(6, null))).getMessage());

            device.deleteResource(4);
            device.setResourceIndex(4);
            assertInstanceOf(ResourceInvalid.class, device.getResource());
        }
    }
}
