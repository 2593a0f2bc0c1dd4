"use strict"
include("steps/editor.js")
const tabs = widgets.findAll("mainWindow/QTabBar").find(bar => bar.items.indexOf("Paths") >= 0)
tabs.choose("Paths")
const panel = widgets.find("PathsWidget")
const stroke = panel.find("m_pStrokeBtn")
const select = panel.find("m_pSelectBtn")

/// Clicks "Stroke Path…" and takes a brush of that size.
function strokePath(size) {
    dialogs.expect({ title: "Stroke path" }, function(dialog) {
        for (const [name, value] of [["Size", size], ["Hardness", 100], ["Opacity", 100], ["Spacing", 10]])
            dialog.find("m_p" + name + "Spn").setValue(value)
        input.key("Return")
    })
    stroke.click()
    idle()
}

/// Clicks "Make Selection…" and takes what the button stands for.
function makeSelection(choice) {
    dialogs.expect({ title: "Make selection" }, function(dialog) {
        if (choice) dialog.find(choice).click()
        input.key("Return")
    })
    select.click()
    idle()
}

step("without a picture and without a path there is nothing to use")
expect.equal([stroke.enabled, stroke.toolTip], [false, "Stroke Path…: no picture is open"])
const picture = documents.create(60, 40)
expect.equal([select.enabled, select.toolTip], [false, "Make Selection…: choose a path"])

step("a square with a line below it")
picture.addPath("Square", [[[10, 10], [30, 10], [30, 30], [10, 30], [10, 10]], [[10, 36], [50, 36]]])
expect.equal(stroke.enabled, false)
panel.find("m_pList").choose("Square")
expect.equal([stroke.enabled, stroke.toolTip, select.enabled], [true, "Stroke Path…", true])

step("stroke it on the layer in the foreground color")
application.foreground = "red"
const line = () => [pixels.merged.pixel(20, 10), pixels.merged.pixel(20, 20), pixels.merged.pixel(40, 36)]
strokePath(4)
expect.equal(history.undoText, "Stroke path")
checkStep(line, ["#ffffffff", "#ffffffff", "#ffffffff"], ["#ffff0000", "#ffffffff", "#ffff0000"])
undo()

step("a selection bounds the stroke")
picture.select({ x: 0, y: 0, width: 15, height: 40 })
strokePath(4)
expect.equal([pixels.merged.pixel(12, 10), pixels.merged.pixel(20, 10)], ["#ffff0000", "#ffffffff"])
undo()

step("select what the path goes around, in four ways")
const bounds = () => pixels.hasSelection ? pixels.selection.bounds : null
makeSelection()
expect.equal(history.undoText, "Make selection from path")
const before = { x: 0, y: 0, width: 15, height: 40 }
checkStep(bounds, before, { x: 10, y: 10, width: 20, height: 20 })
expect.equal([pixels.selection.pixel(20, 20), pixels.selection.pixel(31, 20)], [255, 0])
for (const [choice, after] of [["m_pAddRBtn", { x: 0, y: 0, width: 30, height: 40 }],
                               ["m_pSubtractRBtn", before],
                               ["m_pIntersectRBtn", { x: 10, y: 10, width: 5, height: 20 }]]) {
    undo()
    makeSelection(choice)
    checkStep(bounds, before, after)
}
undo()
undo()
expect.equal(bounds(), null)

step("without a selection there is nothing to add to")
dialogs.expect({ title: "Make selection" }, function(dialog) {
    expect.equal([dialog.find("m_pNewRBtn").enabled, dialog.find("m_pAddRBtn").enabled], [true, false])
    input.key("Esc")
})
select.click()
expect.equal(bounds(), null)

step("stroke it on a mask in gray")
const top = layers.add({ name: "Top" })
top.fill("blue")
top.addMask()
layers.selectMask(top)
idle()
expect.equal(top.maskSelected, true)
application.foreground = "black"
strokePath(4)
expect.equal(history.undoText, "Stroke path")
const hidden = () => [pixels.mask(top).pixel(20, 10), pixels.mask(top).pixel(20, 20), pixels.merged.pixel(20, 10)]
checkStep(hidden, [255, 255, "#ff0000ff"], [0, 255, "#ffffffff"])
expect.equal(pixels.layer(top).pixel(20, 10), "#ff0000ff", "the pixels are as they were")

step("a locked layer says so")
top.locks = ["all"]
idle()
expect.equal([stroke.enabled, stroke.toolTip], [false, "Stroke Path…: the layer is locked"])
expect.equal(select.enabled, true)
top.locks = []

step("by the keyboard alone")
layers.select(top)
idle()
select.focus()
dialogs.expect({ title: "Make selection" }, function() { input.key("Return") })
input.key("Space")
idle()
expect.equal(bounds(), { x: 10, y: 10, width: 20, height: 20 })

step("close the picture beneath the dialog: the one that comes to the front is left alone")
const other = documents.create(60, 40)
picture.activate()
idle()
dialogs.expect({ title: "Stroke path" }, function() { faults.closeDocument() })
stroke.click()
idle()
expect.equal([documents.all.length, other.isActive, stroke.enabled], [1, true, false])
expect.equal([history.count, pixels.merged.pixel(20, 10)], [0, "#ffffffff"])
checkAtRest()
