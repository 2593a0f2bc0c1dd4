"use strict"
include("steps/editor.js")

step("open the photo")
const photo = documents.open(application.resourceFolder + "/samples/lake.jpg")
const sky = { x: Math.round(photo.width / 4), y: Math.round(photo.height / 10) }
const before = pixels.merged.checksum()

step("choose the fill can by its key, and a color")
application.foreground = "#f2a65a"
input.key("F")
expect.equal(tools.active, "Fillcan")
input.move(sky.x, sky.y)
expect.equal(tools.cursor.theme, "bucket_cursor")

step("type a tolerance and click into the sky")
option("m_pToleranceSpn").setValue(36)
option("m_pContiguousChb").setChecked(true)
expect.equal(option("m_pToleranceSpn").value, 36)
paint(sky.x, sky.y)
expect.equal(history.texts, ["Fill"])
expect.equal(pixels.merged.pixel(sky.x, sky.y), "#fff2a65a")
expect.equal(photo.modified, true)
const filled = pixels.merged.checksum()
expect.notEqual(filled, before, "the sky has another color")

step("undo and redo with the keys")
checkStep(() => pixels.merged.checksum(), before, filled)

step("undo and redo from the menu")
menus.trigger("Edit/Undo Fill")
expect.equal(pixels.merged.checksum(), before)
expect.equal(photo.modified, false, "back at the state on the disk")
menus.trigger("Edit/Redo Fill")
expect.equal(pixels.merged.checksum(), filled)

step("a click beside the picture does nothing")
view.scale = 0.1
paint(-20, 20)
expect.equal(history.count, 1)
checkAtRest()
