"use strict"
include("steps/editor.js")

function place(row) { const { x, y } = layers.at(row).offset; return [x, y] }
function drag(from, to, options) { input.drag([from, to], options); idle() }

step("the move tool is there from the start")
documents.create(60, 40)
expect.equal(tools.active, "Move tool")
layers.at(0).fill("black", { x: 0, y: 0, width: 20, height: 40 })

step("a drag moves the layer")
drag([30, 20], [35, 22])
expect.equal(history.texts.slice(-1), ["Move"])
checkStep(() => place(0), [0, 0], [5, 2])
expect.equal(pixels.merged.pixel(24, 30), "#ff000000")
undo()

step("what is selected in the panel moves together")
layers.add()
layers.at(0).fill("red", { x: 40, y: 10, width: 10, height: 10 })
layers.select(layers.all)
drag([30, 20], [33, 20])
expect.equal([place(0), place(1)], [[3, 0], [3, 0]])
checkStep(() => [place(0), place(1)], [[0, 0], [0, 0]], [[3, 0], [3, 0]])
undo()

step("a locked layer is told about")
layers.select(layers.at(0))
layers.at(0).locks = ["position"]
dialogs.expect({ title: "Zenkari", text: "Cannot move the image. Layer is locked.", answer: "Close" })
drag([30, 20], [33, 20])
expect.equal(place(0), [0, 0])
layers.at(0).locks = []

step("Ctrl moves with any tool")
input.key("F")
expect.equal(tools.active, "Fillcan")
input.hold("Ctrl")
expect.equal(tools.running, "Move tool")
drag([30, 20], [32, 21])
input.hold("")
expect.equal(tools.running, "Fillcan")
expect.equal(place(0), [2, 1])
checkAtRest()

step("the frame lies around the layer")
input.key("V")
const frame = option("m_pShowTransformControls")
expect.equal(frame.text, "Show frame")
frame.setChecked(true)
drag([30, 20], [33, 20])
expect.equal(place(0), [5, 1])
frame.setChecked(false)
checkAtRest()

step("what is dragged snaps to the canvas, and its way is told, when the menu says so")
documents.create(60, 40)
view.scale = 4
view.centerOn(30, 20)
layers.at(0).fill("white")
layers.add()
layers.at(0).fill("red", { x: 0, y: 0, width: 10, height: 10 })
documents.active.select({ x: 0, y: 0, width: 10, height: 10 })
menus.trigger("View/Snap")
menus.trigger("View/Show Drag Offset")
// 2 pixels are 8 on the screen: the piece's edge goes to the canvas' edge, 50 to the right.
input.press(5, 5)
input.move(54, 25)
expect.equal(widgets.find("dragOffsetTag").text, "+50, +20 px")
input.release(54, 25)
idle()
expect.equal(pixels.selection.bounds, { x: 50, y: 20, width: 10, height: 10 })
expect.equal(widgets.shows("dragOffsetTag"), false)
undo()
// Shift suspends it.
input.drag([[5, 5], [54, 25]], { modifiers: "Shift" })
idle()
expect.equal(pixels.selection.bounds, { x: 49, y: 20, width: 10, height: 10 })
menus.trigger("View/Snap")
menus.trigger("View/Show Drag Offset")
checkAtRest()
