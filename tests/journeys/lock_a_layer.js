"use strict"
include("steps/editor.js")
const panel = widgets.find("LayersWidget")

step("lock the layer in the panel")
documents.create(40, 30, { background: "red" })
layers.add({ name: "Top" }).fill("blue")
panel.find("m_pLockBtn").setChecked(true)
expect.equal(layers.at(0).locks, ["all"])
for (const name of ["m_pDeleteBtn", "m_pMaskBtn"]) expect.equal(panel.find(name).enabled, false, name)

step("the fill can refuses, in words")
application.foreground = "lime"
tools.activate("Fillcan")
input.move(5, 5)
expect.equal(tools.cursor, { shape: "Forbidden" })
dialogs.expect({ title: /./, text: "Cannot fill. Layer is locked.", answer: "" })
paint(5, 5)
expect.equal(pixels.merged.pixel(5, 5), "#ff0000ff")
expect.equal(history.index, 2)

step("unlock it and fill")
panel.find("m_pLockBtn").setChecked(false)
paint(5, 5)
expect.equal(pixels.merged.pixel(5, 5), "#ff00ff00")

checkAtRest()
