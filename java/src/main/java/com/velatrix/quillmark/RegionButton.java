package com.velatrix.quillmark;

import java.util.Objects;

/**
 * A region that acts as a button: it shows a caption, or two stored graphics for its normal and
 * selected look, and reports touches as button events.
 */
public final class RegionButton extends Region {
    private int buttonParent;
    private boolean enable;
    private boolean highlightOnSelect;
    private boolean clearOnSelect;
    private boolean confirmOnSelect;
    private boolean useResource;
    private int buttonReserved;
    private String caption;
    private int resourceNumberNormal;
    private int resourceNumberSelected;

    /**
     * Makes a button with number 0, an empty rectangle, no caption, every flag off and transparent
     * colours.
     */
    public RegionButton() {
        this.caption = "";
    }

    /**
     * Makes a region as the pad describes it. The colours come as their unsigned components,
     * foreground then background, each red, green, blue, alpha.
     *
     * @param number and the arguments up to {@code backgroundAlpha}: the region's common
     *     fields, as {@link Region} takes them (colour components as unsigned bytes)
     * @param buttonParent the number of the region the button belongs to, 0 for none
     * @param enable whether the button responds to touches
     * @param highlightOnSelect whether the button is highlighted while it is selected
     * @param clearOnSelect whether the pad clears the button's display when it is selected
     * @param confirmOnSelect whether selecting the button confirms the input
     * @param useResource whether the button shows its two graphic resources instead of its caption
     * @param buttonReserved a reserved value, passed through
     * @param caption the text shown on the button; its UTF-8 form may be at most
     *     {@link Display#getMaxCaptionLength()} bytes long
     * @param resourceNumberNormal the graphic resource shown while the button is not selected
     * @param resourceNumberSelected the graphic resource shown while the button is selected
     */
    public RegionButton(
            int number,
            boolean acceptTouch,
            boolean decode,
            boolean visible,
            boolean inUse,
            boolean hasFrame,
            boolean outputToHost,
            boolean reserved1,
            int reserved2,
            int x1,
            int x2,
            int y1,
            int y2,
            byte foregroundRed,
            byte foregroundGreen,
            byte foregroundBlue,
            byte foregroundAlpha,
            byte backgroundRed,
            byte backgroundGreen,
            byte backgroundBlue,
            byte backgroundAlpha,
            int buttonParent,
            boolean enable,
            boolean highlightOnSelect,
            boolean clearOnSelect,
            boolean confirmOnSelect,
            boolean useResource,
            int buttonReserved,
            String caption,
            int resourceNumberNormal,
            int resourceNumberSelected) {
        super(
                number, acceptTouch, decode, visible, inUse, hasFrame, outputToHost, reserved1,
                reserved2, x1, x2, y1, y2, foregroundRed, foregroundGreen, foregroundBlue,
                foregroundAlpha, backgroundRed, backgroundGreen, backgroundBlue, backgroundAlpha);
        this.buttonParent = buttonParent;
        this.enable = enable;
        this.highlightOnSelect = highlightOnSelect;
        this.clearOnSelect = clearOnSelect;
        this.confirmOnSelect = confirmOnSelect;
        this.useResource = useResource;
        this.buttonReserved = buttonReserved;
        this.caption = caption;
        this.resourceNumberNormal = resourceNumberNormal;
        this.resourceNumberSelected = resourceNumberSelected;
    }

    /**
     * Makes a button that is in use, visible, enabled and takes touches, with its caption in
     * black on white. Note the order of the edges: both x values, then both y values.
     *
     * @param number the region number, from 1
     * @param x1 the left edge, in display pixels
     * @param x2 the right edge, in display pixels
     * @param y1 the top edge, in display pixels
     * @param y2 the bottom edge, in display pixels
     * @param caption the text shown on the button
     */
    public RegionButton(int number, int x1, int x2, int y1, int y2, String caption) {
        super(number, x1, x2, y1, y2, DEFAULT_FOREGROUND, DEFAULT_BACKGROUND);
        setAcceptTouch(true);
        this.enable = true;
        this.caption = caption;
    }

    /** The number of the region the button belongs to, 0 for none. */
    public int getButtonParent() {
        return buttonParent;
    }

    /** Changes {@link #getButtonParent()}. */
    public void setButtonParent(int buttonParent) {
        this.buttonParent = buttonParent;
    }

