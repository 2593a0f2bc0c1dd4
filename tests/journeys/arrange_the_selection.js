"use strict"
include("steps/editor.js")
const bounds = () => pixels.selection.bounds
const rect = (x, y, width, height) => ({ x: x, y: y, width: width, height: height })
function choose(entry) { menus.trigger("Selection/" + entry); idle() }
const enabled = entries => entries.map(entry => menus.find("Selection/" + entry).enabled)

step("select all, invert and deselect are steps")
documents.create(41, 30)
expect.equal(enabled(["Select all", "Deselect", "Invert selection", "Arrange Selection"]),
             [true, false, false, false])
choose("Select all")
expect.equal(history.undoText, "Select all")
checkStep(bounds, null, rect(0, 0, 41, 30))
expect.equal(enabled(["Select all", "Deselect", "Invert selection", "Arrange Selection"]),
             [true, true, true, true])
input.key("Ctrl+Shift+I")
idle()
expect.equal([history.undoText, pixels.hasSelection], ["Invert selection", false])
undo()
input.key("Ctrl+D")
idle()
expect.equal([history.undoText, pixels.hasSelection], ["Deselect", false])

step("the inverse of a half is the other half")
documents.active.select(rect(0, 0, 20, 30))
choose("Invert selection")
checkStep(bounds, rect(0, 0, 20, 30), rect(20, 0, 21, 30))
choose("Invert selection")
expect.equal(bounds(), rect(0, 0, 20, 30))

// The middle of 41 by 30 is pixel (20, 14), and that of the rectangle is pixel (8, 7).
step("the selection moves to edges and middle, and the pixels stay")
const start = rect(6, 5, 6, 6)
documents.active.select(start)
const picture = pixels.merged.checksum()
const places = [
    ["Center", "Align center", rect(18, 12, 6, 6)],
    ["Horizontal center", "Horizontal center", rect(18, 5, 6, 6)],
    ["Vertical center", "Vertical center", rect(6, 12, 6, 6)],
    ["Align left", "Align left", rect(0, 5, 6, 6)],
    ["Align right", "Align right", rect(35, 5, 6, 6)],
    ["Align top", "Align top", rect(6, 0, 6, 6)],
    ["Align bottom", "Align bottom", rect(6, 24, 6, 6)],
]
for (const [entry, text, place] of places) {
    choose("Arrange Selection/" + entry)
    expect.equal(history.undoText, text)
    checkStep(bounds, start, place)
    undo()
}
expect.equal(pixels.merged.checksum(), picture)

step("a selection that is there already leaves no step")
choose("Arrange Selection/Center")
const steps = history.count
choose("Arrange Selection/Center")
expect.equal(history.count, steps)

step("all layers and none")
layers.add({ name: "Middle" })
layers.add({ name: "Top" })
idle()
expect.equal(enabled(["All layers", "Deselect layers"]), [true, true])
input.key("Ctrl+Alt+A")
idle()
expect.equal(layers.selected.map(layer => layer.name), layers.all.map(layer => layer.name))
expect.equal(enabled(["All layers", "Deselect layers"]), [false, true])
expect.equal(menus.find("Edit/Fill").enabled, false, "a fill needs one layer")
choose("Deselect layers")
expect.equal(layers.selected, [])
expect.equal(enabled(["All layers", "Deselect layers"]), [true, false])

step("a picture is not the other's business")
documents.create(10, 10)
expect.equal(enabled(["Deselect", "Arrange Selection"]), [false, false])
checkAtRest()
