"use strict"
include("steps/editor.js")

const picture = documents.create(60, 50)
const square = { x: 5, y: 5, width: 20, height: 20 }
const strip = { x: 15, y: 0, width: 40, height: 10 }
const names = () => picture.savedSelections
const selected = () => pixels.hasSelection ? pixels.selection.bounds : null

function save(name, during) {
    dialogs.expect({ title: "Save selection", answer: "OK" }, function(dialog) {
        if (name) dialog.find("m_pNameCmb").setText(name)
        if (during) during(dialog)
    })
    menus.trigger("Selection/Save Selection…")
    idle()
}

function load(name, mode) {
    dialogs.expect({ title: "Load selection", answer: "OK" }, function(dialog) {
        dialog.find("m_pNameCmb").choose(name)
        if (mode) dialog.find("m_pModeCmb").choose(mode)
    })
    menus.trigger("Selection/Load Selection…")
    idle()
}

step("without a selection there is nothing to keep")
for (const entry of ["Save Selection…", "Load Selection…", "Delete Saved Selection"])
    expect.equal(menus.find("Selection/" + entry).enabled, false, entry)

step("a name is offered, kept as a step")
picture.select(square)
expect.equal(menus.find("Selection/Save Selection…").enabled, true)
save(null, function(dialog) {
    expect.equal(dialog.find("m_pNameCmb").text, "Selection 1")
    expect.equal(dialog.find("m_pNoteLbl").text, "")
})
expect.equal(history.texts.slice(-1), ["Save selection"])
checkStep(names, [], ["Selection 1"])

step("another one gets a name of its own")
picture.select(strip)
save("Strip & more", function(dialog) {
    expect.equal(dialog.find("m_pNoteLbl").text, "")
})
expect.equal(names(), ["Selection 1", "Strip & more"])

step("cancel keeps nothing")
dialogs.expect({ title: "Save selection", answer: "Cancel" })
menus.trigger("Selection/Save Selection…")
expect.equal(names().length, 2)

step("a name of spaces is none")
dialogs.expect({ title: "Save selection", answer: "Cancel" }, function(dialog) {
    dialog.find("m_pNameCmb").setText("   ")
    input.key("Return")
    expect.equal(dialog.visible, true, "Enter doesn't take it")
})
menus.trigger("Selection/Save Selection…")

step("the kept one comes back, in four ways")
load("Selection 1")
checkStep(selected, strip, square)
load("Strip & more", "Add")
checkStep(selected, square, { x: 5, y: 0, width: 50, height: 25 })
undo()
load("Strip & more", "Subtract")
expect.equal([pixels.selection.pixel(16, 6), pixels.selection.pixel(16, 12)], [0, 255])
undo()
load("Strip & more", "Intersect")
checkStep(selected, square, { x: 15, y: 5, width: 10, height: 5 })

step("without a selection there is nothing to combine with")
input.key("Ctrl+D")
dialogs.expect({ title: "Load selection", answer: "Cancel" }, function(dialog) {
    expect.equal(dialog.find("m_pModeCmb").enabled, false)
})
menus.trigger("Selection/Load Selection…")
expect.equal(selected(), null)

step("saving under the same name replaces, and says so before")
picture.select({ x: 1, y: 2, width: 3, height: 4 })
save("Selection 1", function(dialog) {
    expect.equal(dialog.find("m_pNoteLbl").text, "Replaces the one of this name.")
})
expect.equal(names(), ["Selection 1", "Strip & more"])
picture.select(null)
load("Selection 1")
expect.equal(selected(), { x: 1, y: 2, width: 3, height: 4 })

step("one is deleted, and comes back")
menus.trigger("Selection/Delete Saved Selection/Strip && more")
idle()
checkStep(names, ["Selection 1", "Strip & more"], ["Selection 1"])
undo()

step("the file keeps them")
const file = fileNamed("kept.ora")
picture.save(file)
picture.close()
const again = documents.open(file)
expect.equal(again.savedSelections, ["Selection 1", "Strip & more"])
again.loadSelection("Strip & more")
expect.equal(selected(), strip)

step("the canvas carries them along")
again.select(null)
documents.create(20, 20)
expect.equal(menus.find("Selection/Load Selection…").enabled, false, "another picture has its own")
again.activate()
expect.equal(menus.find("Selection/Load Selection…").enabled, true)
again.save(file)
checkAtRest()
