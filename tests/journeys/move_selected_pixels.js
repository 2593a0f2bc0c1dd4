"use strict"
include("steps/editor.js")
include("steps/clipboard.js")

// A blue square, 10 by 10 from (10, 10), on white. It is selected, and dragged to (30, 15).
const blue = "#ff0000ff", white = "#ffffffff", nothing = "#00000000"
let picture = null

function fresh() {
    picture = documents.create(60, 40)
    layers.at(0).fill(blue, { x: 10, y: 10, width: 10, height: 10 })
    picture.select({ x: 10, y: 10, width: 10, height: 10 })
    tools.activate("Move tool")
    idle()
}

function float(options) {
    fresh()
    input.drag([[15, 15], [35, 20]], options)
    idle()
    expect.equal(picture.state, 1, "something floats")
    expect.equal(layers.at(0).offset, { x: 0, y: 0 })
}

function done() {
    expect.equal(picture.state, 0, "nothing floats")
    checkAtRest()
    if (picture.modified) {
        const question = "“" + picture.name + "” has changes that are not saved. Save them before it closes?"
        dialogs.expect({ title: application.name, text: question, answer: "Discard" })
    }
    expect.equal(picture.close(), true)
}

/// A color without the one that a transparent pixel keeps.
function shown(color) { return color.startsWith("#00") ? nothing : color }

/// What a person sees at the old place and the new one.
function seen() { return [pixels.merged.pixel(15, 15), pixels.merged.pixel(35, 20)].map(shown) }

/// The piece follows on a worker of its own.
function until(holds) { for (let i = 0; i < 2000 && !holds(); ++i) wait(5) }

/// The texts of the steps after the selection.
function steps() { return history.texts.slice(1) }

function isCut() {
    expect.equal(picture.state, 0)
    expect.equal(pixels.layer(layers.at(0)).pixel(35, 20), blue)
    expect.equal(shown(pixels.layer(layers.at(0)).pixel(15, 15)), nothing)
}

step("the piece follows the pointer and stays above the layer")
fresh()
input.press(15, 15)
input.move(35, 20)
until(() => seen()[1] === blue)
idle()
expect.equal(seen(), [nothing, blue])
expect.equal(picture.locked, true)
input.release(35, 20)
idle()
expect.equal([picture.locked, seen()], [false, [nothing, blue]])
expect.equal(pixels.selection.bounds, { x: 30, y: 15, width: 10, height: 10 })
expect.equal(steps(), [])
expect.equal(pixels.layer(layers.at(0)).pixel(35, 20), white)

step("a second drag goes on with it, and undo lands it first")
input.drag([[35, 20], [45, 25]])
idle()
expect.equal([steps(), pixels.merged.pixel(45, 25)], [[], blue])
undo()
expect.equal(steps(), ["Cut"])
expect.equal([seen(), pixels.merged.pixel(45, 25)], [[blue, white], white])
expect.equal(pixels.selection.bounds, { x: 10, y: 10, width: 10, height: 10 })
redo()
expect.equal([seen(), pixels.merged.pixel(45, 25)], [[nothing, white], blue])
done()

step("redo lands it, too, and what was undone is gone")
fresh()
layers.at(0).opacity = 0.5
undo()
input.drag([[15, 15], [35, 20]])
idle()
expect.equal(history.redoText, "Layer opacity")
redo()
expect.equal(steps(), ["Cut"])
isCut()
done()

step("any other step lands it before itself")
float()
layers.at(0).opacity = 0.5
idle()
expect.equal(steps(), ["Cut", "Layer opacity"])
isCut()
done()

step("a tool that reads pixels lands it before it reads")
float()
tools.activate("Magic wand")
// All that is like the landed piece is taken out of the selection.
dialogs.expect({ title: "Zenkari", text: "Warning. No pixels selected.", answer: "OK" })
input.hold("Alt")
paint(33, 17)
input.hold("")
isCut()
expect.equal(steps(), ["Cut", "Apply magic wand"])
done()

