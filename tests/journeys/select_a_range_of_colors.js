"use strict"
include("steps/editor.js")
const rect = (x, y, width, height) => ({ x: x, y: y, width: width, height: height })
const swatches = () => widgets.findAll("ColorSwatch").length

// The dialog keeps the picture locked, so the editor isn't at rest while it stands.
function pick(x, y, expected) {
    input.click(x, y)
    for (let tries = 0; swatches() !== expected && tries < 500; ++tries) wait(10)
    expect.equal(swatches(), expected, "swatches")
}

step("a picture of three colors")
documents.create(30, 20)
documents.active.select(rect(0, 0, 10, 20))
menus.trigger("Edit/Fill/Red")
documents.active.select(rect(10, 0, 10, 20))
menus.trigger("Edit/Fill/Blue")
documents.active.select(null)
idle()

step("click red, and blue, in the picture")
menus.trigger("Selection/Color range")
expect.equal(widgets.find("SelectColorRangeDlg").title, "Select color range")
expect.equal(menus.find("Selection/Select all").enabled, false)
pick(5, 5, 1)
pick(15, 5, 2)
pick(6, 6, 2)

step("take the dialog's answer")
widgets.find("SelectColorRangeDlg/m_pToleranceSpn").setValue(10)
input.key("Return")
idle()
expect.equal(pixels.selection.bounds, rect(0, 0, 20, 20))
checkStep(() => pixels.selection.bounds, null, rect(0, 0, 20, 20))
expect.equal(history.undoText, "Color range selection")

step("leave the next one with Escape")
menus.trigger("Selection/Color range")
pick(5, 5, 1)
input.key("Escape")
idle()
expect.equal(pixels.selection.bounds, rect(0, 0, 20, 20))
expect.equal(history.undoText, "Color range selection")
checkAtRest()
