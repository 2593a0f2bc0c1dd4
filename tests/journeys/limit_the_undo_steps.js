"use strict"
include("steps/editor.js")

function setSteps(steps, answer) {
    dialogs.expect({ title: "Preferences", answer: answer }, function(dialog) {
        dialog.find("m_pUndoStepsSpn").setValue(steps)
    })
    input.key("Ctrl+,")
}

step("four steps")
documents.create(30, 20)
tools.activate("Fillcan")
const colors = ["#ffff0000", "#ff00ff00", "#ff0000ff", "#ff000000"]
for (const color of colors) {
    application.foreground = color
    paint(5, 5)
}
expect.equal(history.count, 4)

step("cancel changes nothing")
setSteps(2, "Cancel")
expect.equal(history.count, 4)

step("a limit of two holds at once and from then on")
setSteps(2, "OK")
application.foreground = "yellow"
paint(5, 5)
expect.equal(history.count, 2)
undo()
undo()
expect.equal([history.canUndo, pixels.merged.pixel(5, 5)], [false, colors[2]])

step("the number is there the next time")
dialogs.expect({ title: "Preferences", answer: "Cancel" }, function(dialog) {
    expect.equal(dialog.find("m_pUndoStepsSpn").value, 2)
})
menus.trigger("Edit/Preferences…")
checkAtRest()