step("a fill lands it")
float()
picture.select(null)
application.foreground = "red"
tools.activate("Fillcan")
paint(35, 20)
expect.equal([steps()[0], history.texts.slice(-1)], ["Cut", ["Fill"]])
expect.equal(seen(), [nothing, "#ffff0000"])
done()

step("the fill menu lands it before it reads")
float()
menus.trigger("Edit/Fill/Red")
idle()
expect.equal(steps(), ["Cut", "Fill with red"])
expect.equal(seen(), [nothing, "#ffff0000"])
undo()
isCut()
done()

step("the dialog of the color range lands it before it reads")
float()
menus.trigger("Selection/Color range")
expect.equal(steps(), ["Cut"])
isCut()
input.key("Escape")
idle()
expect.equal(steps(), ["Cut"])
done()

step("a copy to the clipboard lands it")
float()
copyWith("Ctrl+C")
expect.equal(steps(), ["Cut"])
isCut()
done()

step("a paste lands it, on the layer and as a layer")
const green = "#ff00ff00"
for (const [key, text] of [["Ctrl+V", "Paste"], ["", "PasteAsNewLayer"]]) {
    float()
    faults.putForeignImage(4, 4, green)
    if (key) input.key(key)
    else menus.trigger("Edit/Paste as/New layer")
    idle()
    expect.equal(steps(), ["Cut", text])
    expect.equal([picture.state, seen()], [0, [nothing, blue]])
    undo()
    isCut()
    done()
}

step("a change of the selection lands it")
float()
menus.trigger("Selection/Invert selection")
idle()
expect.equal([steps()[0], steps().length], ["Cut", 2])
isCut()
undo()
expect.equal(pixels.selection.bounds, { x: 30, y: 15, width: 10, height: 10 })
isCut()
done()

step("its own layer goes away")
fresh()
layers.add()
layers.select(layers.at(1))
input.drag([[15, 15], [35, 20]])
idle()
expect.equal(picture.state, 1)
layers.at(1).remove()
idle()
expect.equal([picture.state, layers.count], [0, 1])
undo()
expect.equal(pixels.layer(layers.at(1)).pixel(35, 20), blue)
expect.equal(seen(), [nothing, blue])
undo()
expect.equal([history.redoText, seen()], ["Cut", [blue, white]])
done()

step("its own mask goes away")
fresh()
layers.at(0).addMask()
layers.at(0).fillMask(0, { x: 10, y: 10, width: 10, height: 10 })
layers.selectMask(layers.at(0))
input.drag([[15, 15], [35, 20]])
idle()
expect.equal(picture.state, 1)
layers.at(0).removeMask()
idle()
expect.equal([picture.state, seen()], [0, [blue, white]])
undo()
expect.equal(seen()[1], nothing)
undo()
expect.equal([history.redoText, seen()], ["Cut", [nothing, white]])
done()

step("a layer that goes away takes the landed piece with it")
float()
layers.add()
expect.equal(steps()[0], "Cut")
layers.at(1).remove()
idle()
undo()
undo()
isCut()
done()

step("a saved file has it")
float()
const file = fileNamed("landed.png")
picture.save(file)
expect.equal(steps(), ["Cut"])
isCut()
expect.equal(pixels.file(file).pixel(35, 20), blue)
expect.equal(shown(pixels.file(file).pixel(15, 15)), nothing)
expect.equal(picture.modified, false)
done()

step("a drag of the selection by the wand lands it")
float()
tools.activate("Magic wand")
input.drag([[35, 20], [40, 20]])
idle()
expect.equal(steps(), ["Cut", "Move selection"])
isCut()
expect.equal(pixels.selection.bounds, { x: 35, y: 15, width: 10, height: 10 })
done()

step("Return lands it, but not while the move tool is chosen")
float()
input.key("Return")
expect.equal([picture.state, steps()], [1, []])
tools.activate("Fillcan")
input.key("Return")
expect.equal(steps(), ["Cut"])
isCut()
done()

