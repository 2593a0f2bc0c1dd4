"use strict"
include("steps/editor.js")

step("cancel makes none")
dialogs.expect({ title: "New picture", answer: "Cancel" })
input.key("Ctrl+N")
expect.equal(documents.count, 0)

step("type a size and choose a transparent ground")
dialogs.expect({ title: "New picture" }, function(dialog) {
    dialog.find("m_pWidthSpn").setValue(64)
    dialog.find("m_pHeightSpn").setValue(48)
    const grounds = dialog.find("m_pBackgroundCmb")
    grounds.choose(grounds.items.length - 1)
    input.key("Return")
})
menus.trigger("File/New…")
const made = documents.active
expect.equal([made.width, made.height, made.modified, layers.count], [64, 48, false, 1])
expect.equal(pixels.merged.pixel(0, 0), "#00000000")

step("the next one starts with what was chosen last")
dialogs.expect({ title: "New picture" }, function(dialog) {
    expect.equal([dialog.find("m_pWidthSpn").value, dialog.find("m_pHeightSpn").value], [64, 48])
    input.key("Esc")
})
input.key("Ctrl+N")
expect.equal(documents.count, 1)

step("a button of the empty page does the same")
made.close()
dialogs.expect({ title: "New picture", answer: "Cancel" })
widgets.find("emptyPage/newButton").click()
checkAtRest()
