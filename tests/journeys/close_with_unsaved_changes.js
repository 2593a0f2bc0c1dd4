"use strict"
include("steps/editor.js")
const question = name => "“" + name + "” has changes that are not saved. Save them before it closes?"

function changed(name) {
    const picture = documents.create(20, 10)
    application.foreground = "red"
    tools.activate("Fillcan")
    paint(2, 2)
    expect.equal(picture.modified, true, name)
    return picture
}

step("cancel keeps it open")
const picture = changed("first")
dialogs.expect({ title: application.name, text: question(picture.name), answer: "Cancel" })
input.key("Ctrl+W")
expect.equal([picture.isOpen, picture.modified], [true, true])

step("save asks for a file and closes")
const file = fileNamed("kept.png")
dialogs.expect({ title: application.name, text: question(picture.name), answer: "Save" })
dialogs.expectFile(file, { title: "Save as" })
menus.trigger("File/Close")
expect.equal([picture.isOpen, documents.count], [false, 0])
expect.equal(pixelsOf(file), "#ffff0000")

step("cancelling the file dialog keeps it open")
const second = changed("second")
dialogs.expect({ title: application.name, text: question(second.name), answer: "Save" })
dialogs.expectFile(null)
expect.equal(second.close(), false)
expect.equal(second.isOpen, true)

step("discard closes it, and nothing is written")
dialogs.expect({ title: application.name, text: question(second.name), answer: "Discard" })
expect.equal(second.close(), true)
expect.equal(documents.count, 0)

step("quitting asks about every picture first")
const third = changed("third"), fourth = changed("fourth")
dialogs.expect({ title: application.name, text: question(third.name), answer: "Discard" })
dialogs.expect({ title: application.name, text: question(fourth.name), answer: "Cancel" })
menus.trigger("File/Quit")
expect.equal([third.isOpen, fourth.isOpen], [true, true])
checkAtRest()

function pixelsOf(path) {
    documents.open(path)
    const color = pixels.merged.pixel(0, 0)
    documents.active.close()
    return color
}
