"use strict"
include("steps/editor.js")
const ground = () => {
    grab(fileNamed("window.png"), "LayersWidget")
    return pixels.file(fileNamed("window.png")).pixel(3, 3)
}
const brightness = color => parseInt(color.slice(3, 5), 16)
function choose(theme, answer) {
    dialogs.expect({ title: "Preferences" }, function(dialog) {
        dialog.find("m_pLookCmb").choose(theme)
        input.key(answer)
    })
    input.key("Ctrl+,")
    idle()
}

step("the light look comes at once")
documents.create(40, 30, { background: "red" })
choose("Dark", "Return")
const dark = ground()
expect.ok(brightness(dark) < 100, dark)
choose("Light", "Return")
expect.ok(brightness(ground()) > 180, ground())

step("cancel leaves it")
choose("Dark", "Esc")
expect.ok(brightness(ground()) > 180, ground())

step("and back, with the picture untouched")
choose("Dark", "Return")
expect.equal(ground(), dark)
expect.equal([history.count, pixels.merged.pixel(5, 5)], [0, "#ffff0000"])
checkAtRest()
