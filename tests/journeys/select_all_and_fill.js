"use strict"
include("steps/editor.js")

step("select all and nothing, each a step")
documents.create(40, 30)
expect.equal(menus.find("Selection/Deselect").enabled, false)
input.key("Ctrl+A")
idle()
expect.equal(pixels.selection.bounds, { x: 0, y: 0, width: 40, height: 30 })
expect.equal(pixels.selection.histogram().value[255], 1200)
input.key("Ctrl+D")
idle()
checkStep(() => pixels.hasSelection, true, false)
undo()

step("a fill stays inside what is selected")
application.foreground = "red"
tools.activate("Fillcan")
paint(5, 5)
expect.equal(pixels.merged.histogram().green[0], 1200)
undo()
expect.equal(pixels.merged.histogram().green[255], 1200)
checkAtRest()
