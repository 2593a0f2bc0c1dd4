"use strict"
include("steps/editor.js")

step("a large picture")
documents.create(4000, 3000)
menus.trigger("View/100 %")
expect.equal(view.scale, 1)

step("the wheel zooms at the pointer")
view.centerOn(2000, 1500)
const spot = { x: 2100, y: 1400 }
const part = view.visible
const left = (spot.x - part.x) * view.scale
input.wheel(spot.x, spot.y, 3)
expect.near(view.scale, 2, 0.001)
expect.near((spot.x - view.visible.x) * view.scale, left, 2, "the point stays under the pointer")
input.wheel(spot.x, spot.y, -3)
expect.near(view.scale, 1, 0.001)

step("zoom with keys, and stop at the ends")
input.key("Ctrl++")
expect.equal(view.scale, 1.5)
input.key("Ctrl+-")
expect.equal(view.scale, 1)
for (let i = 0; i < 40; ++i) input.key("Ctrl++")
expect.equal(view.scale, 40)
for (let i = 0; i < 40; ++i) input.key("Ctrl+-")
expect.equal(view.scale, 0.05)

step("the whole picture")
input.key("Ctrl+0")
const whole = view.visible
expect.ok(whole.x <= 0 && whole.y <= 0 && whole.x + whole.width >= 4000 && whole.y + whole.height >= 3000)

step("pan with Space and with the middle button")
input.key("Ctrl+1")
view.centerOn(2000, 1500)
tools.activate("Fillcan")
input.move(2000, 1500)
let center = view.center
input.keyDown("Space")
expect.equal(view.panning, true)
input.drag([[2000, 1500], [1900, 1550]])
input.keyUp("Space")
expect.near([view.center.x - center.x, view.center.y - center.y], [100, -50], 1)
center = view.center
const middle = [Math.round(center.x), Math.round(center.y)]
input.drag([middle, [middle[0] + 60, middle[1]]], { button: "middle" })
expect.near([view.center.x - center.x, view.center.y - center.y], [-60, 0], 1)
expect.equal([view.panning, history.count], [false, 0], "the tool has not heard of it")
checkAtRest()
