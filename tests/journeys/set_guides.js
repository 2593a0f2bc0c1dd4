"use strict"
include("steps/editor.js")

function addGuide(direction, position) {
    dialogs.expect({ title: "Add guide", answer: "OK" }, function(dialog) {
        dialog.find("m_pDirectionCmb").choose(direction)
        dialog.find("m_pPositionSpn").setValue(position)
    })
    menus.trigger("View/Add Guide…")
}

step("two guides, each a step")
const picture = documents.create(40, 30)
const look = pixels.merged.checksum()
addGuide("Vertical", 12)
addGuide("Horizontal", 7)
const both = [{ direction: "vertical", position: 12 }, { direction: "horizontal", position: 7 }]
expect.equal(picture.guides, both)
expect.equal(history.texts, ["Add guide", "Add guide"])
checkStep(() => picture.guides.length, 1, 2)

step("cancel adds none")
dialogs.expect({ title: "Add guide", answer: "Cancel" })
menus.trigger("View/Add Guide…")
expect.equal(picture.guides.length, 2)

step("clear them, and take that back")
menus.trigger("View/Clear Guides")
checkStep(() => picture.guides.length, 2, 0)
undo()
expect.equal(picture.guides, both)
expect.equal(pixels.merged.checksum(), look, "guides are no part of the picture")
checkAtRest()
