"use strict"
include("steps/editor.js")
const merged = name => name + " holds one flat picture: layers and masks are merged in the file."

step("two layers, one of them half transparent")
const picture = documents.create(20, 10, { background: "transparent" })
layers.add({ name: "Top" }).fill("#80ff0000", { x: 0, y: 0, width: 10, height: 10 })

step("PNG merges them: the person is told first, and may cancel")
const file = fileNamed("flat.png")
const told = name => new RegExp("^" + merged(name).replace(/[.]/g, "\\."))
dialogs.expect({ title: application.name, text: told("PNG"), answer: "Cancel" })
expect.equal(picture.save(file), false)
expect.equal([picture.path, picture.modified], ["", true])

step("the file gets a flat copy, and the picture keeps its layers")
dialogs.expect({ title: application.name, text: told("PNG"), answer: "Save" })
expect.equal(picture.save(file), true)
expect.equal(pixels.file(file).region(9, 0, 2, 1), ["#80ff0000", "#00000000"])
expect.equal([picture.path, picture.modified, layers.count], ["", true, 2])

step("JPEG loses the transparency too, and tells both")
const photo = fileNamed("flat.jpg")
dialogs.expect({ title: application.name, text: /merged in the file.*\s+.*what is transparent becomes white/, answer: "Save" })
expect.equal(picture.save(photo), true)
expect.equal(pixels.file(photo).pixel(19, 9), "#ffffffff")

step("an ending that nobody knows is refused in words")
dialogs.expect({ title: application.name, text: /names no known format/, answer: "Close" })
expect.equal(picture.save(fileNamed("flat.xyz")), false)
checkAtRest()
