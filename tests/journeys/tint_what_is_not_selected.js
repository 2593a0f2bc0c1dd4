"use strict"
include("steps/editor.js")

const entry = "View/Tint Unselected Parts"
const picture = documents.create(40, 30)

step("the tint is no part of the picture")
expect.equal(menus.find(entry).checked, false)
picture.select({ x: 5, y: 5, width: 10, height: 10 })
const look = pixels.merged.checksum()
const steps = history.texts.length
menus.trigger(entry)
expect.equal(menus.find(entry).checked, true)
expect.equal(pixels.merged.checksum(), look)
expect.equal(history.texts.length, steps)

step("a new picture is tinted too, until nobody wants it")
documents.create(20, 20)
expect.equal(menus.find(entry).checked, true)
menus.trigger(entry)
expect.equal(menus.find(entry).checked, false)
checkAtRest()