    /** Whether the button responds to touches. */
    public boolean isEnable() {
        return enable;
    }

    /** Changes {@link #isEnable()}. */
    public void setEnable(boolean enable) {
        this.enable = enable;
    }

    /** Whether the button is highlighted while it is selected. */
    public boolean isHighlightOnSelect() {
        return highlightOnSelect;
    }

    /** Changes {@link #isHighlightOnSelect()}. */
    public void setHighlightOnSelect(boolean highlightOnSelect) {
        this.highlightOnSelect = highlightOnSelect;
    }

    /** Whether the pad clears the button's display when it is selected. */
    public boolean isClearOnSelect() {
        return clearOnSelect;
    }

    /** Changes {@link #isClearOnSelect()}. */
    public void setClearOnSelect(boolean clearOnSelect) {
        this.clearOnSelect = clearOnSelect;
    }

    /** Whether selecting the button confirms the input. */
    public boolean isConfirmOnSelect() {
        return confirmOnSelect;
    }

    /** Changes {@link #isConfirmOnSelect()}. */
    public void setConfirmOnSelect(boolean confirmOnSelect) {
        this.confirmOnSelect = confirmOnSelect;
    }

    /** Whether the button shows its two graphic resources instead of its caption. */
    public boolean isUseResource() {
        return useResource;
    }

    /** Changes {@link #isUseResource()}. */
    public void setUseResource(boolean useResource) {
        this.useResource = useResource;
    }

    /** A reserved value, passed through. */
    public int getButtonReserved() {
        return buttonReserved;
    }

    /** Changes {@link #getButtonReserved()}. */
    public void setButtonReserved(int buttonReserved) {
        this.buttonReserved = buttonReserved;
    }

    /**
     * The text shown on the button; its UTF-8 form may be at most
     * {@link Display#getMaxCaptionLength()} bytes long.
     */
    public String getCaption() {
        return caption;
    }

    /** Changes {@link #getCaption()}. */
    public void setCaption(String caption) {
        this.caption = caption;
    }

    /** The graphic resource shown while the button is not selected. */
    public int getResourceNumberNormal() {
        return resourceNumberNormal;
    }

    /** Changes {@link #getResourceNumberNormal()}. */
    public void setResourceNumberNormal(int resourceNumberNormal) {
        this.resourceNumberNormal = resourceNumberNormal;
    }

    /** The graphic resource shown while the button is selected. */
    public int getResourceNumberSelected() {
        return resourceNumberSelected;
    }

    /** Changes {@link #getResourceNumberSelected()}. */
    public void setResourceNumberSelected(int resourceNumberSelected) {
        this.resourceNumberSelected = resourceNumberSelected;
    }

    @Override
    public int getType() {
        return BUTTON;
    }

    @Override
    public boolean equals(Object o) {
        if (!super.equals(o)) {
            return false;
        }
        RegionButton that = (RegionButton) o;
        return buttonParent == that.buttonParent
                && enable == that.enable
                && highlightOnSelect == that.highlightOnSelect
                && clearOnSelect == that.clearOnSelect
                && confirmOnSelect == that.confirmOnSelect
                && useResource == that.useResource
                && buttonReserved == that.buttonReserved
                && Objects.equals(caption, that.caption)
                && resourceNumberNormal == that.resourceNumberNormal
                && resourceNumberSelected == that.resourceNumberSelected;
    }

    @Override
    public int hashCode() {
        int result = super.hashCode();
        result = 31 * result + Objects.hash(
                buttonParent, enable, highlightOnSelect, clearOnSelect, confirmOnSelect,
                useResource, buttonReserved, caption, resourceNumberNormal, resourceNumberSelected);
        return result;
    }

    @Override
    public String toString() {
        return "RegionButton{" + describeFields()
                + ", buttonParent=" + buttonParent
                + ", enable=" + enable
                + ", highlightOnSelect=" + highlightOnSelect
                + ", clearOnSelect=" + clearOnSelect
                + ", confirmOnSelect=" + confirmOnSelect
                + ", useResource=" + useResource
                + ", buttonReserved=" + buttonReserved
                + ", caption=" + quote(caption)
                + ", resourceNumberNormal=" + resourceNumberNormal
                + ", resourceNumberSelected=" + resourceNumberSelected
                + "}";
    }

    private static String quote(String text) {
        return text == null ? "null" : '"' + text + '"';
    }
}
