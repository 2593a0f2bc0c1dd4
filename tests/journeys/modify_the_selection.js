"use strict"
include("steps/editor.js")

const picture = documents.create(60, 50)
const former = { x: 20, y: 15, width: 12, height: 10 }

/// Answers the dialog of an entry of "Modify"; `during` looks at the picture while it is open.
function modify(entry, title, radius, answer, during) {
    dialogs.expect({ title: title, answer: answer }, function(dialog) {
        dialog.find("m_pRadiusSpn").setValue(radius)
        if (during) during(dialog)
    })
    menus.trigger("Selection/Modify/" + entry)
    idle()
}

step("without a selection there is nothing to modify")
for (const entry of ["Grow…", "Shrink…", "Border…", "Feather…", "Smooth…"])
    expect.equal(menus.find("Selection/Modify/" + entry).enabled, false, entry)
picture.select(former)
for (const entry of ["Grow…", "Shrink…", "Border…", "Feather…", "Smooth…"])
    expect.equal(menus.find("Selection/Modify/" + entry).enabled, true, entry)

step("growing shows at once and is one step")
const before = pixels.selection.checksum()
const steps = history.texts.length
modify("Grow…", "Grow selection", 4, "OK", function(dialog) {
    expect.equal(pixels.selection.bounds, { x: 16, y: 11, width: 20, height: 18 })
    dialog.find("m_pRadiusSpn").setValue(2)
    expect.equal(pixels.selection.bounds, { x: 18, y: 13, width: 16, height: 14 })
    expect.equal(history.texts.length, steps, "looking is no step")
})
expect.equal(history.texts.slice(steps), ["Grow selection"])
checkStep(() => pixels.selection.bounds, former, { x: 18, y: 13, width: 16, height: 14 })
undo()
expect.equal(pixels.selection.checksum(), before)

step("cancel gives back what was selected")
for (const [entry, title] of [["Shrink…", "Shrink selection"], ["Border…", "Select border"],
        ["Feather…", "Feather selection"], ["Smooth…", "Smooth selection"]]) {
    modify(entry, title, 3, "Cancel", function() {
        expect.equal(pixels.selection.checksum() !== before, true, entry + " shows")
    })
    expect.equal(pixels.selection.checksum(), before, entry)
    expect.equal(history.canRedo, true, "nothing was pushed")
}

step("what is too small to shrink is deselected, and comes back")
modify("Shrink…", "Shrink selection", 9, "OK", function(dialog) {
    expect.equal(dialog.find("m_pNoteLbl").text, "Nothing stays selected.")
})
checkStep(() => pixels.hasSelection, true, false)
undo()

step("a soft edge is painted softly")
modify("Feather…", "Feather selection", 2, "OK")
application.foreground = "black"
tools.activate("Fillcan")
paint(26, 20)
const edge = pixels.merged.pixel(20, 20)
expect.equal(edge !== "#ff000000" && edge !== "#ffffffff", true, edge)
checkAtRest()
