"use strict"
include("steps/editor.js")

step("a picture whose colors tell its corners")
const picture = documents.create(20, 10, { background: "white" })
layers.at(0).fill("red", { x: 0, y: 0, width: 10, height: 10 })
layers.at(0).fill("blue", { x: 10, y: 0, width: 10, height: 5 })
const look = pixels.merged.checksum()

for (const ending of ["png", "tif", "webp", "bmp"]) {
    step("export and open " + ending)
    const file = fileNamed("picture." + ending)
    picture.activate()
    picture.exportAs(file)
    expect.equal([picture.path, picture.modified], ["", true], "an export isn't the picture's file")
    const copy = documents.open(file)
    expect.equal([copy.width, copy.height, layers.count, copy.modified], [20, 10, 1, false])
    expect.equal(pixels.merged.checksum(), look)
    copy.close()
}

step("GIF is opened, and not written")
picture.activate()
expect.throws(() => picture.exportAs(fileNamed("picture.gif")), "picture.gif")
checkAtRest()