step("a press beside the selection lands it and moves the layer")
float()
input.drag([[55, 35], [56, 35]])
idle()
expect.equal(steps(), ["Cut", "Move"])
undo()
isCut()
done()

step("with Alt a copy is lifted, and a drag without it lands the copy")
float({ modifiers: "Alt" })
expect.equal(seen(), [blue, blue])
input.drag([[35, 20], [45, 20]])
idle()
expect.equal(steps(), ["Copy"])
undo()
expect.equal(steps(), ["Copy", "Cut"])
expect.equal(seen(), [blue, blue])
undo()
expect.equal(seen(), [blue, white])
done()

step("keys nudge what floats by pixels of the screen")
float()
view.scale = 0.5
input.key("Ctrl+Right")
input.key("Ctrl+Shift+Down")
idle()
expect.equal([picture.state, steps()], [1, []])
expect.equal(pixels.selection.bounds, { x: 32, y: 35, width: 10, height: 10 })
input.key("Ctrl+Alt+Left")
idle()
expect.equal(steps(), ["Cut"])
undo()
expect.equal(steps(), ["Cut", "Copy"])
done()

step("each of the sixteen keys goes its own way")
const ways = { Left: [-1, 0], Right: [1, 0], Up: [0, -1], Down: [0, 1] }
const held = [["Ctrl", 1, "Cut"], ["Ctrl+Shift", 10, "Cut"], ["Ctrl+Alt", 1, "Copy"], ["Ctrl+Alt+Shift", 10, "Copy"]]
for (const key of Object.keys(ways)) {
    for (const [modifiers, length, text] of held) {
        fresh()
        input.key(modifiers + "+" + key)
        idle()
        const [x, y] = ways[key].map(way => 10 + way * length)
        expect.equal(pixels.selection.bounds, { x, y, width: 10, height: 10 }, modifiers + "+" + key)
        expect.equal(picture.state, 1)
        undo()
        expect.equal(history.redoText, text, modifiers + "+" + key)
        done()
    }
}

step("with several layers only the selection goes, in one step")
fresh()
layers.add()
layers.select(layers.all)
view.scale = 2
for (let i = 0; i < 3; ++i) input.key("Ctrl+Right")
idle()
expect.equal(pixels.selection.bounds.x, 13)
expect.equal(seen(), [blue, white])
undo()
expect.equal(pixels.selection.bounds.x, 10)
expect.equal(history.redoText, "Move selection")
done()

step("a mask is cut instead of its layer")
fresh()
layers.at(0).addMask()
layers.at(0).fillMask(0, { x: 10, y: 10, width: 10, height: 10 })
layers.selectMask(layers.at(0))
input.drag([[15, 15], [35, 20]])
idle()
expect.equal(shown(pixels.merged.pixel(35, 20)), nothing)
expect.equal(pixels.layer(layers.at(0)).pixel(15, 15), blue)
undo()
expect.equal(history.redoText, "Cut")
expect.equal(seen(), [nothing, white])
done()

step("locked pixels stay, and the editor says so")
fresh()
layers.at(0).locks = ["pixels"]
dialogs.expect({ title: "Zenkari", text: "Cannot move the selection. Layer is locked.", answer: "Close" })
input.press(15, 15)
dialogs.expect({ title: "Zenkari", text: "Cannot move the selection. Layer is locked.", answer: "Close" })
input.key("Ctrl+Right")
idle()
expect.equal(seen(), [blue, white])
done()

step("a closed picture takes what floats along")
float()
expect.equal(picture.modified, true)
const words = "“" + picture.name + "” has changes that are not saved. Save them before it closes?"
dialogs.expect({ title: application.name, text: words, answer: "Cancel" })
expect.equal(picture.close(), false)
expect.equal([picture.state, steps()], [1, []])
dialogs.expect({ title: application.name, text: words, answer: "Discard" })
expect.equal(picture.close(), true)
checkAtRest()
