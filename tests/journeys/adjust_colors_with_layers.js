"use strict"
include("steps/editor.js")
const picture = documents.create(60, 40, { background: "#646464" })
const panel = widgets.find("AdjustmentPanel")
const seen = () => pixels.merged.pixel(5, 5)
const add = entry => { menus.trigger("Layer/New Adjustment Layer/" + entry); idle() }

step("colors are inverted by a layer of the menu")
expect.equal(panel.find("m_pAdjustment").visible, false)
add("Invert")
expect.equal([layers.current.name, layers.current.kind, layers.current.row], ["Invert", "adjustment", 0])
expect.equal(panel.find("m_pAdjustment").visible, true)
checkStep(seen, "#ff646464", "#ff9b9b9b")

step("a typed value is one step")
add("Brightness and Contrast")
panel.find("m_pBrightnessSpn").setValue(20)
widgets.find("ZKDocumentView").focus()
idle()
expect.equal(layers.current.adjustment, { kind: "brightnessContrast", brightness: 20, contrast: 0 })
expect.equal(history.texts, ["New adjustment layer", "New adjustment layer", "Change adjustment"])
checkStep(seen, "#ff9b9b9b", "#ffcecece")
expect.equal(panel.find("m_pBrightnessSldr").value, 20)

step("a mask says where, the opacity how much")
const brighter = layers.current
brighter.addMask({ reveals: false })
expect.equal(seen(), "#ff9b9b9b")
brighter.fillMask(255, { x: 0, y: 0, width: 10, height: 40 })
expect.equal(pixels.merged.region(9, 5, 2, 1), ["#ffcecece", "#ff9b9b9b"])
brighter.opacity = 0.5
expect.equal(seen(), "#ffb5b5b5")

step("the panel shows nothing of it for a layer of pixels")
layers.select(layers.at(2))
idle()
expect.equal(panel.find("m_pAdjustment").visible, false)

step("pixels can't be painted on it")
layers.select(brighter)
application.foreground = "red"
tools.activate("Fillcan")
expect.throws(function() { brighter.fill("red") }, "adjustment")

step("by a script")
const levels = layers.addAdjustment({ kind: "levels", inBlack: 100, inWhite: 200, name: "Spread", row: 0 })
expect.equal(pixels.merged.pixel(40, 5), "#ff8c8c8c")
levels.setAdjustment({ gamma: 2 })
checkStep(() => pixels.merged.pixel(40, 5), "#ff8c8c8c", "#ffbdbdbd")
layers.select(levels)
idle()
expect.equal(panel.find("m_pGammaSpn").value, 2)

step("it comes back from the file")
const before = pixels.merged.checksum()
picture.save(fileNamed("adjusted.ora"))
picture.close()
documents.open(fileNamed("adjusted.ora"))
expect.equal(pixels.merged.checksum(), before)
expect.equal(layers.at(0).adjustment,
             { kind: "levels", inBlack: 100, inWhite: 200, outBlack: 0, outWhite: 255, gamma: 2 })
expect.equal(layers.all.map(layer => layer.kind), ["adjustment", "adjustment", "adjustment", "raster"])
checkAtRest()
