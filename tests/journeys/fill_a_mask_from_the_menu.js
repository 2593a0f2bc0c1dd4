"use strict"
include("steps/editor.js")
function fill(entry) { menus.trigger("Edit/Fill/" + entry); idle() }

step("a layer whose mask is painted on")
documents.create(40, 30, { background: "red" })
const top = layers.add({ name: "Top" })
top.fill("blue")
top.addMask()
layers.selectMask(top)
const mask = () => pixels.mask(top).pixel(5, 5)

step("a color fills the mask with its lightness")
fill("Light grey")
expect.equal(history.undoText, "Fill with light grey")
checkStep(mask, 255, 192)
fill("Grey")
expect.equal(history.undoText, "Fill mask")
fill("Black")
expect.equal([mask(), pixels.merged.pixel(5, 5)], [0, "#ffff0000"])
expect.equal(pixels.layer(top).pixel(5, 5), "#ff0000ff", "the pixels are as they were")

step("the keys take the colors of masks")
application.foreground = "white"
application.background = "black"
input.key("Alt+Backspace")
idle()
expect.equal([history.undoText, mask()], ["Fill with foreground", 255])
input.key("Ctrl+Backspace")
idle()
expect.equal([history.undoText, mask()], ["Fill with background", 0])

step("transparent hides the layer")
fill("White")
fill("Transparent")
expect.equal(history.undoText, "Fill with transparent")
checkStep(() => pixels.merged.pixel(5, 5), "#ff0000ff", "#ffff0000")

step("through the selection")
documents.active.select({ x: 10, y: 0, width: 10, height: 30 })
fill("White")
expect.equal(pixels.mask(top).region(9, 5, 3, 1), [0, 255, 255])
expect.equal(pixels.mask(top).region(19, 5, 2, 1), [255, 0])

step("a layer with locked pixels keeps its mask open, and is not cleaned up")
top.locks = ["pixels"]
layers.selectMask(top)
idle()
const steps = history.count
dialogs.expect({ title: application.name, text: "Cannot fill. Layer is locked.", answer: "Close" })
menus.trigger("Edit/Clean up alpha")
idle()
expect.equal(history.count, steps)
checkAtRest()
