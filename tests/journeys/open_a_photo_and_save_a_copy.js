"use strict"
include("steps/editor.js")

step("open a photo with the dialog")
const photo = application.resourceFolder + "/samples/lake.jpg"
dialogs.expectFile(photo, { title: "Open" })
input.key("Ctrl+O")
const lake = documents.active
expect.equal([lake.name, lake.path, lake.modified], ["lake.jpg", photo, false])
expect.equal(layers.all.map(layer => layer.name), ["Background"])
expect.contains(widgets.find("mainWindow").title, "lake.jpg")
const before = pixels.merged.checksum()

step("save it under another name, in another format")
const copy = fileNamed("copy.png")
dialogs.expectFile(copy, { title: "Save as" })
menus.trigger("File/Save As…")
expect.equal([lake.name, lake.path, lake.modified], ["copy.png", copy, false])
expect.equal(pixels.merged.compare(copy), { same: true, count: 0, largest: 0, first: null })

step("close it: nothing is asked")
input.key("Ctrl+W")
expect.equal(documents.count, 0)
expect.ok(widgets.shows("emptyPage"), "the empty page is there")

step("open it again from the list of recent pictures")
menus.trigger("File/Open Recent/copy.png")
expect.equal(documents.active.path, copy)
expect.equal(pixels.merged.checksum(), before)

step("open what is open: it only comes to the front")
documents.create(10, 10)
documents.open(copy)
expect.equal([documents.count, documents.active.path], [2, copy])
checkAtRest()
