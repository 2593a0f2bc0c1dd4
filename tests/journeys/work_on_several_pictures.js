"use strict"
include("steps/editor.js")

step("three pictures, each with a history of its own")
const colors = ["red", "lime", "blue"]
const pictures = colors.map((color, index) => documents.create(20 + index, 10))
tools.activate("Fillcan")
pictures.forEach((picture, index) => {
    picture.activate()
    application.foreground = colors[index]
    for (let i = 0; i <= index; ++i) {
        layers.add()
        paint(2, 2)
    }
})

step("the panels and the history follow the front one")
pictures.forEach((picture, index) => {
    picture.activate()
    idle()
    expect.equal(history.count, 2 * (index + 1))
    expect.equal(widgets.find("LayersWidget/m_pList").items.length, index + 2)
    expect.contains(widgets.find("mainWindow").title, picture.name)
})

step("undo changes only the front one")
pictures[1].activate()
undo()
expect.equal([history.index, pictures[0].modified], [3, true])
pictures[0].activate()
expect.equal([history.index, pixels.merged.pixel(2, 2)], [2, "#ffff0000"])

step("closing one leaves the others")
dialogs.expect({ title: application.name, text: /not saved/, answer: "Discard" })
expect.equal(pictures[0].close(), true)
expect.equal(documents.all.map(picture => picture.width), [21, 22])
checkAtRest()
