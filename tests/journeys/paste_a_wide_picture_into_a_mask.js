// A picture that is wider than the mask changes what both share; the mask stays where it is, and as large as it is.

include("steps/editor.js")
include("steps/clipboard.js")

documents.create(60, 40, { background: "white" })
const layer = layers.at(0)
const mask = (x, y) => pixels.mask(layer).pixel(x, y)
const place = { x: 10, y: 5, width: 60, height: 40 }

step("a mask that was moved")
layer.addMask()
layer.placeMask(place.x, place.y)
layers.selectMask(layer)
expect.equal(layer.maskGeometry, place)

step("a black bar, 100 by 20, goes to the middle of the layer")
faults.putForeignImage(100, 20, "#ff000000")
input.key("Ctrl+V")
idle()
expect.equal(history.texts.slice(-1), ["Paste"])
const corners = () => [mask(10, 10), mask(69, 29), mask(40, 9), mask(40, 30), layer.maskGeometry]
checkStep(corners, [255, 255, 255, 255, place], [0, 0, 255, 255, place])
checkAtRest()
