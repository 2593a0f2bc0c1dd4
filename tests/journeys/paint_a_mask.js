"use strict"
include("steps/editor.js")
const panel = widgets.find("LayersWidget")
const seen = () => pixels.merged.pixel(5, 5)

step("blue over red, with a mask that shows all")
documents.create(40, 30, { background: "red" })
const top = layers.add({ name: "Top" })
top.fill("blue")
panel.find("m_pMaskBtn").click()
idle()
expect.equal([top.hasMask, top.maskReveals, panel.find("m_pMaskBtn").enabled], [true, true, false])

step("black in the mask hides the layer")
clickRow(0, "mask")
expect.equal(top.maskSelected, true)
application.foreground = "black"
tools.activate("Fillcan")
paint(5, 5)
expect.equal(history.undoText, "Fill with mask")
checkStep(seen, "#ff0000ff", "#ffff0000")
expect.equal(pixels.mask(top).pixel(5, 5), 0)
expect.equal(pixels.layer(top).pixel(5, 5), "#ff0000ff", "the pixels are as they were")

step("white shows it again")
application.foreground = "white"
paint(5, 5)
checkStep(seen, "#ffff0000", "#ff0000ff")

step("a click on the picture paints the pixels again")
clickRow(0, "picture")
application.foreground = "lime"
paint(5, 5)
expect.equal([history.undoText, seen()], ["Fill", "#ff00ff00"])

step("delete the mask, then add one that hides")
clickRow(0, "mask")
panel.find("m_pDeleteBtn").click()
idle()
expect.equal([top.hasMask, layers.count], [false, 2])
const button = panel.find("m_pMaskBtn")
input.click(button.geometry.width / 2, button.geometry.height / 2, { in: button, modifiers: "Shift" })
idle()
expect.equal([top.hasMask, top.maskReveals], [true, false])
checkStep(seen, "#ff00ff00", "#ffff0000")
checkAtRest()
