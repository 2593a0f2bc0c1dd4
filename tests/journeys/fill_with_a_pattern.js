"use strict"
include("steps/editor.js")

step("choose the second pattern from the fill can's list")
documents.create(40, 30)
tools.activate("Fillcan")
option("m_pFillModeCmb").choose("Pattern")
expect.equal(option("m_pFillModeCmb").text, "Pattern")
option("m_pSelectPatternBtn").click()
const patterns = widgets.find("PatternSelectWidget/QListWidget")
const second = patterns.itemGeometry(1)
input.doubleClick(second.x + second.width / 2, second.y + second.height / 2, { in: patterns })
expect.equal(widgets.shows("PatternSelectWidget"), false, "the list has closed")

step("fill with it")
paint(5, 5)
expect.equal(history.texts, ["Fill"])
const pattern = pixels.file(application.patternFile(1))
for (const [x, y] of [[0, 0], [7, 3], [39, 29]]) {
    const size = pattern.geometry
    expect.equal(pixels.merged.pixel(x, y), pattern.pixel(x % size.width, y % size.height), x + ", " + y)
}

step("take it back")
undo()
expect.equal(pixels.merged.pixel(7, 3), "#ffffffff")
checkAtRest()
