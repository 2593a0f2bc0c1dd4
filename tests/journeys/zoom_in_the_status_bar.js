"use strict"
include("steps/editor.js")
const zoom = widgets.find("zoomReadout")

step("without a picture there is no zoom to choose")
expect.equal(zoom.enabled, false)

step("the status bar tells size and zoom")
documents.create(400, 300)
view.scale = 1
idle()
expect.equal(zoom.text, "100 %")
expect.equal(widgets.find("sizeReadout").text, "400 × 300")

step("its menu has stops")
dialogs.expectMenu("50 %")
zoom.click()
idle()
expect.equal([view.scale, zoom.text], [0.5, "50 %"])

step("Esc leaves the zoom")
dialogs.expectMenu(() => input.key("Esc"))
zoom.click()
idle()
expect.equal(view.scale, 0.5)

step("it tells place and color under the pointer")
layers.at(0).fill("red")
input.move(30, 20)
idle()
expect.equal(widgets.find("positionReadout").text, "30, 20")
expect.contains(widgets.find("colorReadout").text, "255")
checkAtRest()
