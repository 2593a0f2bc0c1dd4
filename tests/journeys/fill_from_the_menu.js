"use strict"
include("steps/editor.js")
const seen = () => pixels.merged.pixel(5, 5)
function fill(entry) { menus.trigger("Edit/Fill/" + entry); idle() }

step("without a picture nothing can be filled")
expect.equal([menus.find("Edit/Fill").enabled, menus.find("Edit/Clean up alpha").enabled], [false, false])

step("each color fills the layer, and names its step")
documents.create(40, 30, { background: "orange" })
const colors = [
    ["Dark grey", "Fill with dark grey", "#ff808080"],
    ["Grey", "Fill layer", "#ffa0a0a4"],
    ["Light grey", "Fill with light grey", "#ffc0c0c0"],
    ["White", "Fill with white", "#ffffffff"],
    ["Red", "Fill with red", "#ffff0000"],
    ["Green", "Fill with green", "#ff00ff00"],
    ["Blue", "Fill with blue", "#ff0000ff"],
    ["Cyan", "Fill with cyan", "#ff00ffff"],
    ["Magenta", "Fill with magenta", "#ffff00ff"],
    ["Yellow", "Fill with yellow", "#ffffff00"],
    ["Black", "Fill with black", "#ff000000"],
]
for (const [entry, text, color] of colors) {
    const before = seen()
    fill(entry)
    expect.equal(history.undoText, text)
    expect.equal(pixels.merged.region(0, 0, 40, 30), Array(1200).fill(color), entry)
    checkStep(seen, before, color)
}
expect.equal(history.texts, colors.map(([, text]) => text))

step("foreground and background by their keys")
application.foreground = "tomato"
application.background = "teal"
input.key("Alt+Backspace")
idle()
expect.equal([history.undoText, seen()], ["Fill with foreground", "#ffff6347"])
input.key("Ctrl+Backspace")
idle()
expect.equal([history.undoText, seen()], ["Fill with background", "#ff008080"])

step("only what is selected")
documents.active.select({ x: 0, y: 0, width: 20, height: 30 })
fill("Yellow")
expect.equal(pixels.merged.region(18, 5, 4, 1), ["#ffffff00", "#ffffff00", "#ff008080", "#ff008080"])
checkAtRest()

step("the dialog fills in another mode")
input.key("Ctrl+D")
idle()
dialogs.expect({ title: "Fill" }, function(dialog) {
    dialog.find("m_pContentsCmb").choose("White")
    dialog.find("m_pModeCmb").choose("Difference")
    input.key("Return")
})
input.key("Shift+Backspace")
idle()
expect.equal(history.undoText, "Fill layer")
checkStep(() => pixels.merged.region(19, 5, 2, 1), ["#ffffff00", "#ff008080"], ["#ff0000ff", "#ffff7f7f"])

step("a dialog that is cancelled fills nothing")
const steps = history.count
dialogs.expect({ title: "Fill" }, () => input.key("Esc"))
fill("Custom")
expect.equal(history.count, steps)

step("a lock on the pixels closes the menu")
layers.current.locks = ["pixels"]
idle()
expect.equal([menus.find("Edit/Fill").enabled, menus.find("Edit/Clean up alpha").enabled], [false, false])
layers.current.locks = ["transparency"]
idle()
expect.equal(menus.find("Edit/Fill/Red").enabled, true)
checkAtRest()
