"use strict"
include("steps/editor.js")

step("a picture with layers, a mask, locks and modes")
const picture = documents.create(40, 30, { background: "teal", dpi: 150 })
const top = layers.add({ name: "Sun & sky" })
top.fill("#c0ffd040", { x: 5, y: 5, width: 20, height: 10 })
top.opacity = 0.75
top.blendMode = "Screen"
top.addMask({ reveals: true })
top.fillMask(64, { x: 5, y: 5, width: 10, height: 10 })
top.linked = false
layers.add({ name: "Hidden" }).visible = false
layers.at(0).locks = ["pixels", "position"]
const look = pixels.merged.checksum()

step("save it in the editor's own file")
const file = fileNamed("layers.ora")
dialogs.expectFile(file, { title: "Save as" })
input.key("Ctrl+Shift+S")
expect.equal([picture.path, picture.modified], [file, false])

step("close it and open it again")
input.key("Ctrl+W")
expect.equal(documents.count, 0)
const again = documents.open(file)
expect.equal([again.width, again.height, Math.round(again.dpi)], [40, 30, 150])
expect.equal(layers.all.map(layer => layer.name), ["Hidden", "Sun & sky", "Background"])
expect.equal(pixels.merged.checksum(), look)

step("everything of the layers is there")
const sun = layers.named("Sun & sky")
expect.near(sun.opacity, 0.75, 0.005)
expect.equal([sun.blendMode, sun.hasMask, sun.maskReveals, sun.linked], ["Screen", true, true, false])
expect.equal(pixels.mask(sun).region(14, 10, 2, 1), [64, 255])
expect.equal(pixels.layer(sun).pixel(24, 14), "#c0ffd040")
expect.equal([layers.at(0).visible, layers.at(0).locks], [false, ["pixels", "position"]])

step("a change and a plain save")
sun.opacity = 1
expect.equal(again.modified, true)
input.key("Ctrl+S")
expect.equal(again.modified, false)
checkAtRest()
