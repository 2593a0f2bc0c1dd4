"use strict"
include("steps/editor.js")
const wide = script.folder + "/files/wide.icc"
const ink = script.folder + "/files/ink.icc"
const color = () => pixels.merged.pixel(5, 5)

step("a picture is told what its values mean; they stay")
const picture = documents.create(40, 30, { background: "#c85a28" })
expect.equal(picture.profile, "")
dialogs.expect({ title: "Assign profile" }, function(dialog) {
    expect.equal(dialog.find("m_pPresentNameLbl").text, "None (counts as sRGB)")
    expect.equal(dialog.find("m_pIntentCmb").visible, false)
    dialogs.expectFile(wide, { title: "Take the profile from a file" })
    dialog.find("m_pFileBtn").click()
    input.key("Return")
})
menus.trigger("Image/Assign Profile…")
expect.equal(history.texts, ["Assign profile"])
expect.equal(color(), "#ffc85a28")
checkStep(() => picture.profile, "", "Wide")

step("a profile of ink is refused in words")
dialogs.expect({ title: "Assign profile" }, function(dialog) {
    dialogs.expectFile(ink)
    dialogs.expect({ title: application.name, text: /ink\.icc” is made for CMYK pictures, not for RGB\./, answer: "Close" })
    dialog.find("m_pFileBtn").click()
    input.key("Esc")
})
menus.trigger("Image/Assign Profile…")
expect.equal([picture.profile, history.count], ["Wide", 1])

step("converted, it has other values; the mask and the selection stay")
layers.at(0).addMask({ reveals: true })
picture.select({ x: 2, y: 2, width: 10, height: 10 })
const mask = pixels.mask(layers.at(0)).checksum()
dialogs.expect({ title: "Convert to profile" }, function(dialog) {
    expect.equal(dialog.find("m_pPresentNameLbl").text, "Wide")
    expect.ok(!dialog.find("m_pProfileCmb").items.includes("None (counts as sRGB)"))
    dialog.find("m_pProfileCmb").choose("sRGB")
    dialog.find("m_pIntentCmb").choose("Perceptual")
    input.key("Return")
})
menus.trigger("Image/Convert to Profile…")
idle()
const converted = color()
expect.ok(converted !== "#ffc85a28", converted)
expect.equal(history.undoText, "Convert to profile")
expect.equal(pixels.mask(layers.at(0)).checksum(), mask)
checkStep(color, "#ffc85a28", converted)
expect.equal(picture.profile, "sRGB")
expect.equal([pixels.selection.pixel(5, 5), pixels.selection.pixel(20, 20)], [255, 0])
undo()
expect.equal(picture.profile, "Wide")

step("the preferences take a profile for work; new pictures are meant in it")
dialogs.expect({ title: "Preferences" }, function(dialog) {
    dialogs.expectFile(ink)
    dialogs.expect({ title: application.name, text: /made for CMYK pictures/, answer: "Close" })
    dialog.find("m_pProfileFileBtn").click()
    dialogs.expectFile(wide)
    dialog.find("m_pProfileFileBtn").click()
    dialog.find("m_pWorkingCmb").choose("Wide")
    input.key("Return")
})
input.key("Ctrl+,")
expect.equal(application.workingProfile, "Wide")
const meantWide = documents.create(4, 4)
expect.equal(meantWide.profile, "Wide")
meantWide.close()
application.workingProfile = "sRGB"

step("files keep it, and tell when they can't")
for (const name of ["wide.ora", "wide.png", "wide.jpg", "wide.tif", "wide.webp"]) {
    if (name === "wide.ora") picture.save(fileNamed(name))
    else picture.exportAs(fileNamed(name))
    if (name !== "wide.ora") {
        const again = documents.open(fileNamed(name))
        expect.equal(again.profile, "Wide", name)
        again.close()
    }
}
picture.activate()
dialogs.expectFile(fileNamed("wide.bmp"))
dialogs.expect({ title: application.name, text: /BMP holds no color profile/, answer: "Cancel" })
menus.trigger("File/Export…")
checkAtRest()
