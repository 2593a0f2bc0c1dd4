"use strict"
include("steps/editor.js")
const merged = name => name + " holds one flat picture: layers and masks are merged in the file."
const white = "JPEG holds no transparency: what is transparent becomes white."

step("two layers, one of them half transparent")
const picture = documents.create(20, 10, { background: "transparent" })
layers.add({ name: "Top" }).fill("#80ff0000", { x: 0, y: 0, width: 10, height: 10 })

step("PNG merges them, and the person is told first")
const file = fileNamed("flat.png")
dialogs.expect({ title: application.name, text: merged("PNG") + " Save it so?", answer: "Cancel" })
expect.equal(picture.save(file), false)
expect.equal([picture.path, picture.modified], ["", true])
dialogs.expect({ title: application.name, text: merged("PNG") + " Save it so?", answer: "Save" })
expect.equal(picture.save(file), true)
expect.equal(pixels.file(file).region(9, 0, 2, 1), ["#80ff0000", "#00000000"])

step("who has accepted it once isn't asked again")
layers.named("Top").setPixel(15, 5, "blue")
expect.equal(picture.save(), true)
expect.equal(pixels.file(file).pixel(15, 5), "#ff0000ff")

step("JPEG loses the transparency too, and tells both")
const photo = fileNamed("flat.jpg")
dialogs.expect({ title: application.name, text: merged("JPEG") + " " + white + " Save it so?", answer: "Save" })
expect.equal(picture.save(photo), true)
expect.equal(layers.count, 2, "the layers are still there")
const corner = pixels.file(photo).pixel(19, 9)
expect.equal(corner, "#ffffffff")

step("an ending that nobody knows is refused in words")
dialogs.expect({ title: application.name, text: /names no known format/, answer: "Close" })
expect.equal(picture.save(fileNamed("flat.xyz")), false)
expect.equal(picture.path, photo)
checkAtRest()
