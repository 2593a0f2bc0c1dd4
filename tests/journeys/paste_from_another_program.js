// What another program copies becomes a row of the clipboard, and is pasted on layers and masks.

include("steps/editor.js")
include("steps/clipboard.js")

const picture = documents.create(60, 40, { background: "white" })

step("Another program copies")
faults.putForeignImage(20, 10, "#80ff0000")
expect.equal(clipboardRows().length, 1)
expect.equal(clipboardRows()[0][0].split("\n")[1], "20x10 px")
expect.equal(menus.find("Edit/Paste").enabled, true)

step("The same once more is no other row")
faults.putForeignImage(20, 10, "#80ff0000")
expect.equal(clipboardRows().length, 1)

step("It goes to the middle of the layer")
input.key("Ctrl+V")
idle()
expect.equal(pixels.merged.pixel(20, 15), "#ffff7f7f")
expect.equal(pixels.merged.pixel(39, 24), "#ffff7f7f")
expect.equal(pixels.merged.pixel(40, 24), "#ffffffff")
undo()

step("In a mask its lightness counts")
layers.at(0).addMask()
layers.selectMask(layers.at(0))
input.key("Ctrl+V")
idle()
// Half of 127 over 255, truncated.
expect.equal(pixels.mask(layers.at(0)).pixel(20, 15), 190)
expect.equal(pixels.mask(layers.at(0)).pixel(19, 15), 255)
undo()
const steps = history.index

step("The rows are deleted")
menus.trigger("Window/Clipboard")
const remove = widgets.findAll("ClipboardPanel/QToolButton").filter(b => b.accessibleName === "Delete from clipboard")[0]
while (clipboardRows().length > 0) remove.click()
expect.equal(remove.enabled, false)
input.key("Ctrl+V")
idle()
expect.equal(history.index, steps)
checkAtRest()
