"use strict"
include("steps/editor.js")

step("show the history beside the layers")
documents.create(30, 20)
const tabs = widgets.findAll("QTabBar").find(bar => bar.visible && bar.items.indexOf("History") >= 0)
tabs.choose("History")
expect.ok(widgets.shows("HistoryPanel/m_pList"), "the list of states")

step("three states")
tools.activate("Fillcan")
application.foreground = "red"
paint(5, 5)
input.key("Ctrl+A")
idle()
const states = widgets.find("HistoryPanel/m_pList")
expect.equal(states.items, ["Start", "Fill", "Select all"])
expect.equal(states.index, 2)

step("a click on a state brings it back")
const looks = [["#ffffffff", false], ["#ffff0000", false], ["#ffff0000", true]]
for (const row of [0, 2, 1, 0, 1]) {
    states.choose(row)
    idle()
    expect.equal([history.index, states.index], [row, row])
    expect.equal([pixels.merged.pixel(5, 5), pixels.hasSelection], looks[row], states.items[row])
}

step("what is undone goes with the next step")
application.foreground = "blue"
paint(5, 5)
expect.equal(states.items, ["Start", "Fill", "Fill"])

step("without a picture there are no states")
dialogs.expect({ title: application.name, text: /not saved/, answer: "Discard" })
input.key("Ctrl+W")
expect.equal(widgets.shows("HistoryPanel/m_pList"), false)
checkAtRest()
