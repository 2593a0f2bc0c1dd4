"use strict"
include("steps/editor.js")

step("select a part of the picture")
const picture = documents.create(40, 30)
picture.select({ x: 10, y: 5, width: 20, height: 10 })
expect.equal(menus.find("Selection/Deselect").enabled, true)

step("a fill inside changes that part and no other")
application.foreground = "red"
tools.activate("Fillcan")
option("m_pContiguousChb").setChecked(false)
paint(15, 10)
const counts = pixels.merged.histogram()
expect.equal([counts.green[0], counts.green[255]], [200, 1000])
expect.equal(pixels.merged.region(9, 5, 2, 1), ["#ffffffff", "#ffff0000"])

step("the selection comes and goes with the history")
undo()
expect.equal(pixels.selection.bounds, { x: 10, y: 5, width: 20, height: 10 })
undo()
expect.equal(pixels.hasSelection, false)
history.index = 2
input.key("Ctrl+D")
idle()
checkStep(() => pixels.hasSelection, true, false)
expect.equal(pixels.merged.pixel(15, 10), "#ffff0000")
checkAtRest()
