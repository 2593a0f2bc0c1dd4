"use strict"
include("steps/editor.js")

step("some steps")
documents.create(30, 20)
const sums = [pixels.merged.checksum()]
tools.activate("Fillcan")
for (const color of ["red", "lime", "blue", "black"]) {
    application.foreground = color
    paint(5, 5)
    sums.push(pixels.merged.checksum())
}
expect.equal(history.texts, ["Fill", "Fill", "Fill", "Fill"])

step("there and back, as anybody does")
const dice = random(11)
for (let walk = 0; walk < 40; ++walk) {
    const isBack = dice.next() < 0.5
    if (isBack && history.canUndo) undo()
    if (!isBack && history.canRedo) redo()
    expect.equal(pixels.merged.checksum(), sums[history.index], "after " + history.index + " steps")
}

step("jump to each state")
for (const index of [0, 4, 1, 3, 2]) {
    history.index = index
    expect.equal(pixels.merged.checksum(), sums[index], "state " + index)
}

step("a new step forgets what was undone")
application.foreground = "yellow"
paint(5, 5)
expect.equal([history.count, history.canRedo], [3, false])
expect.equal(menus.find("Edit/Redo").enabled, false)
checkAtRest()
